#include "octave/gateway/HostObjectValue.hpp"

#include "host/UDClass.hpp"
#include "host/UDInterface.hpp"

DEFINE_OV_TYPEID_FUNCTIONS_AND_DATA(HostObjectValue, "twzo_units host object",
                                    "twzo_units_host_object");

HostObjectValue::HostObjectValue(UDInterface* object) : object_(object) {}

HostObjectValue::HostObjectValue(const HostObjectValue& other)
    : octave_base_value(other),
      object_(other.object_ != nullptr ? other.object_->getReference() : nullptr) {}

HostObjectValue::~HostObjectValue() {
  if (object_ != nullptr) object_->release();
}

UDInterface* HostObjectValue::objectOf(const octave_value& value) {
  const auto* held = dynamic_cast<const HostObjectValue*>(&value.get_rep());
  return held != nullptr ? held->object_ : nullptr;
}

octave_base_value* HostObjectValue::clone() const { return new HostObjectValue(*this); }

void HostObjectValue::print(std::ostream& os, bool pr_as_read_syntax) {
  print_raw(os, pr_as_read_syntax);
  newline(os);
}

void HostObjectValue::print_raw(std::ostream& os, bool) const {
  os << "<" << (object_ != nullptr ? object_->getClass()->getName() : "no") << " host object>";
}
