#include "host/UDDataType.hpp"

UDDataType::~UDDataType() = default;
