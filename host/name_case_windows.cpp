#include <windows.h>

#include "host/name_case.h"

namespace qrl {

void CopyNameInLowerCase(char* out, const char* name) {
  lstrcpyA(out, name);
  CharLowerA(out);
}

}  // namespace qrl
