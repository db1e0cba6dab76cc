#pragma once

// File: Session.hpp
// Feeds lines to the interpreter and decides when the session ends: at exit or quit,
// at the end of the input, or at the first error unless errors are to be passed over.
//
// Example:
//   Interpreter interpreter;
//   Session session(interpreter, {/*echo=*/true, /*keepGoing=*/false, /*prompt=*/false});
//   std::ifstream script("demo.cvx");
//   return session.run(script);   // the exit status: 1 when an error stopped it

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

class Interpreter;

class Session {
 public:
  struct Options {
    bool echo = false;       // print each line first: ">> statement", comments as they are
    bool keepGoing = false;  // go on after a failed line
    bool prompt = false;     // print ">> " before reading each line
  };

  Session(Interpreter& interpreter, Options options)
      : interpreter_(interpreter), options_(options) {}

  // Runs one line; false when the session is over.
  bool feed(const std::string& raw);
  // Runs the lines of the stream until the session is over; returns the exit status.
  int run(std::istream& in);
  // The same with lines from nextLine, which gives nothing at the end of the input.
  int run(const std::function<std::optional<std::string>()>& nextLine);
  // 1 when an error ended the session, otherwise 0.
  int exitStatus() const { return stoppedByError_ ? 1 : 0; }

 private:
  Interpreter& interpreter_;
  Options options_;
  bool stoppedByError_ = false;
};
