#pragma once

// File: LineEditor.hpp
// The prompt of a person at a terminal, through libedit: emacs-style line editing (or what
// ~/.editrc asks for), Up and Down through the statements entered before, kept across
// sessions in a file, and Tab completion. Ctrl-C abandons the line being typed; Ctrl-D on
// an empty line ends the input. The shell uses it only when standard input and standard
// output are terminals; scripts and pipes never come here.
//
// Example:
//   Completer completer(interpreter.workspace());
//   LineEditor editor(LineEditor::historyFile(),
//                     [&](const std::string& before) { return completer.complete(before); });
//   while (std::optional<std::string> line = editor.read()) session.feed(*line);

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/Completer.hpp"

// libedit's own types, as <histedit.h> declares them.
typedef struct editline EditLine;
typedef struct history History;

class LineEditor {
 public:
  using CompleteFunction = std::function<Completion(const std::string& beforeCursor)>;

  // The history keeps this many statements, in memory and in its file.
  static constexpr int kHistoryLength = 1000;

  // historyFile is read now and rewritten after each statement; "" keeps the history of this
  // session only. Throws std::runtime_error when libedit cannot start.
  LineEditor(std::string historyFile, CompleteFunction complete);
  LineEditor(const LineEditor&) = delete;
  LineEditor& operator=(const LineEditor&) = delete;

  // The next line after a ">> " prompt, without its line break; nothing at Ctrl-D on an
  // empty line or at the end of the input. A line abandoned with Ctrl-C is not returned.
  std::optional<std::string> read();

  // $ZO_UNITS_HISTORY when it is set (set but empty: no file), otherwise
  // $HOME/.zo_units_history, otherwise "".
  static std::string historyFile();

 private:
  static int readCharacter(EditLine* editor, wchar_t* character);
  static unsigned char completeAtCursor(EditLine* editor, int key);
  void list(const std::vector<std::string>& candidates);
  void abandonLine();
  void remember(const std::string& line);

  std::string historyFile_;
  CompleteFunction complete_;
  bool reportedSaveFailure_ = false;
  std::optional<char> keyAfterInterrupt_;
  std::unique_ptr<History, void (*)(History*)> history_;
  std::unique_ptr<EditLine, void (*)(EditLine*)> editor_;  // uses history_: ends first
};
