#include "html/node_string.h"

#include <ostream>

namespace qrl {

std::ostream& operator<<(std::ostream& out, const NodeString& text) { return out << std::string_view(text); }

}  // namespace qrl
