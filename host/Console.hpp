#pragma once

// File: Console.hpp
// The host's console. Everything the library prints goes through `utPrintf`; the
// shell leaves it on standard output, tests redirect it to capture the text.
//
// Example:
//   std::string seen;
//   ConsoleSink previous = utSetConsoleSink([&](const std::string& s) { seen += s; });
//   utPrintf("%s\n", "hello");   // seen == "hello\n"
//   utSetConsoleSink(previous);

#include <functional>
#include <string>

using ConsoleSink = std::function<void(const std::string&)>;

// Replaces the console sink and returns the previous one; an empty sink restores
// standard output.
ConsoleSink utSetConsoleSink(ConsoleSink sink);

int utPrintf(const char* format, ...) __attribute__((format(printf, 1, 2)));
