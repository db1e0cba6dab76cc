#include "host/interpreter/FailureReport.hpp"

#include <exception>
#include <memory>

#include "host/DebugQuitException.hpp"
#include "host/ErrorIdException.hpp"
#include "host/Exception.hpp"
#include "host/IUserException.hpp"
#include "host/InterruptException.hpp"

std::optional<std::string> FailureReport::capture(const std::function<void()>& action) {
  try {
    action();
    return std::nullopt;
  } catch (ErrorIdException* raised) {
    std::unique_ptr<ErrorIdException> owned(raised);
    return format(raised->getIdentifier(), raised->getMessage());
  } catch (Exception* raised) {
    std::unique_ptr<Exception> owned(raised);
    return format(nullptr, raised->getMessage());
  } catch (const fl::except::IUserException& raised) {
    return format(raised.GetIdentifier(), raised.GetMessageTxt());
  } catch (const Tarnwick::System::InterruptException&) {
    return format("CALVEX:interrupt", "Interrupted.");
  } catch (const Tarnwick::System::DebugQuitException&) {
    return format("CALVEX:dbquit", "Left the debugger.");
  } catch (const std::exception& raised) {
    return format(nullptr, raised.what());
  } catch (...) {
    // Anything else thrown by pointer cannot be freed without knowing its type.
    return format(nullptr, "An unknown failure ended the statement.");
  }
}

std::string FailureReport::format(const char* identifier, const char* message) {
  std::string text = message != nullptr ? message : "";
  if (identifier == nullptr || *identifier == '\0') return "Error: " + text;
  return std::string("Error (") + identifier + "): " + text;
}
