#include "host/ToolboxFunctions.hpp"

#include "host/HostArray.hpp"
#include "host/HostFunctions.hpp"
#include "host/UDHostCalls.hpp"
#include "host/UDInterface.hpp"
#include "host/UserException.hpp"

namespace {

// Registers the quantity through the units module's manager object, as host-language
// code would: um = UnitManager; um.registerphysicalquantity(name, exponents).
void zophregisterquantity(int, HostArray**, int nrhs, HostArray** prhs) {
  if (nrhs != 2) {
    throw fl::except::UserException(
        "CALVEX:nargin", "zophregisterquantity takes a name and a 1-by-7 row of exponents.");
  }
  UDInterfacePtr manager(hostConstruct("UnitManager"));
  HostArrayPtr handle(HostArray::createHandleArray({manager.get()}));
  for (HostArray* result :
       hostInvokeMethod("registerphysicalquantity", 0, {handle.get(), prhs[0], prhs[1]})) {
    HostArray::destroy(result);
  }
}

}  // namespace

void hostRegisterToolboxFunctions() {
  hostRegisterFunction("zophregisterquantity", zophregisterquantity);
}
