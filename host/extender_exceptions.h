// Failures of the host's services as they travel inside the module. None of
// them derives from anything: the result builders and the dispatch guard
// catch them by their own type.
#pragma once

#include <cstdint>
#include <string>

#include "host/host_contract.h"

namespace qrl {

// An array service failed; `text` names the service.
struct CDllGenericExecption {
  HostWord status;
  std::string text;
};

// The map service failed.
struct CDllMapException {
  HostWord status;
};

// Raised when the host is too old for maps; dropped by the map builder.
struct CUserException {
  std::uint32_t code = 201040;
};

}  // namespace qrl
