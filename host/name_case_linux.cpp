#include "host/name_case.h"

namespace qrl {

// The names are ASCII; only A to Z fold, whatever the locale says.
void CopyNameInLowerCase(char* out, const char* name) {
  for (; *name; ++name, ++out) {
    *out = (*name >= 'A' && *name <= 'Z') ? static_cast<char>(*name - 'A' + 'a') : *name;
  }
  *out = '\0';
}

}  // namespace qrl
