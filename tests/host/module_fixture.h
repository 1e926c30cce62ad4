// Drives the built module through the reference host library, as a host
// does. The module's state is process-wide, so each test loads its own
// document first.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "lantern/host/module_host.h"
#include "tests/lantern/expected_values.h"

namespace qrl::testing {

ModuleHost& SharedHost();
// A module that has never loaded a document: a copy of its file, loaded anew.
std::unique_ptr<ModuleHost> FreshHost();

// A narrow text argument; a bare literal would not pick the text alternative.
inline std::string S(const char* text) { return text; }

// Calls `command` with `handle` and then `extra`, and checks that the call kept
// to the contract (one delivery, no fault); its reports are the caller's.
CallOutcome CallOnHandle(ModuleHost& host, std::string_view command, std::int32_t handle,
                         const std::vector<Argument>& extra);

class ModuleTest : public ::testing::Test {
 protected:
  ModuleTest() : host(SharedHost()) {}
  ~ModuleTest() override;

  // Like CallOnHandle, and the call must make no report.
  Value Call(std::string_view name, std::initializer_list<Argument> args);
  void Load(std::string_view markup);
  std::int32_t FirstByTag(std::string_view tag);
  // Issues one handle (the document must have a node without an id).
  std::int32_t NextHandle();
  // -1, "#tag:text" for another integer, "[tag:text,...]" for an array, so
  // that a result reads as which elements it names.
  std::string Names(const Value& result);

  ModuleHost& host;
};

}  // namespace qrl::testing
