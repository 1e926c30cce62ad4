// The 32-bit boundary keeps __stdcall at run time, not only in its symbols:
// every call that crosses it, both exports called by the host and every
// service and the result callback called by the module, must come back with
// the stack pointer where it was before its arguments were pushed (the callee
// pops them) and with ebx, esi, edi and ebp as they were. A wrong convention
// on either side shows here as a broken call instead of a crash somewhere
// later.
#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <type_traits>

#include "lantern/module_host.h"

extern "C" {
// Calls `target` with `count` argument words pushed as a __stdcall caller
// pushes them, and checks the stack and the callee-saved registers after it.
std::int32_t QrlCallChecked(const void* target, const std::int32_t* words, int count);
[[noreturn]] void QrlConventionBroken();
}

asm(R"(
    .text
    .globl _QrlCallChecked
_QrlCallChecked:
    push %ebp
    push %ebx
    push %esi
    push %edi
    mov 20(%esp), %eax
    mov 24(%esp), %edx
    mov 28(%esp), %ecx
    push %esp
1:  test %ecx, %ecx
    jz 2f
    dec %ecx
    pushl (%edx,%ecx,4)
    jmp 1b
2:  mov $0x5eb0b0b1, %ebx
    mov $0x5eb0b0b2, %esi
    mov $0x5eb0b0b3, %edi
    mov $0x5eb0b0b4, %ebp
    call *%eax
    lea 4(%esp), %ecx
    cmp (%esp), %ecx
    jne 3f
    cmp $0x5eb0b0b1, %ebx
    jne 3f
    cmp $0x5eb0b0b2, %esi
    jne 3f
    cmp $0x5eb0b0b3, %edi
    jne 3f
    cmp $0x5eb0b0b4, %ebp
    jne 3f
    add $4, %esp
    pop %edi
    pop %esi
    pop %ebx
    pop %ebp
    ret
3:  call _QrlConventionBroken
)");

namespace qrl::testing {
namespace {

// The innermost checked call, for the message when one breaks.
const char* CallUnderway = "";
std::map<std::string, int> ChecksMade;

// A word of a call as the caller pushes it.
template <typename T>
std::int32_t W(T word) {
  if constexpr (std::is_pointer_v<T>)
    return static_cast<std::int32_t>(reinterpret_cast<std::intptr_t>(word));
  else
    return static_cast<std::int32_t>(word);
}

// Each checked function calls its real counterpart through QrlCallChecked.
template <typename Fn>
HostWord Checked(const char* name, Fn target, std::initializer_list<std::int32_t> words) {
  const char* outer = CallUnderway;
  CallUnderway = name;
  const HostWord result = QrlCallChecked(reinterpret_cast<const void*>(target), words.begin(),
                                         static_cast<int>(words.size()));
  CallUnderway = outer;
  ++ChecksMade[name];
  return result;
}

ModuleExports Real;
ResultCallbackFn RealResultCallback = nullptr;
HostServices RealServices{};

HostWord QRL_HOSTCALL ResultCallback(HostWord zero, HostWord context, HostServices* services,
                                     HostValue* result) {
  return Checked("the result callback", RealResultCallback, {W(zero), W(context), W(services),
                 W(result)});
}
HostWord QRL_HOSTCALL NamedValue(HostWord context, const char* name, HostValue* value,
                                 HostWord size, HostWord flags) {
  return Checked("DllNamedValue", RealServices.DllNamedValue, {W(context), W(name), W(value),
                 W(size), W(flags)});
}
HostWord QRL_HOSTCALL ArrHandler(HostWord context, HostValue* array, HostWord index,
                                 HostWord index1, HostWord index2, HostWord index3,
                                 HostWord index4, HostValue* value, HostWord size,
                                 HostWord flags) {
  return Checked("DllArrHandler", RealServices.DllArrHandler, {W(context), W(array), W(index),
                 W(index1), W(index2), W(index3), W(index4), W(value), W(size), W(flags)});
}
HostWord QRL_HOSTCALL ArrayServices(HostWord context, HostValue* array, HostWord size,
                                    std::int32_t* dims, HostWord dimsSize, HostWord flags) {
  return Checked("DllArrayServices", RealServices.DllArrayServices, {W(context), W(array),
                 W(size), W(dims), W(dimsSize), W(flags)});
}
HostWord QRL_HOSTCALL ReportError(HostWord context, const char* text) {
  return Checked("DllReportError", RealServices.DllReportError, {W(context), W(text)});
}
HostWord QRL_HOSTCALL MapServices(HostWord context, HostValue* map, HostWord mapSize,
                                  HostWord zero1, HostWord zero2, HostValue* key,
                                  HostWord keySize, HostValue* value, HostWord valueSize,
                                  HostWord operation) {
  return Checked("DllMapServices", RealServices.DllMapServices, {W(context), W(map), W(mapSize),
                 W(zero1), W(zero2), W(key), W(keySize), W(value), W(valueSize), W(operation)});
}

HostWord QRL_HOSTCALL Query(HostWord code, void* buffer, HostWord size) {
  return Checked("QORExtenderQuery", Real.query, {W(code), W(buffer), W(size)});
}
HostWord QRL_HOSTCALL Dispatch(HostWord passOn1, HostWord passOn2, HostWord context,
                               HostWord code, ResultCallbackFn callback, HostServices* services,
                               HostWord passOn3, void* args, HostWord argCount,
                               HostValue* result) {
  RealResultCallback = callback;
  return Checked("QORExtender2", Real.dispatch, {W(passOn1), W(passOn2), W(context), W(code),
                 W(&ResultCallback), W(services), W(passOn3), W(args), W(argCount), W(result)});
}

}  // namespace
}  // namespace qrl::testing

