// GTK for the browser: started on first use when the host has not started it
// itself, on X11 so that windows have the ids that scripts pass around.
#pragma once

namespace qrl {

// True when GTK runs and has a display.
bool EnsureGtk();

}  // namespace qrl
