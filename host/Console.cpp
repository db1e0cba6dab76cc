#include "host/Console.hpp"

#include <cstdarg>
#include <cstdio>
#include <utility>

#include "host/Format.hpp"

namespace {

ConsoleSink& currentSink() {
  static ConsoleSink sink;
  return sink;
}

}  // namespace

ConsoleSink utSetConsoleSink(ConsoleSink sink) {
  return std::exchange(currentSink(), std::move(sink));
}

int utPrintf(const char* format, ...) {
  va_list args;
  va_start(args, format);
  std::string text = utVFormat(format, args);
  va_end(args);
  if (const ConsoleSink& sink = currentSink()) {
    sink(text);
  } else {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
  }
  return static_cast<int>(text.size());
}
