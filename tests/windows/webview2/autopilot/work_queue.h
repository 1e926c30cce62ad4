// Work for the autopilot control's thread, run out of its message loop, so
// that no answer or event arrives inside the call that caused it. The queue
// belongs to the thread that first posts to it: the control's objects are
// all used from the one thread that made them, as a real control's are.
#pragma once

#include <windows.h>

#include <functional>

namespace qrl::autopilot {

// How long a page takes to load, from its NavigationStarting to its commit.
// A script that waits for "Nav" looks at the window between turns of the
// loop, and a turn may sleep up to 50 ms (lantern's wait does) and then
// handle everything that came meanwhile: a shorter load would often be over,
// "NavComplete" and all, before the script looked.
inline constexpr UINT LoadTimeMs = 150;

// Runs `work` at the next turn of the message loop, after what is already
// waiting.
void PostWork(std::function<void()> work);

// Runs `work` once LoadTimeMs have passed. Such work runs in the order it was
// posted.
void PostWorkAfterLoadTime(std::function<void()> work);

}  // namespace qrl::autopilot
