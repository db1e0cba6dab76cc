#include "tests/support/Pristine.hpp"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <optional>
#include <string>
#include <vector>

#include "host/JavaBridge.hpp"
#include "tests/support/RegistrySnapshot.hpp"

extern char** environ;

namespace {

// One test, once: nothing ran before it in this process, nothing will after.
bool runsAlone() {
  return testing::UnitTest::GetInstance()->test_to_run_count() == 1 && GTEST_FLAG_GET(repeat) == 1;
}

// Runs the binary filtered to the test; returns its exit status and what it printed.
std::pair<int, std::string> runInChild(const std::string& test) {
  // What the parent was given through the environment (sharding, repeating, an output
  // file) must not reach the child: it would drop the test, or run it again, or overwrite.
  std::vector<std::string> environment;
  for (char** entry = environ; *entry != nullptr; ++entry) {
    if (std::string(*entry).rfind("GTEST_", 0) != 0) environment.emplace_back(*entry);
  }
  std::vector<std::string> arguments = {"units_tests", "--gtest_filter=" + test, "--gtest_color=no",
                                        "--gtest_brief=0"};
  auto pointers = [](std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
  };
  std::vector<char*> argv = pointers(arguments), envp = pointers(environment);

  int pipeEnds[2];
  if (pipe(pipeEnds) != 0) return {-1, "pipe failed"};
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], 1);
  posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], 2);
  posix_spawn_file_actions_addclose(&actions, pipeEnds[0]);
  pid_t child = 0;
  int spawned = posix_spawn(&child, "/proc/self/exe", &actions, nullptr, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  close(pipeEnds[1]);
  std::string output;
  char buffer[4096];
  for (ssize_t n; (n = read(pipeEnds[0], buffer, sizeof buffer)) > 0;) output.append(buffer, n);
  close(pipeEnds[0]);
  if (spawned != 0) return {-1, "posix_spawn failed"};
  int status = 0;
  waitpid(child, &status, 0);
  return {status, output};
}

// The process-wide state that a test which is not pristine must leave as it found it.
struct ProcessState {
  RegistrySnapshot registries = RegistrySnapshot::take();
  bool usingJava = isZophixUsingJava();
  std::size_t queuedEvents = hostJavaEventQueue().size();

  bool operator==(const ProcessState& other) const {
    return registries == other.registries && usingJava == other.usingJava &&
           queuedEvents == other.queuedEvents;
  }
};

class ProcessStateCheck : public testing::EmptyTestEventListener {
  void OnTestStart(const testing::TestInfo&) override {
    if (!runsAlone()) before_.emplace();
  }
  void OnTestEnd(const testing::TestInfo&) override {
    if (!before_) return;
    ProcessState after;
    EXPECT_TRUE(after == *before_)
        << "The test changed process-wide state (registries, change events or the Java "
           "switch): undo it, or make it a PRISTINE_TEST. In the registries:"
        << differences(after.registries, before_->registries);
    before_.reset();
  }

  std::optional<ProcessState> before_;
};

}  // namespace

bool runsPristineHere() {
  if (runsAlone()) return true;
  const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
  auto [status, output] = runInChild(std::string(test->test_suite_name()) + "." + test->name());
  bool passed = WIFEXITED(status) && WEXITSTATUS(status) == 0 &&
                output.find("[  PASSED  ] 1 test.") != std::string::npos;
  EXPECT_TRUE(passed) << "In a process of its own:\n" << output;
  return false;
}

int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new ProcessStateCheck);
  return RUN_ALL_TESTS();
}
