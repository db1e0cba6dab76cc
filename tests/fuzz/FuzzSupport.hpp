#pragma once

// Shared by the fuzz targets. Every error the library raises for bad input
// (ErrorIdException* or the host parser's Exception*) is an ordinary outcome and is
// freed here; anything else that leaves a target — a std::exception, a crash, a sanitizer
// report — is a fault that libFuzzer records.
//
//   extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
//     const std::string text = fuzzText(data, size);
//     acceptLibraryErrors([&] { parse(text); });
//     return 0;
//   }

#include <cstddef>
#include <cstdint>
#include <string>

#include "host/ErrorIdException.hpp"
#include "host/Exception.hpp"
#include "host/Warning.hpp"

// The input as text. Bytes after a NUL are dropped: the parsers read C strings, and a
// text that hid a tail behind a NUL would only fill the composition cache with copies.
inline std::string fuzzText(const std::uint8_t* data, std::size_t size) {
  std::string text(reinterpret_cast<const char*>(data), size);
  return text.substr(0, text.find('\0'));
}

// Runs the action; returns the identifier of the library error it raised (freed here),
// "<Exception>" for the host parser's error, or "" when it raised none.
template <typename Action>
std::string libraryErrorOf(Action&& action) {
  try {
    action();
  } catch (ErrorIdException* raised) {
    std::string identifier = raised->getIdentifier();
    delete raised;
    return identifier;
  } catch (Exception* raised) {
    delete raised;
    return "<Exception>";
  }
  return "";
}

// Runs the action; returns true when it raised a library error (freed here).
template <typename Action>
bool acceptLibraryErrors(Action&& action) {
  return !libraryErrorOf(action).empty();
}

// Deprecation warnings would print once per input; the targets do not look at them.
inline void silenceWarnings() {
  utSetWarningHandler([](const std::string&, const WarningText&) {});
}

// Stops the run with a message that names the broken property; libFuzzer saves the input.
[[noreturn]] void fuzzFault(const std::string& what, const std::string& input);
