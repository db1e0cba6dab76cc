#pragma once

// File: OctaveValues.hpp
// The border between Octave's values and the host's arrays, both ways. Numbers of every
// real class become doubles, logicals logicals, char arrays char matrices, cells cells
// (element by element), and objects of the five classes handle arrays; back again,
// int32 stays int32, an empty text is Octave's '' and host objects become objects of
// the Octave class named after their host class.
//
// Example:
//   HostArrayPtr name = OctaveValues::toHost(args(1));  // 'furlong' -> 1x7 char
//   octave_value factor = OctaveValues::toOctave(*result);

#include <octave/oct.h>

#include "host/HostArray.hpp"

class OctaveValues {
 public:
  // Returns a new host array of the value. Raises "CALVEX:invalidArgument" (as an
  // ErrorIdException*) for what the host has no form of: complex numbers, arrays of
  // more than two dimensions (logicals aside), texts holding a NUL character, structs,
  // function handles, objects of other classes, objects without a host object.
  static HostArrayPtr toHost(const octave_value& value);

  // The Octave value of the host array. A host object becomes an object of its class,
  // made by that class's constructor from a HostObjectValue (several make an object
  // array, none []), so this may raise Octave's errors.
  static octave_value toOctave(const HostArray& value);
};
