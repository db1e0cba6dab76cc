#include "host/UDPropInfo.hpp"

UDPropInfo::~UDPropInfo() = default;

void UDPropInfo::setName(const char* name, bool) { name_ = name != nullptr ? name : ""; }

void UDPropInfo::setDescription(const char* description) {
  description_ = description != nullptr ? description : "";
}

void UDPropInfo::releaseValue(UDDatabaseClient*, UDInterface*, void*) {}

bool UDPropInfo::canContainUDInterfaces() const { return false; }
