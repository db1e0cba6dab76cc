#pragma once

// File: HostArray.hpp
// The host language's value: a matrix of doubles, characters, logicals, int32s,
// cells (arrays of arrays) or handles (host objects). Elements are stored in
// column-major order; arrays are 2-D except logical ones, which may have more
// dimensions. Arrays are made only by the static creators and freed only with
// `destroy`; `HostArrayPtr` does that for a std::unique_ptr.
//
// Example:
//   HostArrayPtr names(HostArray::createCharMatrixFromStrings(2, texts));  // {"m", "km"}
//   names->getStringRow(0)  // "m " (rows are padded with blanks to the longest)

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class UDInterface;

class HostArray {
 public:
  enum class ClassId { Double, Char, Logical, Int32, Cell, Handle };

  // Every creator returns a new array; the caller owns it and frees it with destroy().
  static HostArray* createDoubleMatrix(std::size_t m, std::size_t n);  // all zeros
  static HostArray* createDoubleScalar(double value);
  // A 1-by-n char row of the text; a null text gives a 0-by-0 char array.
  static HostArray* createString(const char* text);
  // A 1-by-n char row of every byte of the text, NUL bytes included.
  static HostArray* createString(const std::string& text);
  // One row per string (null reads as ""), shorter rows padded with blanks.
  static HostArray* createCharMatrixFromStrings(std::size_t count, const char* const* strings);
  // All false. Fewer than two dimensions are completed with 1s.
  static HostArray* createLogicalArray(std::size_t ndim, const std::size_t* dims);
  static HostArray* createLogicalScalar(bool value);
  static HostArray* createInt32Matrix(std::size_t m, std::size_t n);  // all zeros
  static HostArray* createCellMatrix(std::size_t m, std::size_t n);   // all cells null
  // A 1-by-n array holding a new reference to each object (an empty list gives 0-by-0);
  // destroy() releases them. Null entries stay null and hold nothing.
  static HostArray* createHandleArray(const std::vector<UDInterface*>& objects);

  // Frees the array, its cells and its handle references. Null is ignored.
  static void destroy(HostArray* array);

  // A new deep copy that the caller owns; handles get new references.
  HostArray* duplicate() const;

  ClassId getClassId() const { return classId_; }
  // "double", "char", "logical", "int32", "cell" or "handle", as the host language names them.
  const char* getClassName() const;
  std::size_t getM() const { return dims_[0]; }
  // The product of all dimensions but the first.
  std::size_t getN() const;
  std::size_t getNumberOfElements() const;
  std::size_t getNumberOfDimensions() const { return dims_.size(); }
  const std::size_t* getDimensions() const { return dims_.data(); }
  bool isEmpty() const { return getNumberOfElements() == 0; }

  // The element data, or null when the array is of another class.
  double* getPr();
  const double* getPr() const;
  bool* getLogicals();
  const bool* getLogicals() const;
  std::int32_t* getInt32s();
  const std::int32_t* getInt32s() const;

  // The characters of a char array, row after row ("" for other classes); for a
  // one-row array that is its text.
  std::string getString() const;
  // Row r of a char matrix, trailing blanks included. Throws std::out_of_range past the last row.
  std::string getStringRow(std::size_t r) const;

  // Cell element i (column-major); the array owns it. Null until set.
  HostArray* getCell(std::size_t i) const;
  // Stores the value as cell element i; the cell takes it over and frees the one it replaces.
  void setCell(std::size_t i, HostArray* takenOver);

  // Handle element i, borrowed: the array holds the reference.
  UDInterface* getHandle(std::size_t i) const;

 private:
  HostArray(ClassId classId, std::vector<std::size_t> dims);
  ~HostArray();
  HostArray(const HostArray&) = delete;
  HostArray& operator=(const HostArray&) = delete;

  ClassId classId_;
  std::vector<std::size_t> dims_;
  // Only the member of the array's class is used.
  std::vector<double> doubles_;
  std::vector<char> chars_;
  std::unique_ptr<bool[]> logicals_;
  std::vector<std::int32_t> int32s_;
  std::vector<HostArray*> cells_;      // owned
  std::vector<UDInterface*> handles_;  // one reference each
};

struct HostArrayDeleter {
  void operator()(HostArray* array) const { HostArray::destroy(array); }
};

// Owns one array: `HostArrayPtr value(HostArray::createDoubleScalar(2));`
using HostArrayPtr = std::unique_ptr<HostArray, HostArrayDeleter>;
