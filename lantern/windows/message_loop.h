// The thread's message loop, as lantern runs it on Windows: windows of the
// script, the web control and the module's own windows all get their
// messages here, and only while lantern runs this loop.
#pragma once

#include <windows.h>

namespace qrl {

// Dispatches every message that is waiting now.
void DispatchWaitingMessages();

// One turn of the loop: dispatches what is waiting, sleeps until a message
// comes, `object` (which may be null) is signalled or `milliseconds` have
// passed, and dispatches what came. True when the object is signalled.
bool RunMessagesOnce(HANDLE object, DWORD milliseconds);

// Runs the loop for that long.
void RunMessagesFor(DWORD milliseconds);

}  // namespace qrl
