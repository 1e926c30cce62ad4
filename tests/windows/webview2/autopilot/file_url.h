// The file that a file:// URL names, as a path that _wfopen takes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace qrl::autopilot {

// file:///C:/a/b.html gives C:/a/b.html; file:///a/b.html gives /a/b.html,
// which wine reads on the drive that maps the Unix root; file://localhost/
// is the same as file:///. Percent escapes are undone as UTF-8; a query or a
// fragment is no part of the file. Nothing for another scheme, or for a file
// on another host.
std::optional<std::wstring> FilePathOfUrl(std::wstring_view url);

}  // namespace qrl::autopilot
