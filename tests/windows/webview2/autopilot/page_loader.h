// What the autopilot control shows for an address: the text of a local
// file, an empty page for about:blank, or an error page of its own.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/windows/webview2/autopilot/navigation_result.h"

namespace qrl::autopilot {

struct LoadedPage {
  std::wstring markup;
  bool succeeded = true;
  std::int32_t errorStatus = WebErrorStatus::Unknown;
};

// A file:// URL gives the file's bytes read as UTF-8. A file that can't be
// read, or any scheme but file and about:blank, gives a failed page with an
// error page as its markup, as a browser without a network would.
LoadedPage LoadUrl(std::wstring_view url);

}  // namespace qrl::autopilot
