// What Query with code 1 needs of the platform: the module's own file name,
// its version number and the built-in description.
#pragma once

#include <cstddef>
#include <cstdint>

namespace qrl {

// Capacity of the object's text fields and of the description buffer.
inline constexpr std::size_t TextFieldSize = 260;

std::int32_t ReadVersionNumber();

// Writes the module's file name without directory and extension into
// `name` (TextFieldSize bytes). Returns false, leaving `name` alone, when the
// module's path can't be learned or doesn't fit.
bool ReadModuleBaseName(char* name);

// Fills `buffer` (TextFieldSize bytes) with the description, `~` turned into a
// line feed and `|` into a tab.
void LoadDescription(char* buffer);

}  // namespace qrl
