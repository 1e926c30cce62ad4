// One row of the vocabulary that the host learns: a script function with its
// handler and argument declaration, or a named constant.
#pragma once

#include <cstdint>

#include "host/host_contract.h"

namespace qrl {

inline constexpr int CommandCount = 41;

// Packs the argument counts of a function row: required in bits 0-7,
// optional in bits 8-15.
constexpr std::uint32_t ArgCounts(unsigned required, unsigned optional) {
  return required | (optional << 8);
}
constexpr unsigned ArgCountRequired(std::uint32_t counts) { return counts & 0xFFu; }
constexpr unsigned ArgCountOptional(std::uint32_t counts) { return (counts >> 8) & 0xFFu; }

template <class Owner>
struct CommandRowT {
  using Handler = HostWord (Owner::*)(HostWord passOn1, HostWord passOn2, HostWord passOn3,
                                      HostValue* args, HostWord argCount);

  Handler handler;          // null in a constant row
  const char* name;         // mixed case; the host gets it folded to lower case
  std::uint16_t nameLength;
  std::int32_t kind;        // KindFunction or KindConstant
  std::uint32_t spec;       // argument counts, or the constant's value
  std::uint64_t argTypes;   // one ArgType nibble per position, position 1 lowest
};

}  // namespace qrl
