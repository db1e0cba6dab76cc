#include "shell/LineEditor.hpp"

#include <histedit.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <stdexcept>

namespace {

volatile std::sig_atomic_t interruptSeen = 0;
volatile std::sig_atomic_t continuedSeen = 0;

extern "C" void noteSignal(int signal) { (signal == SIGINT ? interruptSeen : continuedSeen) = 1; }

// While the prompt waits, Ctrl-C and the return from a suspension are noted and cut the read
// short (no SA_RESTART); libedit, which handles the terminal's signals first, hands them on.
// Outside the prompt Ctrl-C ends a running statement as it always did.
class PromptSignals {
 public:
  PromptSignals() {
    interruptSeen = 0;
    continuedSeen = 0;
    struct sigaction noted = {};
    noted.sa_handler = noteSignal;
    sigemptyset(&noted.sa_mask);
    sigaction(SIGINT, &noted, &interrupt_);
    sigaction(SIGCONT, &noted, &continued_);
  }
  ~PromptSignals() {
    sigaction(SIGINT, &interrupt_, nullptr);
    sigaction(SIGCONT, &continued_, nullptr);
  }
  PromptSignals(const PromptSignals&) = delete;
  PromptSignals& operator=(const PromptSignals&) = delete;

 private:
  struct sigaction interrupt_ = {};
  struct sigaction continued_ = {};
};

char* promptText(EditLine*) {
  static char prompt[] = ">> ";
  return prompt;
}

std::string commonPrefix(const std::vector<std::string>& names) {
  std::string common = names.front();
  for (const std::string& name : names) {
    auto differs = std::mismatch(common.begin(), common.end(), name.begin(), name.end());
    common.erase(differs.first, common.end());
  }
  return common;
}

}  // namespace

LineEditor::LineEditor(std::string historyFile, CompleteFunction complete)
    : historyFile_(std::move(historyFile)),
      complete_(std::move(complete)),
      history_(history_init(), &history_end),
      editor_(nullptr, &el_end) {
  // libedit reads and shows characters beyond ASCII as the person's locale says; only the
  // character classes change, never how numbers print.
  std::setlocale(LC_CTYPE, "");
  editor_.reset(el_init("zo_units", stdin, stdout, stderr));
  if (history_ == nullptr || editor_ == nullptr)
    throw std::runtime_error("cannot start the line editor");
  HistEvent event;
  history(history_.get(), &event, H_SETSIZE, kHistoryLength);
  history(history_.get(), &event, H_SETUNIQUE, 1);
  if (!historyFile_.empty()) history(history_.get(), &event, H_LOAD, historyFile_.c_str());

  EditLine* editor = editor_.get();
  el_set(editor, EL_CLIENTDATA, this);
  el_set(editor, EL_PROMPT, &promptText);
  el_set(editor, EL_EDITOR, "emacs");
  // libedit puts the terminal back in order around signals (suspend, resize) and hands
  // them on to the program's own handlers.
  el_set(editor, EL_SIGNAL, 1);
  el_set(editor, EL_HIST, history, history_.get());
  el_set(editor, EL_GETCFN, &LineEditor::readCharacter);
  // The wide form keeps the two names as given; the narrow one copies them and never frees
  // the copies.
  el_wset(editor, EL_ADDFN, L"zo-complete", L"Complete the name before the cursor",
          &LineEditor::completeAtCursor);
  el_set(editor, EL_BIND, "^I", "zo-complete", nullptr);
  el_source(editor, nullptr);
}

std::optional<std::string> LineEditor::read() {
  while (true) {
    int count = 0;
    const char* line = nullptr;
    {
      PromptSignals noted;
      line = el_gets(editor_.get(), &count);
    }
    if (interruptSeen != 0) {
      abandonLine();
      continue;
    }
    if (line == nullptr) return std::nullopt;
    std::string text(line, static_cast<std::size_t>(count));
    if (!text.empty() && text.back() == '\n') text.pop_back();
    remember(text);
    return text;
  }
}

std::string LineEditor::historyFile() {
  if (const char* chosen = std::getenv("ZO_UNITS_HISTORY")) return chosen;
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') return "";
  return std::string(home) + "/.zo_units_history";
}

