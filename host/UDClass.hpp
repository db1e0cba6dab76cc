#pragma once

// File: UDClass.hpp
// A host-object class: its name, superclass, constructor signatures, methods and
// properties, and the creation and destruction of its objects. A library derives one
// class per kind of object, adds its methods and properties (the class owns them) and
// overrides createClassSpecificObject and destroyObject.
//
// Example:
//   class UnitClass : public UDClass {
//     UDInterface* createClassSpecificObject(UDInterface*) override {
//       return new UDInterface(new Unit, this, UDDatabaseClient::getInternalClient());
//     }
//     void destroyObject(UDInterface* object) override {
//       delete static_cast<Unit*>(object->getObject());
//       object->setObject(nullptr);
//     }
//   };

#include <string>
#include <vector>

class UDDatabaseClient;
class UDInterface;
class UDMethodInfo;
class UDMethodSignature;
class UDPropInfo;

class UDClass {
 public:
  UDClass();
  UDClass(const UDClass&) = delete;
  UDClass& operator=(const UDClass&) = delete;

  // The name is copied; the flag is unused by this host.
  void setName(const char* name, bool flag);
  const char* getName() const { return name_.c_str(); }
  // Methods and properties not found in this class are looked up in the superclass.
  void setSuperClass(UDClass* superClass) { superClass_ = superClass; }
  UDClass* getSuperClass() const { return superClass_; }

  // Each takes ownership of what it is given; the order of declaration is kept.
  void addConstructorSignature(UDMethodSignature* signature);
  void addMethod(UDMethodInfo* method);
  void addProperty(UDPropInfo* property);

  const std::vector<UDMethodSignature*>& getConstructorSignatures() const {
    return constructorSignatures_;
  }
  const std::vector<UDMethodInfo*>& getMethods() const { return methods_; }
  const std::vector<UDPropInfo*>& getProperties() const { return properties_; }
  // Borrowed pointers, or null when neither this class nor a superclass has the name.
  UDMethodInfo* findMethod(const char* name) const;
  UDPropInfo* findProperty(const char* name) const;

  // Returns a new object (one reference, the caller's) from createClassSpecificObject(parent),
  // or null when the class makes none.
  UDInterface* createObject(UDDatabaseClient* client, UDInterface* parent);

  // A host object of this class whose children (see UDBreadthOnlyIterator) wrap the
  // class's own properties in declaration order, one UDPropInfo* each; borrowed, the
  // class owns it and makes it on first use. The holder itself wraps nothing, so it is
  // never handed to destroyObject.
  UDInterface* getPropertyHolder();

  // Returns a new object with one reference for the caller, or null (the default).
  virtual UDInterface* createClassSpecificObject(UDInterface* parent);
  // The same for a constructor with arguments in the native forms of a constructor
  // signature; null by default.
  virtual UDInterface* createClassSpecificObject(UDInterface* parent, void** args, int nargs);
  virtual ~UDClass();
  virtual bool canOtherClassContainThisClass(UDClass* other);  // false by default
  virtual bool canThisClassContainOtherClass(UDClass* other);  // false by default
  // Frees the library object that the host object wraps; called once per object that
  // wraps one, by UDInterface::destroy. Must not throw. Does nothing by default.
  virtual void destroyObject(UDInterface* object);

 private:
  std::string name_;
  UDClass* superClass_ = nullptr;
  std::vector<UDMethodSignature*> constructorSignatures_;  // owned
  std::vector<UDMethodInfo*> methods_;                     // owned
  std::vector<UDPropInfo*> properties_;                    // owned
  UDInterface* propertyHolder_ = nullptr;                  // one reference
};