extern "C" void QrlConventionBroken() {
  std::fprintf(stderr, "%s broke the __stdcall convention\n", qrl::testing::CallUnderway);
  std::fflush(stderr);
  std::_Exit(3);
}

namespace qrl::testing {
namespace {

TEST(Stdcall, EveryCallAcrossTheBoundaryLeavesTheStackAsItFoundIt) {
  _putenv("QRLANTERN_NO_DIALOGS=1");
  const std::unique_ptr<ModuleHost> loaded = ModuleHost::Load(QRL_MODULE_PATH);
  Real = loaded->exports();
  ModuleHost host(ModuleExports{&Query, &Dispatch});
  RealServices = *host.services();
  host.services()->DllNamedValue = &NamedValue;
  host.services()->DllArrHandler = &ArrHandler;
  host.services()->DllArrayServices = &ArrayServices;
  host.services()->DllReportError = &ReportError;
  host.services()->DllMapServices = &MapServices;

  EXPECT_EQ(host.versionInfo().number, 44001);
  host.call("wvparse", {std::string("<p id='a' class='x y' title='t'>one</p><p>two</p>")});
  EXPECT_EQ(host.call("wvgetelementsbytagname", {0, std::string("p")}).result.elements.size(), 2u);
  EXPECT_EQ(host.call("wvgetattributes", {1}).result.pairs.size(), 3u);
  host.setFaults(ServiceFaults{.arrHandler = ServiceFaults::AtIndex{0, -1}});
  EXPECT_EQ(host.call("wvgetclasses", {1}).errors.size(), 1u);
  host.clearFaults();
  // A browser that can't start still names its event to the script.
  host.call("wvcreate", {0, std::u16string(u"about:blank"), 0, std::u16string(u"C:\\none"),
                         std::string("onevent")});

  for (const char* name : {"QORExtenderQuery", "QORExtender2", "the result callback",
                           "DllNamedValue", "DllArrHandler", "DllArrayServices",
                           "DllReportError", "DllMapServices"})
    EXPECT_GT(ChecksMade[name], 0) << name << " was never called";
}

}  // namespace
}  // namespace qrl::testing
