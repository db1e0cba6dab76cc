// units_bench: runs the benchmarks with the console reporter, then prints the
// side-by-side summary. Started as `units_bench --tw-child=<task> ...` it is a child
// process of a set-up or registration benchmark instead.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <iostream>

#include "bench/support/ChildProcess.hpp"
#include "bench/support/SideBySide.hpp"

int main(int argc, char** argv) {
  if (auto code = twbench::runChildTaskIfAsked(argc, argv)) return *code;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  auto options = benchmark::ConsoleReporter::OO_Tabular;
  if (isatty(STDOUT_FILENO)) options = benchmark::ConsoleReporter::OO_ColorTabular;
  twbench::SideBySideReporter reporter(options);
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printSummary(std::cout);
  benchmark::Shutdown();
  return 0;
}
