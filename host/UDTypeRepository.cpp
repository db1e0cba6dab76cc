#include "host/UDTypeRepository.hpp"

#include <cstring>

#include "host/BooleanDataType.hpp"
#include "host/DoubleDataType.hpp"
#include "host/HostArrayDataType.hpp"
#include "host/IntDataType.hpp"
#include "host/NintsDataType.hpp"
#include "host/StringDataType.hpp"
#include "host/StringVectorType.hpp"
#include "host/UDInterfaceType.hpp"
#include "host/UDInterfaceVectorType.hpp"

UDDataType* UDTypeRepository::getType(const char* name, bool) {
  if (name == nullptr) return nullptr;
  UDDataType* const types[] = {
      DoubleDataType::getType(),    BooleanDataType::getType(), StringDataType::getType(),
      StringVectorType::getType(),  UDInterfaceType::getType(), UDInterfaceVectorType::getType(),
      HostArrayDataType::getType(), IntDataType::getType(),     NintsDataType::getType(),
  };
  for (UDDataType* type : types) {
    if (std::strcmp(type->getName(), name) == 0) return type;
  }
  return nullptr;
}
