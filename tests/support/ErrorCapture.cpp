#include "tests/support/ErrorCapture.hpp"

#include <memory>

#include "host/ErrorIdException.hpp"

std::optional<CapturedError> captureError(const std::function<void()>& action) {
  try {
    action();
  } catch (ErrorIdException* raised) {
    std::unique_ptr<ErrorIdException> error(raised);
    return CapturedError{error->getIdentifier(), error->getMessage()};
  } catch (Exception* raised) {
    std::unique_ptr<Exception> error(raised);
    return CapturedError{"<Exception>", error->getMessage()};
  }
  return std::nullopt;
}

WarningCapture::WarningCapture() {
  previous_ = utSetWarningHandler([this](const std::string& identifier, const std::string& text) {
    identifiers_.push_back(identifier);
    texts_.push_back(text);
  });
}

WarningCapture::~WarningCapture() { utSetWarningHandler(previous_); }
