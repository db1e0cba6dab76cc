#pragma once

// File: UDTypeRepository.hpp
// Finds the host's data types by the names that method signatures and properties
// use: "double", "bool", "string", "string vector", "handle", "handle vector",
// "CALVEX array", "int32" and "int vector".
//
// Example:
//   UDDataType* type = UDTypeRepository::getType("handle vector", false);

class UDDataType;

class UDTypeRepository {
 public:
  // The type registered under that name (a singleton, never freed), or null when there
  // is none. The flag is unused by this host.
  static UDDataType* getType(const char* name, bool flag);
};
