// What a call leaves on the object (the frame) and how a handler reads its
// arguments. A handler trusts the row's declared types and copies every text
// at once, so the host's memory is never touched after the read.
#pragma once

#include <cstdint>
#include <string>

#include "host/host_contract.h"

namespace qrl {

struct CallFrame {
  HostWord hostContext = 0;
  ResultCallbackFn resultCallback = nullptr;
  HostServices* services = nullptr;
  HostValue* result = nullptr;
};

// `position` counts from 0; the caller has checked it against argCount.
inline std::int32_t IntArg(const HostValue* args, int position) {
  return args[position].intValue;
}

inline std::string TextArg(const HostValue* args, int position) {
  const auto* text = static_cast<const char*>(args[position].text);
  return text ? std::string(text) : std::string();
}

inline std::u16string WideArg(const HostValue* args, int position) {
  const auto* text = static_cast<const char16_t*>(args[position].text);
  return text ? std::u16string(text) : std::u16string();
}

}  // namespace qrl
