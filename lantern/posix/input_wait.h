// Waiting for a line at the prompt without stopping the message loop: a live
// browser keeps loading, and its events keep reaching the module, while
// lantern waits for the user to type.
#pragma once

namespace qrl {

// Returns once the file descriptor can be read (or has hung up), having run
// the message loop, if the build has one, all the while.
void WaitForInput(int fd);

}  // namespace qrl
