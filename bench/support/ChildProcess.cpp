#include "bench/support/ChildProcess.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <exception>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

extern char** environ;

namespace twbench {

namespace {

constexpr const char kChildFlag[] = "--tw-child=";

std::map<std::string, ChildTask>& tasks() {
  static std::map<std::string, ChildTask> registered;
  return registered;
}

std::string ownExecutable() {
  std::array<char, 4096> path{};
  ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  if (length <= 0) throw std::runtime_error("cannot find this executable in /proc/self/exe");
  return std::string(path.data(), static_cast<std::size_t>(length));
}

// Closes the descriptor when it goes out of scope.
struct Descriptor {
  int fd = -1;
  ~Descriptor() {
    if (fd >= 0) close(fd);
  }
};

}  // namespace

bool registerChildTask(const std::string& name, ChildTask task) {
  tasks()[name] = std::move(task);
  return true;
}

std::optional<int> runChildTaskIfAsked(int argc, char** argv) {
  if (argc < 2 || std::strncmp(argv[1], kChildFlag, sizeof kChildFlag - 1) != 0) return {};
  std::string name = argv[1] + sizeof kChildFlag - 1;
  auto task = tasks().find(name);
  if (task == tasks().end()) {
    std::cerr << "units_bench: no child task '" << name << "'\n";
    return 2;
  }
  std::vector<std::string> arguments(argv + 2, argv + argc);
  ChildReport report;
  try {
    task->second(arguments, report);
  } catch (const std::exception& error) {
    std::cerr << "units_bench: child task '" << name << "' failed: " << error.what() << "\n";
    return 1;
  }
  // Full precision: the parent computes with these.
  std::cout.precision(17);
  for (const auto& [key, value] : report) std::cout << key << ' ' << value << '\n';
  std::cout.flush();
  return 0;
}

ChildReport runInChild(const std::string& task, const std::vector<std::string>& arguments) {
  std::string executable = ownExecutable();
  std::vector<std::string> words{executable, kChildFlag + task};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);

  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe: " + std::string(std::strerror(errno)));
  Descriptor readEnd{ends[0]};
  Descriptor writeEnd{ends[1]};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, writeEnd.fd, STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, readEnd.fd);
  pid_t child = 0;
  int spawned = posix_spawn(&child, executable.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) throw std::runtime_error("posix_spawn: " + std::string(std::strerror(spawned)));
  close(writeEnd.fd);
  writeEnd.fd = -1;

  std::string output;
  std::array<char, 4096> buffer;
  for (;;) {
    ssize_t got = read(readEnd.fd, buffer.data(), buffer.size());
    if (got > 0) {
      output.append(buffer.data(), static_cast<std::size_t>(got));
    } else if (got == 0 || errno != EINTR) {
      break;
    }
  }
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
  }
  if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    throw std::runtime_error("child task '" + task + "' did not exit cleanly");

  ChildReport report;
  std::istringstream lines(output);
  std::string key;
  double value = 0.0;
  while (lines >> key >> value) report[key] = value;
  return report;
}

double figure(const ChildReport& report, const std::string& name) {
  auto found = report.find(name);
  if (found == report.end()) throw std::runtime_error("the child reported no '" + name + "'");
  return found->second;
}

namespace {

double threadSeconds() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

// What reading the clock twice costs (a system call each), the least of a few tries.
double clockCost() {
  static const double cost = [] {
    double least = 1.0;
    for (int i = 0; i < 100; ++i) {
      double start = threadSeconds();
      least = std::min(least, threadSeconds() - start);
    }
    return least;
  }();
  return cost;
}

}  // namespace

double timeIt(const std::function<void()>& work) {
  const double cost = clockCost();
  const double start = threadSeconds();
  work();
  return std::max(0.0, threadSeconds() - start - cost);
}

double residentKiB() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0, resident = 0;
  statm >> pages >> resident;
  return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024.0;
}

}  // namespace twbench
