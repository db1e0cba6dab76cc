#include "tests/support/HostCalls.hpp"

#include "host/Console.hpp"
#include "host/UDHostCalls.hpp"
#include "units/udd/UnitsModule.hpp"

HostArrayPtr text(const char* value) { return HostArrayPtr(HostArray::createString(value)); }
HostArrayPtr num(double value) { return HostArrayPtr(HostArray::createDoubleScalar(value)); }
HostArrayPtr handles(const std::vector<UDInterface*>& objects) {
  return HostArrayPtr(HostArray::createHandleArray(objects));
}
HostArrayPtr row(const std::vector<double>& values, std::size_t rows) {
  HostArrayPtr array(HostArray::createDoubleMatrix(rows, values.size() / rows));
  for (std::size_t i = 0; i < values.size(); ++i) array->getPr()[i] = values[i];
  return array;
}

std::vector<std::string> Results::texts(std::size_t i) const {
  const HostArray* value = at(i);
  std::vector<std::string> result;
  if (value->getClassId() == HostArray::ClassId::Cell) {
    for (std::size_t k = 0; k < value->getNumberOfElements(); ++k)
      result.push_back(value->getCell(k)->getString());
  } else {
    for (std::size_t r = 0; r < value->getM(); ++r) result.push_back(value->getStringRow(r));
  }
  return result;
}

Results call(const std::string& method, int nargout, std::vector<HostArrayPtr> args) {
  std::vector<const HostArray*> raw;
  for (const HostArrayPtr& arg : args) raw.push_back(arg.get());
  Results results;
  for (HostArray* value : hostInvokeMethod(method, nargout, raw))
    results.values.emplace_back(value);
  return results;
}

Results call(UDInterface* object, const std::string& method, int nargout,
             std::vector<HostArrayPtr> args) {
  args.insert(args.begin(), handles({object}));
  return call(method, nargout, std::move(args));
}

HostArrayPtr get(UDInterface* object, const std::string& property) {
  return HostArrayPtr(hostGetProperty(object, property));
}

void set(UDInterface* object, const std::string& property, HostArrayPtr value) {
  hostSetProperty(object, property, value.get());
}

std::string getText(UDInterface* object, const std::string& property) {
  return get(object, property)->getString();
}

double getNumber(UDInterface* object, const std::string& property) {
  return get(object, property)->getPr()[0];
}

ConsoleCapture::ConsoleCapture() : printed_(std::make_shared<std::string>()) {
  auto printed = printed_;
  previous_ = utSetConsoleSink([printed](const std::string& text) { *printed += text; });
}

ConsoleCapture::~ConsoleCapture() { utSetConsoleSink(previous_); }

void ModuleFixture::SetUp() {
  CVInitialize_zo_units();
  manager_.reset(hostConstruct("UnitManager"));
}

UDInterface* ModuleFixture::construct(const char* className) {
  constructed_.emplace_back(hostConstruct(className));
  return constructed_.back().get();
}
