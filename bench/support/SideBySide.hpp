#pragma once

// File: SideBySide.hpp
// Collects the figures of a benchmark run while the console shows it as usual, and
// afterwards prints our figures beside UDUNITS-2's with their ratios, the set-up and
// registration figures from the child processes, and whether each target is met.
// A benchmark's figure is its CPU time per iteration (other builds on the machine
// stretch real time), the median of its repetitions when it was repeated, otherwise
// the mean of its runs.
//
// Example:
//   twbench::SideBySideReporter reporter;
//   benchmark::RunSpecifiedBenchmarks(&reporter);
//   reporter.printSummary(std::cout);

#include <benchmark/benchmark.h>

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

namespace twbench {

// The numbers of user units that the registration benchmarks register.
inline constexpr int kUserUnitCounts[] = {100, 1000, 10000, 100000};

class SideBySideReporter : public benchmark::ConsoleReporter {
 public:
  explicit SideBySideReporter(OutputOptions options);

  void ReportRuns(const std::vector<Run>& reports) override;
  void printSummary(std::ostream& out) const;

 private:
  struct Samples {
    std::vector<double> nanoseconds;
    std::map<std::string, std::vector<double>> counters;
    bool hasMedian = false;
    double medianNanoseconds = 0.0;
    std::map<std::string, double> medianCounters;
  };

  // CPU time per iteration in nanoseconds, or a negative value when the benchmark
  // did not run.
  double nanoseconds(const std::string& name) const;
  double counter(const std::string& name, const std::string& counterName) const;

  // Keyed by the benchmark's name and arguments, without its run options.
  std::map<std::string, Samples> samples_;
};

}  // namespace twbench
