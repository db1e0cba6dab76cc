#pragma once

// File: HostFunctions.hpp
// The protected call into host-language code: a library calls a host function by name
// with inCallFcn. The host's functions live in a table that the shell and tests fill
// with hostRegisterFunction.
//
// Example:
//   hostRegisterFunction("twice", [](int, HostArray** plhs, int, HostArray** prhs) {
//     plhs[0] = HostArray::createDoubleScalar(2 * prhs[0]->getPr()[0]);
//   });
//   HostArray* result = nullptr;
//   inCallFcn(1, &result, 1, &argument, "twice");  // result: a new 1x1 double; caller owns it

#include <functional>
#include <string>

class HostArray;

// Fills plhs[0..nlhs-1] with new arrays that the caller of inCallFcn owns; prhs stays
// the caller's.
using HostFunction = std::function<void(int nlhs, HostArray** plhs, int nrhs, HostArray** prhs)>;

// Makes the function callable under that name, replacing one registered before.
void hostRegisterFunction(const std::string& name, HostFunction function);
bool hostHasFunction(const std::string& name);

// Calls the named function and returns 0. Raises fl::except::UserException (by value)
// "CALVEX:UndefinedFunction" for an unknown name; whatever the function throws
// (Exception*, ErrorIdException*, fl::except::IUserException, DebugQuitException,
// InterruptException, ...) passes through unchanged. Never takes ownership of args.
int inCallFcn(int nResults, HostArray** results, int nArgs, HostArray** args,
              const char* functionName);
