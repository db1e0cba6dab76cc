#pragma once

// Thrown by value when the user leaves the host's debugger in the middle of a call
// into host-language code.

namespace Tarnwick::System {

class DebugQuitException {};

}  // namespace Tarnwick::System
