// The implementation of the two operations, over the class that owns the
// handlers (so that the command table can hold its member functions), and the
// frame helpers with which every handler reads its call and gives its result.
//
// Local rules: Dispatch keeps one frame and runs one call at a time; every
// path through a handler ends in exactly one DeliverResult. No exception ever
// leaves Dispatch: one that escapes a handler is reported to the host and the
// call still delivers what had been made, or the integer -1. With the trace
// on, every call and query also leaves its line (see host/call_trace.h).
#pragma once

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <exception>

#include "host/call_frame.h"
#include "host/call_trace.h"
#include "host/command_row.h"
#include "host/extender_base.h"
#include "host/extender_exceptions.h"
#include "host/module_version.h"
#include "host/name_case.h"
#include "trace/trace.h"

namespace qrl {

template <class Handlers>
class CQorExtenderT : public CExtenderBase {
 public:
  HostWord Query(HostWord code, void* buffer, HostWord size) override {
    const HostWord answer = Answer(LowHalf(code), buffer, size);
    if (TraceOn()) TraceQuery(LowHalf(code), buffer, size, answer);
    return answer;
  }

  HostWord Dispatch(HostWord passOn1, HostWord passOn2, HostWord hostContext, HostWord code,
                    ResultCallbackFn resultCallback, HostServices* services, HostWord passOn3,
                    void* args, HostWord argCount, HostValue* result) override {
    frame = CallFrame{hostContext, resultCallback, services, result};
    const std::int16_t row = LowHalf(code);
    if (TraceOn()) return TracedRoute(row, passOn1, passOn2, passOn3, args, argCount);
    return Route(row, passOn1, passOn2, passOn3, args, argCount);
  }

  // The last act of every handler: hands the record to the host, with the
  // frame as it stands now (a nested call may have replaced it).
  HostWord DeliverResult() {
    if (TraceOn()) CallTrace::NoteDelivery(frame.result);
    lastDelivery = frame.resultCallback
                       ? frame.resultCallback(0, frame.hostContext, frame.services, frame.result)
                       : 0;
    delivered = true;
    return lastDelivery;
  }

  HostWord GiveInt(std::int32_t value) {
    if (frame.result) {
      frame.result->intValue = value;
      frame.result->type = ValueInteger;
    }
    return DeliverResult();
  }

  // The text must stay readable until DeliverResult has returned.
  HostWord GiveText(const char* text) {
    if (frame.result) {
      frame.result->text = text;
      frame.result->type = ValueText;
    }
    return DeliverResult();
  }

  HostWord GiveWideText(const char16_t* text) {
    if (frame.result) {
      frame.result->text = text;
      frame.result->type = ValueWideText;
    }
    return DeliverResult();
  }

  // An array or map that a builder filled goes back whole.
  HostWord GiveRecord(const HostValue& record) {
    if (frame.result) std::memcpy(frame.result, &record, sizeof(HostValue));
    return DeliverResult();
  }

  void ReportError(const char* text) {
    if (TraceOn()) CallTrace::NoteReport(text);
    if (frame.services && frame.services->DllReportError)
      frame.services->DllReportError(frame.services->context, text);
  }

  // The report of a failed service: its name, a blank, the status in decimal.
  void ReportServiceFailure(const char* service, HostWord status) {
    char report[96];
    std::snprintf(report, sizeof report, "%s %ld", service, static_cast<long>(status));
    ReportError(report);
  }

  CallFrame frame;
  std::int32_t versionNumber = 0;
  char descriptionText[TextFieldSize] = {};
  char moduleBaseName[TextFieldSize] = {};

 protected:
  // A builder fills a host array or map here, so that a failure that leaves
  // the handler can still deliver the record as far as it came.
  HostValue& StartRecord() {
    recordInProgress = HostValue{};
    recordStarted = true;
    return recordInProgress;
  }

  HostValue* FinishRecord(HostValue* out) {
    std::memcpy(out, &recordInProgress, sizeof(HostValue));
    recordStarted = false;
    return out;
  }

 private:
  using Handler = typename CommandRowT<Handlers>::Handler;

  HostWord Answer(std::int16_t code, void* buffer, HostWord size) {
    switch (code) {
      case 1:
        return QueryVersion(static_cast<char*>(buffer), size);
      case 2:
        return FindFive(static_cast<const HostWord*>(buffer), size);
      default:
        return 0;
    }
  }

  HostWord Route(std::int16_t row, HostWord passOn1, HostWord passOn2, HostWord passOn3,
                 void* args, HostWord argCount) {
    switch (row) {
      case -3:
        return 1;
      case -1:
        return CommandCount;
      case -2:
        return Describe(argCount, static_cast<CommandInfo*>(args));
      default:
        break;
    }
    const Handler handler = HandlerOf(row);
    if (!handler) return 0;
    return RunHandler(handler, passOn1, passOn2, passOn3, static_cast<HostValue*>(args), argCount);
  }

