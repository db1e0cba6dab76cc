#pragma once

// File: ChildProcess.hpp
// Measurements that need a process of their own. The unit registry is a process-wide
// singleton that is set up on first use and never destroyed, so set-up and
// registration figures come from fresh processes: units_bench starts itself again as
// `units_bench --tw-child=<task> <arguments>`, the child runs the task and prints
// its figures as "name value" lines, and the parent reads them back.
//
// Example:
//   TW_CHILD_TASK(setup) { report["setup_s"] = timeIt([] { UnitManager::Instance(); }); }
//   ChildReport figures = runInChild("setup", {});   // {"setup_s": 0.0009}

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace twbench {

using ChildReport = std::map<std::string, double>;
using ChildTask = std::function<void(const std::vector<std::string>& arguments, ChildReport&)>;

// Makes the task available to child processes; returns true so that a namespace-scope
// registration can run it.
bool registerChildTask(const std::string& name, ChildTask task);

// When the command line starts a child task, runs it, prints its report and returns
// the exit code; otherwise returns nothing and the benchmarks run.
std::optional<int> runChildTaskIfAsked(int argc, char** argv);

// Runs the task in a new process of this binary and returns its report. Throws
// std::runtime_error when the child cannot start or does not exit cleanly.
ChildReport runInChild(const std::string& task, const std::vector<std::string>& arguments);

// The figure, or a std::runtime_error naming the task when the child did not report it.
double figure(const ChildReport& report, const std::string& name);

// The calling thread's CPU seconds that the call takes (the clock's own cost taken
// off): other work on the machine does not stretch them as it stretches real time.
double timeIt(const std::function<void()>& work);

// The process's resident set size in KiB (from /proc/self/statm).
double residentKiB();

}  // namespace twbench

#define TW_CHILD_TASK_CONCAT(a, b) a##b
#define TW_CHILD_TASK_NAME(a, b) TW_CHILD_TASK_CONCAT(a, b)
// Defines and registers a child task; the body sees `arguments` and `report`.
#define TW_CHILD_TASK(name)                                                                  \
  static void twChildTask_##name(const std::vector<std::string>& arguments,                  \
                                 ::twbench::ChildReport& report);                            \
  [[maybe_unused]] static const bool TW_CHILD_TASK_NAME(twChildTaskRegistered_, name) =      \
      ::twbench::registerChildTask(#name, &twChildTask_##name);                              \
  static void twChildTask_##name([[maybe_unused]] const std::vector<std::string>& arguments, \
                                 [[maybe_unused]] ::twbench::ChildReport& report)
