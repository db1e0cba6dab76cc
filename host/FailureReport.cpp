#include "host/FailureReport.hpp"

#include <exception>
#include <memory>

#include "host/DebugQuitException.hpp"
#include "host/ErrorIdException.hpp"
#include "host/Exception.hpp"
#include "host/IUserException.hpp"
#include "host/InterruptException.hpp"

namespace {

FailureReport::Failure failure(const char* identifier, const char* message) {
  return {identifier != nullptr ? identifier : "", message != nullptr ? message : ""};
}

}  // namespace

std::optional<FailureReport::Failure> FailureReport::catchAll(const std::function<void()>& action) {
  try {
    action();
    return std::nullopt;
  } catch (ErrorIdException* raised) {
    auto owned = adoptError(raised);
    return failure(raised->getIdentifier(), raised->getMessage());
  } catch (Exception* raised) {
    auto owned = adoptError(raised);
    return failure(nullptr, raised->getMessage());
  } catch (const fl::except::IUserException& raised) {
    return failure(raised.GetIdentifier(), raised.GetMessageTxt());
  } catch (const Tarnwick::System::InterruptException&) {
    return failure("CALVEX:interrupt", "Interrupted.");
  } catch (const Tarnwick::System::DebugQuitException&) {
    return failure("CALVEX:dbquit", "Left the debugger.");
  } catch (const std::exception& raised) {
    return failure(nullptr, raised.what());
  } catch (...) {
    // Anything else thrown by pointer cannot be freed without knowing its type.
    return failure(nullptr, "An unknown failure ended the statement.");
  }
}

std::optional<std::string> FailureReport::capture(const std::function<void()>& action) {
  std::optional<Failure> raised = catchAll(action);
  if (!raised) return std::nullopt;
  return format(raised->identifier.c_str(), raised->message.c_str());
}

std::string FailureReport::format(const char* identifier, const char* message) {
  std::string text = message != nullptr ? message : "";
  if (identifier == nullptr || *identifier == '\0') return "Error: " + text;
  return std::string("Error (") + identifier + "): " + text;
}
