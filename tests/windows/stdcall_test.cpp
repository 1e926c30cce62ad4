// The 32-bit boundary keeps __stdcall at run time, not only in its symbols:
// every call that crosses it, both exports called by the host and every
// service and the result callback called by the module, must come back with
// the stack pointer where it was before its arguments were pushed (the callee
// pops them) and with ebx, esi, edi and ebp as they were. A wrong convention
// on either side shows here as a broken call instead of a crash somewhere
// later.
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

#include "lantern/host/module_host.h"

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

// The real functions behind the checked ones.
ModuleExports Real;
HostServices RealServices{};
ResultCallbackFn RealResultCallback = nullptr;

// What the checked call passes on: itself for the callback that the host
// hands the module, and every other word as it came.
template <typename T>
T PassOn(T word) { return word; }
ResultCallbackFn PassOn(ResultCallbackFn callback);

// A name that can be a template argument.
template <std::size_t N>
struct Name {
  constexpr Name(const char (&name)[N]) { std::copy_n(name, N, text); }
  char text[N];
};

// Stands in for the function that `Target` points to and calls it through
// QrlCallChecked with the same words.
template <Name CallName, auto& Target, typename Fn = std::remove_cvref_t<decltype(Target)>>
struct Checked;
template <Name CallName, auto& Target, typename... Args>
struct Checked<CallName, Target, HostWord(QRL_HOSTCALL*)(Args...)> {
  static HostWord QRL_HOSTCALL Call(Args... args) {
    // Every argument is one word, pushed as it is.
    const std::int32_t words[] = {std::bit_cast<std::int32_t>(PassOn(args))...};
    const char* outer = std::exchange(CallUnderway, CallName.text);
    const HostWord result =
        QrlCallChecked(reinterpret_cast<const void*>(Target), words, sizeof...(Args));
    CallUnderway = outer;
    ++ChecksMade[CallName.text];
    return result;
  }
};

ResultCallbackFn PassOn(ResultCallbackFn callback) {
  RealResultCallback = callback;
  return &Checked<"the result callback", RealResultCallback>::Call;
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
  ModuleHost host(ModuleExports{&Checked<"QORExtenderQuery", Real.query>::Call,
                                &Checked<"QORExtender2", Real.dispatch>::Call});
  RealServices = *host.services();
  HostServices& services = *host.services();
  services.DllNamedValue = &Checked<"DllNamedValue", RealServices.DllNamedValue>::Call;
  services.DllArrHandler = &Checked<"DllArrHandler", RealServices.DllArrHandler>::Call;
  services.DllArrayServices = &Checked<"DllArrayServices", RealServices.DllArrayServices>::Call;
  services.DllReportError = &Checked<"DllReportError", RealServices.DllReportError>::Call;
  services.DllMapServices = &Checked<"DllMapServices", RealServices.DllMapServices>::Call;

  EXPECT_EQ(host.versionInfo().number, 44001);
  host.call("wvparse", {std::string("<p id='a' class='x y' title='t'>one</p><p>two</p>")});
  EXPECT_EQ(host.call("wvgetelementsbytagname", {0, std::string("p")}).result.elements.size(), 2u);
  EXPECT_EQ(host.call("wvgetattributes", {1}).result.pairs.size(), 3u);
  host.setFaults(ServiceFaults{.arrHandler = ServiceFaults::AtIndex{0, -1}});
  EXPECT_EQ(host.call("wvgetclasses", {1}).errors.size(), 1u);
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