// libedit's own reader, but for Ctrl-C: the interrupt ends the line at the next read, also
// when it came while libedit was writing or completing rather than waiting for a key (libedit
// has then put the terminal back in line mode: the line cannot go on). A key that the read
// brought in with the interrupt was typed after it, when Ctrl-C had emptied the input: it
// begins the next line.
int LineEditor::readCharacter(EditLine* editor, wchar_t* character) {
  void* data = nullptr;
  el_get(editor, EL_CLIENTDATA, &data);
  LineEditor& self = *static_cast<LineEditor*>(data);
  std::mbstate_t state = {};
  while (interruptSeen == 0) {
    char byte = 0;
    if (self.keyAfterInterrupt_) {
      byte = *self.keyAfterInterrupt_;
      self.keyAfterInterrupt_.reset();
    } else {
      ssize_t count = ::read(STDIN_FILENO, &byte, 1);
      if (count == 0) return 0;
      if (count < 0 && errno == EINTR) {  // a resize, a suspension or the interrupt
        if (continuedSeen != 0) el_set(editor, EL_REFRESH);  // the line, shown again
        continuedSeen = 0;
        continue;
      }
      if (count < 0) return -1;
      if (interruptSeen != 0) {
        self.keyAfterInterrupt_ = byte;
        break;
      }
    }
    std::size_t length = std::mbrtowc(character, &byte, 1, &state);
    if (length == static_cast<std::size_t>(-2)) continue;  // the rest of the character
    if (length == static_cast<std::size_t>(-1)) {
      *character = static_cast<unsigned char>(byte);  // not of the locale: taken as it is
    }
    return 1;
  }
  return -1;
}

unsigned char LineEditor::completeAtCursor(EditLine* editor, int) {
  void* self = nullptr;
  el_get(editor, EL_CLIENTDATA, &self);
  const LineInfo* line = el_line(editor);
  Completion offer;
  try {  // nothing may be thrown through libedit
    offer = static_cast<LineEditor*>(self)->complete_(std::string(line->buffer, line->cursor));
  } catch (...) {
    return CC_ERROR;
  }
  if (offer.candidates.empty()) return CC_ERROR;
  std::string common = commonPrefix(offer.candidates);
  if (common.size() > offer.word.size()) {
    return el_insertstr(editor, common.c_str() + offer.word.size()) == 0 ? CC_REFRESH : CC_ERROR;
  }
  if (offer.candidates.size() == 1) return CC_REFRESH;  // complete already
  static_cast<LineEditor*>(self)->list(offer.candidates);
  return CC_REDISPLAY;
}

// Below the line, in as many columns as the terminal is wide; libedit then shows the
// prompt and the line again.
void LineEditor::list(const std::vector<std::string>& candidates) {
  int width = 80;
  el_get(editor_.get(), EL_GETTC, "co", &width);
  std::size_t longest = 0;
  for (const std::string& name : candidates) longest = std::max(longest, name.size());
  std::size_t columnWidth = longest + 2;
  std::size_t columns = std::max<std::size_t>(1, static_cast<std::size_t>(width) / columnWidth);
  std::string text = "\n";
  for (std::size_t i = 0; i < candidates.size(); ++i) {
    bool lastInRow = (i + 1) % columns == 0 || i + 1 == candidates.size();
    text += lastInRow ? candidates[i] + "\n"
                      : candidates[i] + std::string(columnWidth - candidates[i].size(), ' ');
  }
  std::fputs(text.c_str(), stdout);
  std::fflush(stdout);
}

// The terminal's cursor stands where the editing cursor was: writing the rest of the line
// again puts it at the end, and the next prompt starts below.
void LineEditor::abandonLine() {
  const LineInfo* line = el_line(editor_.get());
  std::string rest(line->cursor, line->lastchar);
  std::fputs((rest + "^C\n").c_str(), stdout);
  std::fflush(stdout);
}

void LineEditor::remember(const std::string& line) {
  if (line.find_first_not_of(" \t") == std::string::npos) return;
  HistEvent event;
  history(history_.get(), &event, H_ENTER, line.c_str());
  if (historyFile_.empty()) return;
  if (history(history_.get(), &event, H_SAVE, historyFile_.c_str()) < 0 && !reportedSaveFailure_) {
    reportedSaveFailure_ = true;
    std::fprintf(stderr, "zo_units: cannot write the history file '%s'\n", historyFile_.c_str());
  }
}
