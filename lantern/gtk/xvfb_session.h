// A display for runs on machines that have none: lantern starts its own
// virtual X server, points DISPLAY at it, and stops it when the process ends.
#pragma once

namespace qrl {

// Starts the server when DISPLAY is unset or empty, or when
// QRLANTERN_HEADLESS is "1" (what --headless sets). Writes a line to
// standard error and goes on without a display when the server cannot start.
void StartDisplayWhenNeeded();

}  // namespace qrl
