#include "browser/webkitgtk/gtk_session.h"

#include <gtk/gtk.h>

namespace qrl {

bool EnsureGtk() {
  static bool ready = false;
  if (ready) return true;
  if (gdk_display_get_default() == nullptr) {
    // Window ids are X11 ids: a host that has not picked a backend gets X11.
    gdk_set_allowed_backends("x11");
    if (!gtk_init_check(nullptr, nullptr)) return false;
  }
  ready = gdk_display_get_default() != nullptr;
  return ready;
}

}  // namespace qrl
