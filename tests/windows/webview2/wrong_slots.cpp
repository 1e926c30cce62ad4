// The slot check for a build whose programs cannot run here (the 32-bit
// DLL): the compiler folds the count below to a constant, which a test reads
// from the assembly.
#include "tests/windows/webview2/interface_slots.h"

extern "C" int qrl_wrong_slots() {
  int wrong = 0;
  qrl::testing::ForEachCalledMethod(
      [&](const char*, auto member, int slot) { wrong += qrl::testing::SlotOf(member) != slot; });
  return wrong;
}
