#pragma once

// File: UDPropInfoTemplate.hpp
// The base of a library's properties. It makes setValue do nothing, so a read-only
// property only implements getValue (and releaseValue when getValue allocates).
//
// Example:
//   class SymbolProperty : public UDPropInfoTemplate {
//    public:
//     SymbolProperty() { setName("symbol", false); setDataType(StringDataType::getType()); }
//     void* getValue(UDDatabaseClient*, UDInterface* object) override {
//       return const_cast<char*>(static_cast<Unit*>(object->getObject())->symbol());
//     }
//   };

#include "host/UDPropInfo.hpp"

class UDPropInfoTemplate : public UDPropInfo {
 public:
  void setValue(UDDatabaseClient* client, UDInterface* object, void* value) override;
};
