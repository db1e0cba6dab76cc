#pragma once

// File: Udunits.hpp
// The peer we compare with: UDUNITS-2's unit system, read from its default XML
// database (ut_read_xml(NULL), which honours UDUNITS2_XML_PATH).
//
// Example:
//   ut_unit* meter = ut_parse(twbench::udunitsSystem(), "meter", UT_ASCII);
//   ut_free(meter);

#include <udunits2.h>

namespace twbench {

// The process's UDUNITS-2 system, read on the first call and kept; null when the
// database cannot be read (then ut_parse answers null too).
ut_system* udunitsSystem();

// Reads a new system from the default database, its notes silenced; the caller frees
// it with ut_free_system. Null when it cannot be read.
ut_system* readUdunitsSystem();

}  // namespace twbench
