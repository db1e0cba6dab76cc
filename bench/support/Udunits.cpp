#include "bench/support/Udunits.hpp"

namespace twbench {

ut_system* readUdunitsSystem() {
  // The database's own notes ("overrides prefixed unit ...") are not our figures.
  ut_set_error_message_handler(ut_ignore);
  return ut_read_xml(nullptr);
}

ut_system* udunitsSystem() {
  static ut_system* system = readUdunitsSystem();
  return system;
}

}  // namespace twbench
