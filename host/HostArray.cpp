#include "host/HostArray.hpp"

#include <algorithm>
#include <cstring>
#include <functional>
#include <numeric>
#include <stdexcept>
#include <utility>

#include "host/UDInterface.hpp"

HostArray::HostArray(ClassId classId, std::vector<std::size_t> dims)
    : classId_(classId), dims_(std::move(dims)) {
  while (dims_.size() < 2) dims_.push_back(1);
  std::size_t count = getNumberOfElements();
  if (classId_ == ClassId::Double) doubles_.assign(count, 0.0);
  if (classId_ == ClassId::Char) chars_.assign(count, ' ');
  if (classId_ == ClassId::Logical) logicals_.reset(new bool[count]());
  if (classId_ == ClassId::Int32) int32s_.assign(count, 0);
  if (classId_ == ClassId::Cell) cells_.assign(count, nullptr);
  if (classId_ == ClassId::Handle) handles_.assign(count, nullptr);
}

HostArray::~HostArray() {
  for (HostArray* cell : cells_) destroy(cell);
  for (UDInterface* handle : handles_) {
    if (handle != nullptr) handle->release();
  }
}

HostArray* HostArray::createDoubleMatrix(std::size_t m, std::size_t n) {
  return new HostArray(ClassId::Double, {m, n});
}

HostArray* HostArray::createDoubleScalar(double value) {
  HostArray* array = createDoubleMatrix(1, 1);
  array->doubles_[0] = value;
  return array;
}

HostArray* HostArray::createString(const char* text) {
  if (text == nullptr) return new HostArray(ClassId::Char, {0, 0});
  return createString(std::string(text));
}

HostArray* HostArray::createString(const std::string& text) {
  HostArray* array = new HostArray(ClassId::Char, {1, text.size()});
  std::copy(text.begin(), text.end(), array->chars_.begin());
  return array;
}

HostArray* HostArray::createCharMatrixFromStrings(std::size_t count, const char* const* strings) {
  auto text = [&](std::size_t r) { return strings[r] != nullptr ? strings[r] : ""; };
  std::size_t width = 0;
  for (std::size_t r = 0; r < count; ++r) width = std::max(width, std::strlen(text(r)));
  HostArray* array = new HostArray(ClassId::Char, {count, width});
  for (std::size_t r = 0; r < count; ++r) {
    const char* row = text(r);
    for (std::size_t c = 0; row[c] != '\0'; ++c) array->chars_[r + c * count] = row[c];
  }
  return array;
}

HostArray* HostArray::createLogicalArray(std::size_t ndim, const std::size_t* dims) {
  return new HostArray(ClassId::Logical, std::vector<std::size_t>(dims, dims + ndim));
}

HostArray* HostArray::createLogicalScalar(bool value) {
  HostArray* array = new HostArray(ClassId::Logical, {1, 1});
  array->logicals_[0] = value;
  return array;
}

HostArray* HostArray::createInt32Matrix(std::size_t m, std::size_t n) {
  return new HostArray(ClassId::Int32, {m, n});
}

HostArray* HostArray::createCellMatrix(std::size_t m, std::size_t n) {
  return new HostArray(ClassId::Cell, {m, n});
}

HostArray* HostArray::createHandleArray(const std::vector<UDInterface*>& objects) {
  std::size_t rows = objects.empty() ? 0 : 1;
  HostArray* array = new HostArray(ClassId::Handle, {rows, objects.size()});
  for (std::size_t i = 0; i < objects.size(); ++i) {
    if (objects[i] != nullptr) array->handles_[i] = objects[i]->getReference();
  }
  return array;
}

void HostArray::destroy(HostArray* array) { delete array; }

HostArray* HostArray::duplicate() const {
  HostArrayPtr copy(new HostArray(classId_, dims_));
  copy->doubles_ = doubles_;
  copy->chars_ = chars_;
  copy->int32s_ = int32s_;
  if (logicals_) std::copy_n(logicals_.get(), getNumberOfElements(), copy->logicals_.get());
  // Filled one by one so that a failure half-way leaves nothing unowned.
  for (std::size_t i = 0; i < cells_.size(); ++i) {
    if (cells_[i] != nullptr) copy->cells_[i] = cells_[i]->duplicate();
  }
  for (std::size_t i = 0; i < handles_.size(); ++i) {
    if (handles_[i] != nullptr) copy->handles_[i] = handles_[i]->getReference();
  }
  return copy.release();
}

const char* HostArray::getClassName() const {
  // In the order of ClassId.
  static const char* const names[] = {"double", "char", "logical", "int32", "cell", "handle"};
  return names[static_cast<int>(classId_)];
}

std::size_t HostArray::getN() const {
  return std::accumulate(dims_.begin() + 1, dims_.end(), std::size_t{1},
                         std::multiplies<std::size_t>());
}

std::size_t HostArray::getNumberOfElements() const { return getM() * getN(); }

double* HostArray::getPr() { return classId_ == ClassId::Double ? doubles_.data() : nullptr; }
const double* HostArray::getPr() const {
  return classId_ == ClassId::Double ? doubles_.data() : nullptr;
}
bool* HostArray::getLogicals() { return logicals_.get(); }
const bool* HostArray::getLogicals() const { return logicals_.get(); }
std::int32_t* HostArray::getInt32s() {
  return classId_ == ClassId::Int32 ? int32s_.data() : nullptr;
}
const std::int32_t* HostArray::getInt32s() const {
  return classId_ == ClassId::Int32 ? int32s_.data() : nullptr;
}

std::string HostArray::getString() const {
  std::string text;
  if (classId_ != ClassId::Char) return text;
  for (std::size_t r = 0; r < getM(); ++r) text += getStringRow(r);
  return text;
}

std::string HostArray::getStringRow(std::size_t r) const {
  if (classId_ != ClassId::Char || r >= getM())
    throw std::out_of_range("HostArray::getStringRow: no such row of a char array");
  std::string row(getN(), ' ');
  for (std::size_t c = 0; c < row.size(); ++c) row[c] = chars_[r + c * getM()];
  return row;
}

HostArray* HostArray::getCell(std::size_t i) const { return cells_.at(i); }

void HostArray::setCell(std::size_t i, HostArray* takenOver) {
  HostArrayPtr value(takenOver);  // freed here if the index is bad
  HostArray*& slot = cells_.at(i);
  destroy(std::exchange(slot, value.release()));
}

UDInterface* HostArray::getHandle(std::size_t i) const { return handles_.at(i); }
