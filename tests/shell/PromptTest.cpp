// The prompt as a person meets it: zo_units on a pseudo-terminal that the test opens, keys
// typed in, the screen's bytes read back. Each session gets a temporary HOME and history
// file, so the person's own are never touched. Every step waits for what the shell shows
// (no fixed sleeps), with room for a loaded machine and a sanitizer build.

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <thread>
#include <vector>

#include "shell/Completer.hpp"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(60);
const std::string kUp = "\x1b[A";
const std::string kCtrlC = "\x03";
const std::string kCtrlD = "\x04";

class TemporaryHome {
 public:
  TemporaryHome() {
    std::string pattern = (fs::temp_directory_path() / "zo_units_prompt_XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("mkdtemp failed");
    path_ = pattern;
  }
  ~TemporaryHome() { fs::remove_all(path_); }
  const fs::path& path() const { return path_; }
  fs::path history() const { return path_ / "history"; }
  std::string historyText() const {
    std::ifstream in(history());
    return std::string(std::istreambuf_iterator<char>(in), {});
  }

 private:
  fs::path path_;
};

// zo_units at a terminal of its own, 200 columns wide so that no line wraps.
class Terminal {
 public:
  explicit Terminal(const TemporaryHome& home, const std::vector<std::string>& options = {}) {
    std::vector<std::string> environment = {"HOME=" + home.path().string(),
                                            "ZO_UNITS_HISTORY=" + home.history().string(),
                                            "TERM=xterm"};
    for (char** entry = environ; *entry != nullptr; ++entry) {
      std::string variable = *entry;
      std::string name = variable.substr(0, variable.find('='));
      if (name != "HOME" && name != "ZO_UNITS_HISTORY" && name != "TERM" && name != "EDITRC")
        environment.push_back(variable);  // the sanitizers' options among them
    }
    std::vector<std::string> args = {TW_SHELL_PATH};
    args.insert(args.end(), options.begin(), options.end());
    std::vector<char*> argv = pointers(args), envp = pointers(environment);
    winsize size = {40, 200, 0, 0};
    pid_ = forkpty(&terminal_, nullptr, nullptr, &size);
    if (pid_ == 0) {
      execve(argv[0], argv.data(), envp.data());
      _exit(127);
    }
    if (pid_ < 0) throw std::runtime_error("forkpty failed");
  }
  ~Terminal() {
    if (pid_ > 0) {
      kill(pid_, SIGKILL);
      waitpid(pid_, nullptr, 0);
    }
    close(terminal_);
  }

