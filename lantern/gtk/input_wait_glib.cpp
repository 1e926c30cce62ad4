#include <glib-unix.h>
#include <glib.h>

#include "lantern/posix/input_wait.h"

namespace qrl {
namespace {

gboolean MarkReadable(gint, GIOCondition, gpointer ready) {
  *static_cast<bool*>(ready) = true;
  return G_SOURCE_REMOVE;
}

}  // namespace

// The browser's events come through the default main context, so waiting in
// that context is what keeps them flowing.
void WaitForInput(int fd) {
  bool ready = false;
  // The source removes itself when it fires, so no id is kept.
  g_unix_fd_add(fd, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR), MarkReadable, &ready);
  while (!ready) g_main_context_iteration(nullptr, TRUE);
}

}  // namespace qrl
