#include "lantern/windows/message_loop.h"

namespace qrl {

void DispatchWaitingMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

bool RunMessagesOnce(HANDLE object, DWORD milliseconds) {
  DispatchWaitingMessages();
  const DWORD count = object ? 1 : 0;
  // MWMO_INPUTAVAILABLE: messages that came while the last ones were
  // dispatched wake it too, not only those newer than the last look.
  const DWORD woken = MsgWaitForMultipleObjectsEx(count, object ? &object : nullptr, milliseconds,
                                                  QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  DispatchWaitingMessages();
  return count == 1 && woken == WAIT_OBJECT_0;
}

void RunMessagesFor(DWORD milliseconds) {
  const ULONGLONG end = GetTickCount64() + milliseconds;
  for (ULONGLONG now = GetTickCount64(); now < end; now = GetTickCount64())
    RunMessagesOnce(nullptr, static_cast<DWORD>(end - now));
  DispatchWaitingMessages();
}

}  // namespace qrl