  void type(const std::string& keys) {
    ASSERT_EQ(write(terminal_, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
  }

  // Waits until the shell shows `text` after what the previous call found.
  ::testing::AssertionResult shows(const std::string& text) {
    Clock::time_point deadline = Clock::now() + kPatience;
    while (true) {
      std::size_t found = screen_.find(text, seen_);
      if (found != std::string::npos) {
        seen_ = found + text.size();
        return ::testing::AssertionSuccess();
      }
      if (!readMore(deadline))
        return ::testing::AssertionFailure() << "never showed '" << text << "':\n" << screen_;
    }
  }

  // Waits for a ">> " prompt and for the line editor to take the terminal: libedit shows the
  // prompt first, and keys typed before it switches the terminal from lines to keys would
  // reach the terminal's own line editing (where Ctrl-C would end the shell).
  ::testing::AssertionResult prompts() {
    ::testing::AssertionResult shown = shows(">> ");
    if (!shown) return shown;
    Clock::time_point deadline = Clock::now() + kPatience;
    termios modes = {};
    while (tcgetattr(terminal_, &modes) == 0 && (modes.c_lflag & ICANON) != 0) {
      if (Clock::now() > deadline)
        return ::testing::AssertionFailure() << "the terminal stayed in line mode";
      std::this_thread::sleep_for(std::chrono::milliseconds(60));
    }
    return ::testing::AssertionSuccess();
  }

  // Types the line and Enter, then waits for `result` (when there is one) and the next prompt.
  ::testing::AssertionResult enters(const std::string& line, const std::string& result = "") {
    type(line + "\r");
    if (!result.empty()) {
      ::testing::AssertionResult shown = shows(result);
      if (!shown) return shown;
    }
    return prompts();
  }

  // Waits for the shell to end; its exit status, or -1 when it did not exit by itself.
  int exitStatus() {
    Clock::time_point deadline = Clock::now() + kPatience;
    while (readMore(deadline)) {
    }
    int status = 0;
    if (waitpid(pid_, &status, Clock::now() < deadline ? 0 : WNOHANG) != pid_) return -1;
    pid_ = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  const std::string& screen() const { return screen_; }

 private:
  static std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts) result.push_back(text.data());
    result.push_back(nullptr);
    return result;
  }

  // False at the deadline or when the shell has closed the terminal.
  bool readMore(Clock::time_point deadline) {
    auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
    pollfd ready = {terminal_, POLLIN, 0};
    if (left.count() <= 0 || poll(&ready, 1, static_cast<int>(left.count())) <= 0) return false;
    char buffer[4096];
    ssize_t count = read(terminal_, buffer, sizeof buffer);
    if (count <= 0) return count < 0 && errno == EINTR;
    screen_.append(buffer, static_cast<std::size_t>(count));
    return true;
  }

  pid_t pid_ = -1;
  int terminal_ = -1;
  std::string screen_;
  std::size_t seen_ = 0;
};

// Ctrl-C abandons the line (kept out of the history), Up recalls the previous statement in
// this session and the next, Ctrl-D ends the session.
TEST(Prompt, CtrlCAbandonsTheLineUpRecallsAndCtrlDEnds) {
  TemporaryHome home;
  {
    Terminal shell(home);
    ASSERT_TRUE(shell.prompts());
    shell.type("undefinedname");
    ASSERT_TRUE(shell.shows("undefinedname"));
    shell.type(kCtrlC);
    ASSERT_TRUE(shell.shows("^C"));
    ASSERT_TRUE(shell.prompts());
    ASSERT_TRUE(shell.enters("numel([1 2 3])", "ans = 3"));
    ASSERT_TRUE(shell.enters(kUp, "ans = 3"));
    shell.type(kCtrlD);
    EXPECT_EQ(shell.exitStatus(), 0) << shell.screen();
    EXPECT_EQ(shell.screen().find("Error"), std::string::npos) << shell.screen();
  }
  EXPECT_EQ(home.historyText().find("undefinedname"), std::string::npos);
  Terminal next(home);
  ASSERT_TRUE(next.prompts());
  EXPECT_TRUE(next.enters(kUp, "ans = 3"));
}

TEST(Prompt, TabCompletesMethodsAndUnitsRegisteredALineEarlier) {
  TemporaryHome home;
  Terminal shell(home);
  ASSERT_TRUE(shell.prompts());
  ASSERT_TRUE(shell.enters("um = UnitManager;"));
  ASSERT_TRUE(shell.enters("um.calc\t('mile', 'mete\t', 1)", "ans = 1609.344"));
  ASSERT_TRUE(shell.enters("furlong = um.registerunit('furlong', 'meter', 201.168);"));
  ASSERT_TRUE(shell.enters("um.calculateconversion('mile', 'furl\t', 1)", "ans = 8"));
  ASSERT_TRUE(shell.enters("um.calculateconversion('kilofurl\t', 'furl\t', 1)", "ans = 1000"));
  ASSERT_TRUE(
      shell.enters("s = UnitSystem; s.Name = 'labsys'; s.MassUnit = 'gram'; "
                   "s.AmountUnit = 'mole'; s.LengthUnit = 'meter'; s.TimeUnit = 'second';"));
  ASSERT_TRUE(
      shell.enters("s.TempUnit = 'kelvin'; s.CurrentUnit = 'ampere'; "
                   "s.LuminousIntensityUnit = 'candela'; s.register;"));
  ASSERT_TRUE(shell.enters("x = 'MK\t'", "x = 'MKS'"));
  ASSERT_TRUE(shell.enters("x = 'labs\t'", "x = 'labsys'"));
  ASSERT_TRUE(shell.enters("s.unregister('labs\t'); unregister(s, 'MK\t'); numel(s)", "ans = 1"));
  // Several candidates and nothing they share to add: Tab lists them.
  shell.type("um.show\t");
  EXPECT_TRUE(shell.shows("showphysicalquantities  showprefixes"));
  shell.type(kCtrlC);
  ASSERT_TRUE(shell.shows("^C"));
  ASSERT_TRUE(shell.prompts());
  shell.type(kCtrlD);
  EXPECT_EQ(shell.exitStatus(), 0) << shell.screen();  // and nothing leaked, in a sanitizer build
}

TEST(Prompt, HistoryIsWrittenOnlyAtATerminalAndKeepsTheLatestStatements) {
  TemporaryHome home;
  std::string piped = "echo 'x = 1' | ZO_UNITS_HISTORY='" + home.history().string() + "' '" +
                      TW_SHELL_PATH + "' > /dev/null";
  ASSERT_EQ(std::system(piped.c_str()), 0);
  EXPECT_FALSE(fs::exists(home.history()));
  {
    Terminal shell(home, {"--no-history"});
    ASSERT_TRUE(shell.prompts());
    ASSERT_TRUE(shell.enters("x = 1"));
    shell.type(kCtrlD);
    EXPECT_EQ(shell.exitStatus(), 0) << shell.screen();
  }
  EXPECT_FALSE(fs::exists(home.history()));

  {
    std::ofstream old(home.history());
    old << "_HiStOrY_V2_\n";
    for (int i = 1; i <= 1200; ++i) old << "old" << i << "\n";
  }
  Terminal shell(home);
  ASSERT_TRUE(shell.prompts());
  ASSERT_TRUE(shell.enters("newest"));
  shell.type(kCtrlD);
  EXPECT_EQ(shell.exitStatus(), 0) << shell.screen();
  std::string kept = home.historyText();
  EXPECT_EQ(std::count(kept.begin(), kept.end(), '\n'), 1 + 1000);
  EXPECT_EQ(kept.find("old201\n"), std::string::npos);
  EXPECT_NE(kept.find("old202\nold203\n"), std::string::npos);
  EXPECT_NE(kept.find("old1200\nnewest\n"), std::string::npos);
}

TEST(CompletionContext, FollowsTextsCommentsAndDots) {
  using Kind = Completer::Context::Kind;
  struct Case {
    const char* line;
    Kind kind;
    const char* word;
    const char* object;
  } cases[] = {
      {"", Kind::kName, "", ""},
      {"x = fur", Kind::kName, "fur", ""},
      {"x = 'done'; cl", Kind::kName, "cl", ""},
      {"u.", Kind::kMember, "", "u"},
      {"u.composition = 'kilogram/(meter*sec", Kind::kUnit, "sec", ""},
      {"disp('it''s a ki", Kind::kUnit, "ki", ""},
      {"unregister(s, 'MK", Kind::kUnitSystem, "MK", ""},  // a unit's context offers systems too
      {"x = 1 % 'furl", Kind::kNothing, "", ""},
      {"x = 2.5", Kind::kNothing, "", ""},
      {"a.b.c", Kind::kNothing, "", ""},
      {"x(1).na", Kind::kNothing, "", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.line);
    Completer::Context context = Completer::contextOf(c.line);
    EXPECT_EQ(context.kind, c.kind);
    EXPECT_EQ(context.word, c.word);
    EXPECT_EQ(context.object, c.object);
  }
}

}  // namespace
