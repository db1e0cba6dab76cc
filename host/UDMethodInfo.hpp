#pragma once

// File: UDMethodInfo.hpp
// A method of a host-object class. A library derives from it, declares one or more
// signatures and implements invokeMethod; the host picks the first declared signature
// that fits a call, converts the arguments and calls invokeMethod with it.
//
// Example:
//   class ConvertMethod : public UDMethodInfo {
//    public:
//     ConvertMethod() : UDMethodInfo(false) { setName("convert", false); ... }
//     void invokeMethod(UDMethodSignature*, int*, void** results, int, void** args) override {
//       auto* value = static_cast<double*>(utMallocWithCheck(sizeof(double)));
//       *value = 2 * *static_cast<double*>(args[1]);
//       results[0] = value;  // the host frees it
//     }
//   };

#include <string>
#include <vector>

class UDMethodSignature;

class UDMethodInfo {
 public:
  // The flag is unused by this host.
  explicit UDMethodInfo(bool flag);
  UDMethodInfo(const UDMethodInfo&) = delete;
  UDMethodInfo& operator=(const UDMethodInfo&) = delete;
  virtual ~UDMethodInfo();

  // The name is copied; the flag is unused by this host.
  void setName(const char* name, bool flag);
  const char* getName() const { return name_.c_str(); }

  // Takes ownership of the signature. Signatures are tried in the order they were added.
  void addMethodSignature(UDMethodSignature* signature);
  const std::vector<UDMethodSignature*>& getSignatures() const { return signatures_; }

  // Runs the method. `args` holds nArgs native arguments as the matched signature's types
  // give them (args[0] is the object); `results` holds one null slot per result type of
  // the signature, of which the first *nResults are asked for. Fill the slots as the
  // result types say; the host takes over what is in them, also when this throws.
  virtual void invokeMethod(UDMethodSignature* matched, int* nResults, void** results, int nArgs,
                            void** args) = 0;

 private:
  std::string name_;
  std::vector<UDMethodSignature*> signatures_;  // owned
};
