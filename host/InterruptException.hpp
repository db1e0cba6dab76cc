#pragma once

// Thrown by value when the user interrupts host-language code (Ctrl-C).

namespace Tarnwick::System {

class InterruptException {};

}  // namespace Tarnwick::System
