// Windows by their X11 ids: those that GTK made in this process, and foreign
// ones that only the X server knows.
#pragma once

#include <gtk/gtk.h>

#include <string_view>

#include "browser/browser_component.h"

namespace qrl {

// The GTK toplevel of this process whose X11 id is `window`, or null.
GtkWindow* FindOwnWindow(WindowHandle window);

// True when the X server knows a window of this id.
bool IsForeignWindow(WindowHandle window);

// The title of a foreign window; waits until the server has it.
void SetForeignWindowTitle(WindowHandle window, std::string_view text);

// The size of a foreign window's inside; empty when there is no such window.
ClientRect ForeignClientRect(WindowHandle window);

}  // namespace qrl
