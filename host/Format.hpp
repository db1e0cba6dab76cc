#pragma once

// printf-style formatting into a std::string, shared by the console, the error
// reporting and the warning channel.

#include <cstdarg>
#include <string>

std::string utVFormat(const char* format, va_list args);
std::string utFormat(const char* format, ...) __attribute__((format(printf, 1, 2)));