  // A host that keeps to the announced vocabulary never sends a row that has
  // no handler; one that does gets 0 and nothing happens.
  static Handler HandlerOf(std::int16_t row) {
    if (row < 0 || row >= CommandCount) return nullptr;
    return Handlers::CommandTable[row].handler;
  }

  // Route with the call's trace line around it.
  HostWord TracedRoute(std::int16_t row, HostWord passOn1, HostWord passOn2, HostWord passOn3,
                       void* args, HostWord argCount) {
    if (!HandlerOf(row)) {
      const HostWord answer = Route(row, passOn1, passOn2, passOn3, args, argCount);
      TraceOtherCode(row, argCount, static_cast<const CommandInfo*>(args), answer);
      return answer;
    }
    const auto& function = Handlers::CommandTable[row];
    const CallTrace traced(function.name, function.argTypes,
                           ArgCountRequired(function.spec) + ArgCountOptional(function.spec),
                           static_cast<const HostValue*>(args), argCount);
    return Route(row, passOn1, passOn2, passOn3, args, argCount);
  }

  HostWord QueryVersion(char* buffer, HostWord size) {
    ReadModuleBaseName(moduleBaseName);
    if (buffer && size > 0) {
      LoadDescription(descriptionText);
      const auto limit = std::min<std::size_t>(static_cast<std::size_t>(size), TextFieldSize);
      const auto length = strnlen(descriptionText, limit - 1);
      std::memcpy(buffer, descriptionText, length);
      buffer[length] = '\0';
    }
    versionNumber = ReadVersionNumber();
    return versionNumber;
  }

  static HostWord FindFive(const HostWord* words, HostWord count) {
    if (!words || count < 1) return -1;
    return std::find(words, words + count, HostWord{5}) != words + count ? 5 : -1;
  }

  static HostWord Describe(HostWord index, CommandInfo* info) {
    if (index < 0 || index >= CommandCount) return 0;
    if (!info) return 1;
    const auto& row = Handlers::CommandTable[index];
    info->index = static_cast<std::int32_t>(index);
    info->kind = row.kind;
    info->argTypes = row.argTypes;
    info->spec = row.spec;
    info->nameLength = row.nameLength;
    CopyNameInLowerCase(info->name, row.name);
    return 1;
  }

  // A handler that lets the host run (a named value, a message) may see a
  // nested call; that call must leave the enclosing one's delivery state as
  // it found it.
  class EnclosingCall {
   public:
    explicit EnclosingCall(CQorExtenderT& extender)
        : extender_(extender),
          delivered_(extender.delivered),
          recordStarted_(extender.recordStarted),
          lastDelivery_(extender.lastDelivery) {
      extender.delivered = false;
      extender.recordStarted = false;
    }
    ~EnclosingCall() {
      extender_.delivered = delivered_;
      extender_.recordStarted = recordStarted_;
      extender_.lastDelivery = lastDelivery_;
    }
    EnclosingCall(const EnclosingCall&) = delete;
    EnclosingCall& operator=(const EnclosingCall&) = delete;

   private:
    CQorExtenderT& extender_;
    bool delivered_;
    bool recordStarted_;
    HostWord lastDelivery_;
  };

  HostWord RunHandler(Handler handler, HostWord passOn1, HostWord passOn2, HostWord passOn3,
                      HostValue* args, HostWord argCount) {
    const EnclosingCall enclosing(*this);
    try {
      return (static_cast<Handlers*>(this)->*handler)(passOn1, passOn2, passOn3, args, argCount);
    } catch (const CDllGenericExecption& failure) {
      return Recover(failure.text.c_str(), failure.status);
    } catch (const CDllMapException& failure) {
      return Recover("DllMapServices", failure.status);
    } catch (const std::exception& failure) {
      return Recover(failure.what());
    } catch (...) {
      return Recover("unexpected failure");
    }
  }

  HostWord Recover(const char* service, HostWord status) {
    ReportServiceFailure(service, status);
    return DeliverAfterFailure();
  }

  HostWord Recover(const char* report) {
    ReportError(report);
    return DeliverAfterFailure();
  }

  HostWord DeliverAfterFailure() {
    if (delivered) return lastDelivery;
    return recordStarted ? GiveRecord(recordInProgress) : GiveInt(-1);
  }

  HostValue recordInProgress{};
  bool recordStarted = false;
  bool delivered = false;
  HostWord lastDelivery = 0;
};

}  // namespace qrl
