#pragma once

// File: ToolboxFunctions.hpp
// The toolbox's own host-language functions that libraries call back through the
// protected host call. The shell registers them at start-up; tests may too.
//
//   zophregisterquantity(name, exponents)   registers a physical quantity from its name
//                                           and a 1-by-7 row of exponents, raising the
//                                           registry's errors
//
// Example:
//   hostRegisterToolboxFunctions();
//   inCallFcn(0, nullptr, 2, args, "zophregisterquantity");

// Registers every toolbox function in the host's function table.
void hostRegisterToolboxFunctions();
