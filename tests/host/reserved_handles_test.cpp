// The exact result of every document command for -1, for the root, and for
// any handle before a document exists; the script sweep checks that other
// handles outside the table act as -1 does.
#include <climits>

#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

struct HandleCase {
  const char* command;
  std::vector<Argument> extra;  // arguments after the handle
  Value forNoElement;           // the result for -1
  Value forRoot;                // the result for 0 once a document is loaded
};

const HandleCase Cases[] = {
    {"wvgetinnertext", {}, Value::Integer(-1), Value::Text("x")},
    {"wvgetinnerhtml", {}, Value::Integer(-1), Value::Text("")},
    {"wvgetouterhtml", {}, Value::Integer(-1), Value::Text("<p id=\"a\">x</p>")},
    {"wvgettagname", {}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetattribute", {S("id")}, Value::Text(""), Value::Text("")},
    {"wvgetattributes", {}, Map(), Map()},
    {"wvgetclasses", {}, Array(), Array()},
    {"wvsetinnertext", {S("y")}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetelementbyid", {S("nothing")}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetelementsbyclass", {S("x")}, Array(), Array()},
    {"wvgetelementsbyclass", {S("c"), S(""), 1}, Array(), Value::Integer(-1)},
    {"wvgetelementsbytagname", {S("i")}, Array(), Array()},
    {"wvgetchildren", {}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetlinksbyhref", {S("*")}, Array(), Array()},
    {"wvgetelementsbyattribute", {S("a"), S("href")}, Array(), Array()},
    {"wvgetparent", {}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetsiblingnext", {}, Value::Integer(-1), Value::Integer(-1)},
    {"wvgetsiblingprev", {}, Value::Integer(-1), Value::Integer(-1)},
};

Value CallWith(ModuleHost& host, const HandleCase& c, std::int32_t handle) {
  const CallOutcome outcome = CallOnHandle(host, c.command, handle, c.extra);
  EXPECT_TRUE(outcome.errors.empty()) << c.command << " " << handle;
  return outcome.result;
}

TEST(ReservedHandles, BeforeAnyLoadEveryHandleActsAsNoElementEvenAfterAClear) {
  const auto host = FreshHost();
  for (const auto& c : Cases)
    for (std::int32_t handle : {INT_MIN, -2, -1, 0, 1, 2, INT_MAX})
      EXPECT_EQ(CallWith(*host, c, handle), c.forNoElement) << c.command << " " << handle;
  EXPECT_EQ(host->call("wvclear", {}).result, Value::Integer(0));
  EXPECT_EQ(host->call("wvgetinnertext", {0}).result, Value::Integer(-1));
  EXPECT_EQ(host->call("wvparse", {S("<b>z</b>")}).result, Value::Integer(0));
  EXPECT_EQ(host->call("wvgetelementbyid", {0, S("")}).result, Value::Integer(1));
}

// None of these calls may issue a handle either.
TEST_F(ModuleTest, AfterALoadTheRootAndNoElementGiveTheirOwnResults) {
  Load("<p id=\"a\">x</p>");
  for (const auto& c : Cases) {
    EXPECT_EQ(CallWith(host, c, 0), c.forRoot) << c.command;
    EXPECT_EQ(CallWith(host, c, -1), c.forNoElement) << c.command;
  }
  EXPECT_EQ(NextHandle(), 1);
}

}  // namespace
}  // namespace qrl::testing
