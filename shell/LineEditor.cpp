#include "shell/LineEditor.hpp"

#include <histedit.h>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <stdexcept>

namespace {

volatile std::sig_atomic_t interruptSeen = 0;

extern "C" void noteInterrupt(int) { interruptSeen = 1; }

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
  el_set(editor, EL_ADDFN, "zo-complete", "Complete the name before the cursor",
         &LineEditor::completeAtCursor);
  el_set(editor, EL_BIND, "^I", "zo-complete", nullptr);
  el_source(editor, nullptr);
}

std::optional<std::string> LineEditor::read() {
  while (true) {
    // Ctrl-C interrupts the read (no SA_RESTART) instead of ending the process; outside
    // the prompt it ends a running statement as it always did.
    struct sigaction onInterrupt = {};
    onInterrupt.sa_handler = noteInterrupt;
    sigemptyset(&onInterrupt.sa_mask);
    struct sigaction previous = {};
    sigaction(SIGINT, &onInterrupt, &previous);
    interruptSeen = 0;
    int count = 0;
    const char* line = el_gets(editor_.get(), &count);
    int failure = errno;
    sigaction(SIGINT, &previous, nullptr);
    if (line != nullptr) {
      std::string text(line, static_cast<std::size_t>(count));
      if (!text.empty() && text.back() == '\n') text.pop_back();
      remember(text);
      return text;
    }
    if (count == 0 || failure != EINTR) return std::nullopt;
    abandonLine(interruptSeen != 0);
  }
}

std::string LineEditor::historyFile() {
  if (const char* chosen = std::getenv("ZO_UNITS_HISTORY")) return chosen;
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') return "";
  return std::string(home) + "/.zo_units_history";
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
void LineEditor::abandonLine(bool interrupted) {
  const LineInfo* line = el_line(editor_.get());
  std::string rest(line->cursor, line->lastchar);
  std::fputs((rest + (interrupted ? "^C\n" : "\n")).c_str(), stdout);
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
