#include "host/call_trace.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "host/module_version.h"

namespace qrl {
namespace {

// Calls come from the host's one thread, and a nested call (a handler that
// lets the host run) ends before the call around it.
CallTrace* InnermostCall = nullptr;

std::string TextOf(const void* text) {
  return text ? TraceQuoted(std::string_view(static_cast<const char*>(text))) : "null";
}

std::string WideTextOf(const void* text) {
  return text ? TraceQuoted(std::u16string_view(static_cast<const char16_t*>(text))) : "null";
}

// Read as the handler reads it: by the type that the row declares.
std::string ArgumentText(const HostValue& arg, unsigned type) {
  switch (type) {
    case ArgText:
      return TextOf(arg.text);
    case ArgWideText:
      return WideTextOf(arg.text);
    default:
      return std::to_string(arg.intValue);
  }
}

// Only the positions that the row declares are read, however many the host
// says it passed: a handler reads no further either. The row's word of types
// has room for 16.
std::string CallText(const char* name, std::uint64_t argTypes, unsigned declaredArgs,
                     const HostValue* args, HostWord argCount) {
  std::string text = std::string(name) + "(";
  const HostWord declared = std::min<HostWord>(declaredArgs, 16);
  const HostWord shown = args ? std::clamp<HostWord>(argCount, 0, declared) : 0;
  for (HostWord i = 0; i < shown; ++i) {
    if (i > 0) text += ", ";
    text += ArgumentText(args[i], static_cast<unsigned>((argTypes >> (4 * i)) & 0xF));
  }
  if (argCount > shown)
    text += (shown > 0 ? ", " : "") + std::to_string(argCount - shown) + " more";
  return text + ")";
}

std::string ResultText(const HostValue& result, const char* container, std::size_t rows) {
  switch (result.type) {
    case ValueInteger:
      return "int " + std::to_string(result.intValue);
    case ValueText:
      return "text " + TextOf(result.text);
    case ValueWideText:
      return "wide " + WideTextOf(result.text);
    default:
      break;
  }
  if (container) return std::string(container) + "[" + std::to_string(rows) + "]";
  return "record type=" + std::to_string(result.type);
}

std::string OtherCodeDetail(std::int16_t code, HostWord index, const CommandInfo* info,
                            HostWord answer) {
  const std::string answered = " -> " + std::to_string(answer);
  switch (code) {
    case -1:
      return "count" + answered;
    case -2:
      if (answer == 1 && info)
        return "row " + std::to_string(index) + answered + " " +
               std::string(info->name, strnlen(info->name, CommandNameRoom));
      return "row " + std::to_string(index) + answered;
    case -3:
      return "code -3" + answered;
    default:
      return "row " + std::to_string(code) + answered + ", not a function";
  }
}

}  // namespace

CallTrace::CallTrace(const char* name, std::uint64_t argTypes, unsigned declaredArgs,
                     const HostValue* args, HostWord argCount) noexcept
    : enclosing_(InnermostCall) {
  InnermostCall = this;
  try {
    call_ = CallText(name, argTypes, declaredArgs, args, argCount);
  } catch (...) {
    // Without memory the line names no call; the call itself goes on.
  }
  // The call's own time starts here, not with the formatting above.
  stopwatch_ = TraceStopwatch();
}

CallTrace::~CallTrace() {
  InnermostCall = enclosing_;
  Trace("call", [this] {
    return call_ + " -> " + result_ + reports_ + " in " + stopwatch_.Elapsed();
  });
}

void CallTrace::NoteDelivery(const HostValue* result) noexcept {
  if (!InnermostCall) return;
  try {
    InnermostCall->result_ = result ? ResultText(*result, InnermostCall->container_,
                                                 InnermostCall->containerRows_)
                                    : "nothing (no result record)";
  } catch (...) {
  }
}

void CallTrace::NoteContainer(const char* kind, std::size_t count) noexcept {
  if (!InnermostCall) return;
  InnermostCall->container_ = kind;
  InnermostCall->containerRows_ = count;
}

void CallTrace::NoteReport(const char* text) noexcept {
  if (!InnermostCall) return;
  try {
    InnermostCall->reports_ += " reported=" + TextOf(text);
  } catch (...) {
  }
}

void TraceOtherCode(std::int16_t code, HostWord index, const CommandInfo* info,
                    HostWord answer) noexcept {
  const bool vocabulary = code >= -3 && code <= -1;
  Trace(vocabulary ? "vocabulary" : "call",
        [&] { return OtherCodeDetail(code, index, info, answer); });
}

void TraceQuery(std::int16_t code, const void* buffer, HostWord size, HostWord answer) noexcept {
  Trace("query", [&] {
    std::string text = std::to_string(code);
    if (code == 2) text += " words=" + std::to_string(size);
    text += " -> " + std::to_string(answer);
    if (code == 1 && buffer && size > 0) {
      const auto* description = static_cast<const char*>(buffer);
      const std::size_t length = strnlen(description, static_cast<std::size_t>(size));
      text += " description=" + TraceQuoted(std::string_view(description, length), TextFieldSize);
    }
    return text;
  });
}

}  // namespace qrl
