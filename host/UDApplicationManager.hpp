#pragma once

// File: UDApplicationManager.hpp
// The host's list of loaded modules' applications, where the interpreter finds the
// classes that a person can construct.
//
// Example:
//   UDApplicationManager::addApplication(application);
//   UDClass* unitClass = UDApplicationManager::findClass("Unit");

#include <vector>

class UDApplication;
class UDClass;

class UDApplicationManager {
 public:
  // Takes ownership; the application and its classes stay for the rest of the process
  // (they are never freed, as objects of their classes may be alive until the end).
  // Adding the same application twice changes nothing.
  static void addApplication(UDApplication* application);
  // Borrowed; null when there is none of that name.
  static UDApplication* findApplication(const char* name);
  // The first class of that name in the applications, in the order they were added;
  // borrowed, null when there is none.
  static UDClass* findClass(const char* name);
  static const std::vector<UDApplication*>& getApplications();
};
