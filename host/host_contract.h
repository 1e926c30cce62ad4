// The binary contract between a scripting host and the extender: value records,
// the services block, the command description record and the signatures of the
// exports, the result callback and every host service.
//
// On a 32-bit build every record has the host's own layout, byte for byte, and
// each offset is checked below. On a 64-bit build the same fields keep their
// order and meaning with natural alignment, and every word that can carry a
// pointer is pointer-sized:
//
//   HostValue (48 bytes): private[24] @0, intValue int32 @24, type uint32 @28,
//                         text pointer @32, private word @40.
//   HostServices: eighteen pointer-sized slots; hostVersion is slot 2, context
//                 slot 5, DllNamedValue 8, DllArrHandler 9, DllArrayServices 10,
//                 DllReportError 11, DllMapServices 17.
//   CommandInfo: unchanged (it holds no pointer): index @0, kind @4,
//                argTypes @8, spec @16, nameLength @20, name @22.
//   ArrayDims:   five 32-bit words on both widths.
//
// The size that goes with a value record in a service call is sizeof(HostValue):
// 40 on 32-bit hosts, 48 on 64-bit ones. The list that QORExtenderQuery reads
// with code 2 is `size` HostWords.
#pragma once

#include <cstddef>
#include <cstdint>

#if defined(_WIN32)
#define QRL_HOSTCALL __stdcall
#else
#define QRL_HOSTCALL
#endif

namespace qrl {

// A machine word as the host passes it: 32 bits on the host's own platform,
// pointer-sized elsewhere so that handles and pointers survive the trip.
using HostWord = std::intptr_t;

enum HostValueType : std::uint32_t {
  ValueInteger = 1,
  ValueText = 2,
  ValueWideText = 0x80,
};

struct HostValue {
  unsigned char hostPrivate[24];  // the host's; copied whole, never read
  std::int32_t intValue;          // meaningful when type is ValueInteger
  std::uint32_t type;             // a HostValueType, or the host's array/map code
  const void* text;               // zero-terminated narrow or UTF-16 text
  HostWord hostTail;              // the host's; copied whole, never read
};

inline constexpr HostWord HostValueSize = sizeof(HostValue);

struct HostServices;

using ResultCallbackFn = HostWord(QRL_HOSTCALL*)(HostWord zero, HostWord hostContext,
                                                 HostServices* services, HostValue* result);
using DllNamedValueFn = HostWord(QRL_HOSTCALL*)(HostWord context, const char* name,
                                                HostValue* value, HostWord valueSize,
                                                HostWord flags);
using DllArrayServicesFn = HostWord(QRL_HOSTCALL*)(HostWord context, HostValue* array,
                                                   HostWord valueSize, std::int32_t* dims,
                                                   HostWord dimsSize, HostWord flags);
using DllArrHandlerFn = HostWord(QRL_HOSTCALL*)(HostWord context, HostValue* array,
                                                HostWord index, HostWord index1, HostWord index2,
                                                HostWord index3, HostWord index4,
                                                HostValue* value, HostWord valueSize,
                                                HostWord flags);
using DllReportErrorFn = HostWord(QRL_HOSTCALL*)(HostWord context, const char* text);
using DllMapServicesFn = HostWord(QRL_HOSTCALL*)(HostWord context, HostValue* map,
                                                 HostWord mapSize, HostWord zero1,
                                                 HostWord zero2, HostValue* key,
                                                 HostWord keySize, HostValue* value,
                                                 HostWord valueSize, HostWord operation);

// Operations of DllMapServices.
inline constexpr HostWord MapCreate = 3;
inline constexpr HostWord MapStore = 7;
// The last argument of the array and named-value services.
inline constexpr HostWord ServiceFlags = 2;
// Hosts below this version have no map service.
inline constexpr std::uintptr_t FirstHostVersionWithMaps = 1011;
// Five words: element count and four zeros.
inline constexpr HostWord ArrayDimsSize = 5 * sizeof(std::int32_t);

struct HostServices {
  HostWord reserved0[2];
  std::uintptr_t hostVersion;
  HostWord reserved3[2];
  HostWord context;  // first argument of every service
  HostWord reserved6[2];
  DllNamedValueFn DllNamedValue;
  DllArrHandlerFn DllArrHandler;
  DllArrayServicesFn DllArrayServices;
  DllReportErrorFn DllReportError;
  HostWord reserved12[5];
  DllMapServicesFn DllMapServices;
};

enum CommandKind : std::int32_t {
  KindFunction = 2,
  KindConstant = 3,
};

// Room that a host gives for the name: the longest name and its zero.
inline constexpr std::size_t CommandNameRoom = 25;

struct CommandInfo {
  std::int32_t index;
  std::int32_t kind;
  std::uint64_t argTypes;
  std::uint32_t spec;
  std::uint16_t nameLength;
  char name[CommandNameRoom];
};

// Argument type nibbles of CommandInfo::argTypes.
enum ArgType : unsigned {
  ArgInteger = 0,
  ArgText = 1,
  ArgWideText = 5,
};

extern "C" {
using QORExtenderQueryFn = HostWord(QRL_HOSTCALL*)(HostWord code, void* buffer, HostWord size);
using QORExtender2Fn = HostWord(QRL_HOSTCALL*)(HostWord passOn1, HostWord passOn2,
                                               HostWord hostContext, HostWord code,
                                               ResultCallbackFn resultCallback,
                                               HostServices* services, HostWord passOn3,
                                               void* args, HostWord argCount, HostValue* result);
}

#if INTPTR_MAX == INT32_MAX
static_assert(sizeof(HostValue) == 40);
static_assert(offsetof(HostValue, intValue) == 24);
static_assert(offsetof(HostValue, type) == 28);
static_assert(offsetof(HostValue, text) == 32);
static_assert(offsetof(HostServices, hostVersion) == 8);
static_assert(offsetof(HostServices, context) == 20);
static_assert(offsetof(HostServices, DllNamedValue) == 32);
static_assert(offsetof(HostServices, DllArrHandler) == 36);
static_assert(offsetof(HostServices, DllArrayServices) == 40);
static_assert(offsetof(HostServices, DllReportError) == 44);
static_assert(offsetof(HostServices, DllMapServices) == 68);
#else
static_assert(sizeof(HostValue) == 48);
static_assert(offsetof(HostValue, text) == 32);
static_assert(offsetof(HostServices, DllMapServices) == 17 * sizeof(void*));
#endif
static_assert(offsetof(CommandInfo, index) == 0);
static_assert(offsetof(CommandInfo, kind) == 4);
static_assert(offsetof(CommandInfo, argTypes) == 8);
static_assert(offsetof(CommandInfo, spec) == 16);
static_assert(offsetof(CommandInfo, nameLength) == 20);
static_assert(offsetof(CommandInfo, name) == 22);
static_assert(ArrayDimsSize == 20);

}  // namespace qrl
