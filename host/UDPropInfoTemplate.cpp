#include "host/UDPropInfoTemplate.hpp"

void UDPropInfoTemplate::setValue(UDDatabaseClient*, UDInterface*, void*) {}
