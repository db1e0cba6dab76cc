#pragma once

// Test helpers for the library's errors and warnings.
//
//   EXPECT_UNIT_ERROR(registry->unregisterUnit("furlongs"), "Unit:NotFound",
//                     "Referenced unit 'furlongs' does not exist.");
//   WarningCapture warnings;  ...  EXPECT_EQ(warnings.identifiers(), {"Unit:Redefining"});

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/Warning.hpp"

struct CapturedError {
  std::string identifier;
  std::string message;
};

// Runs the callable; returns the identifier and message of the ErrorIdException* it
// throws (and deletes it), or nothing when it returns normally. A host Exception*
// without identifier is reported with the identifier "<Exception>".
std::optional<CapturedError> captureError(const std::function<void()>& action);

#define EXPECT_UNIT_ERROR(statement, expectedId, expectedMessage)             \
  do {                                                                        \
    auto captured_ = captureError([&] { statement; });                        \
    if (!captured_) {                                                         \
      ADD_FAILURE() << #statement " raised nothing; expected " << expectedId; \
    } else {                                                                  \
      EXPECT_EQ(captured_->identifier, expectedId) << #statement;             \
      EXPECT_EQ(captured_->message, expectedMessage) << #statement;           \
    }                                                                         \
  } while (0)

#define EXPECT_UNIT_ERROR_ID(statement, expectedId)                           \
  do {                                                                        \
    auto captured_ = captureError([&] { statement; });                        \
    if (!captured_) {                                                         \
      ADD_FAILURE() << #statement " raised nothing; expected " << expectedId; \
    } else {                                                                  \
      EXPECT_EQ(captured_->identifier, expectedId) << #statement;             \
    }                                                                         \
  } while (0)

// Collects the warnings issued while it lives, instead of printing them.
class WarningCapture {
 public:
  WarningCapture();
  ~WarningCapture();
  WarningCapture(const WarningCapture&) = delete;
  WarningCapture& operator=(const WarningCapture&) = delete;

  const std::vector<std::string>& identifiers() const { return identifiers_; }
  const std::vector<std::string>& texts() const { return texts_; }

 private:
  WarningHandler previous_;
  std::vector<std::string> identifiers_;
  std::vector<std::string> texts_;
};
