// The character references that link and image commands decode. The map's
// byte order is also the order in which DecodeEntities applies the rows, so
// one row's output can complete a reference for a later row ("&amp;lt;" ends
// as "<") but never for itself or an earlier one.
#include "commands/text_utils.h"

namespace qrl {

// The copyright and registered signs are single bytes (Latin-1), not UTF-8,
// whatever encoding the surrounding text has: scripts compare against them.
const std::map<std::string, std::string> EntityTable = {
    {"&amp;", "&"},     {"&apos;", "'"},   {"&copy;", "\xA9"}, {"&gt;", ">"},
    {"&lt;", "<"},      {"&quot;", "\""},  {"&reg;", "\xAE"},
};

std::string DecodeEntities(std::string_view text) {
  std::string decoded(text);
  if (decoded.find('&') == std::string::npos) return decoded;
  for (const auto& [reference, character] : EntityTable) {
    decoded = ReplaceAll(decoded, reference, character);
  }
  return decoded;
}

}  // namespace qrl
