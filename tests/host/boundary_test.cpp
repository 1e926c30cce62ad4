// The two exports as a host meets them.
#include <cstring>

#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

// The row number is the code a host calls by, so a row out of place breaks
// every host. The tests that pass arguments pin the irregular counts and
// types (a call that does not fit its row is refused); none passes wvcreate
// all six.
TEST(Vocabulary, RowsAreAnnouncedInOrderInLowerCase) {
  const auto& vocabulary = SharedHost().vocabulary();
  ASSERT_EQ(vocabulary.size(), 41u);
  for (const auto& row : vocabulary) {
    EXPECT_EQ(row.nameLength, row.name.size()) << row.name;
    EXPECT_EQ(row.name.find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ"), std::string::npos);
    EXPECT_EQ(row.isFunction(), row.index < 35) << row.name;
  }
  for (const auto& [index, name] : std::initializer_list<std::pair<int, const char*>>{
           {0, "wvsetinnertext"}, {9, "wvgetelementsbytagname"}, {34, "wvexecutescript"},
           {35, "@wv2version"}, {40, "@colnamerowname"}})
    EXPECT_EQ(vocabulary[index].name, name);
  EXPECT_EQ(vocabulary[1].spec, 0x0501u);
  EXPECT_EQ(vocabulary[1].argTypes, 0x15050u);
  EXPECT_EQ(vocabulary[35].constantValue(), 1001);
  EXPECT_EQ(vocabulary[40].constantValue(), 3);
}

// The record is filled only for a row that exists, and never past its end.
TEST(Dispatch, DescribesOnlyRowsThatExist) {
  ModuleHost& host = SharedHost();
  struct {
    CommandInfo info;
    char guard[8];
  } record;
  const auto describe = [&](HostWord code, HostWord index) {
    std::memset(&record, 0x5A, sizeof record);
    return host.dispatch(code, &record, index, nullptr).returned;
  };
  for (HostWord index : {HostWord{41}, HostWord{-1}}) {
    EXPECT_EQ(describe(-2, index), 0) << index;
    EXPECT_EQ(record.info.index, 0x5A5A5A5A) << index;
  }
  EXPECT_EQ(host.dispatch(-2, nullptr, 41, nullptr).returned, 0);
  EXPECT_EQ(host.dispatch(-2, nullptr, 5, nullptr).returned, 1);
  EXPECT_EQ(describe(-2, 40), 1);
  EXPECT_STREQ(record.info.name, "@colnamerowname");
  EXPECT_EQ(record.guard[0], 0x5A);
  EXPECT_EQ(describe(0x7FFE0000 - 2, 9), 1);
  EXPECT_STREQ(record.info.name, "wvgetelementsbytagname");
}

// Only the low half of a code counts, for the negative codes and the rows.
TEST(Dispatch, CodesActByTheLowHalfOfTheWord) {
  ModuleHost& host = SharedHost();
  HostValue result{};
  EXPECT_EQ(host.dispatch(-1, nullptr, 0, &result).returned, 41);
  EXPECT_EQ(host.dispatch(0x0001FFFF, nullptr, 99, &result).returned, 41);
  EXPECT_EQ(host.dispatch(-3, nullptr, 0, &result).returned, 1);
  EXPECT_EQ(host.dispatch(0x0005FFFD, nullptr, 0, &result).returned, 1);
  const CallOutcome outcome = host.dispatch(0x00030002, nullptr, 0, &result);  // wvclear
  EXPECT_EQ(outcome.deliveries, 1);
  EXPECT_EQ(outcome.result, Value::Integer(0));
}

TEST(Dispatch, CodesWithoutAHandlerDoNothing) {
  ModuleHost& host = SharedHost();
  for (HostWord code : {HostWord{35}, HostWord{41}, HostWord{-4}, HostWord{-32768}}) {
    HostValue result;
    std::memset(&result, 0x5A, sizeof result);
    const CallOutcome outcome = host.dispatch(code, nullptr, 0, &result);
    EXPECT_EQ(outcome.returned, 0) << code;
    EXPECT_EQ(outcome.deliveries, 0) << code;
    EXPECT_EQ(result.type, 0x5A5A5A5Au) << code;
  }
}

TEST_F(ModuleTest, DispatchReturnsWhatTheCallbackReturned) {
  host.setCallbackReturn(77);
  EXPECT_EQ(host.call("wvclear", {}).returned, 77);
  EXPECT_EQ(host.call("wvgetelementsbytagname", {-1, std::string("p")}).returned, 77);
}

// An integer result leaves the text field as the host left it, and a text
// result the integer field.
TEST_F(ModuleTest, ResultsWriteOnlyTheirOwnField) {
  Load("<p>x</p>");
  const char marker[] = "host";
  HostValue args[1]{};  // the root
  HostValue result{};
  result.text = marker;
  result.intValue = 1234;
  host.dispatch(2, args, 0, &result);  // wvclear: integer 0
  EXPECT_EQ(result.text, marker);
  EXPECT_EQ(result.type, ValueInteger);
  result.intValue = 1234;
  host.dispatch(11, args, 1, &result);  // wvgetinnertext of the root
  EXPECT_EQ(result.intValue, 1234);
  EXPECT_EQ(result.type, ValueText);
}

TEST(Query, VersionAndDescriptionFollowTheBufferRules) {
  ModuleHost& host = SharedHost();
  char buffer[300];
  const auto describe = [&](std::size_t size) {
    std::memset(buffer, 'z', sizeof buffer);
    return host.query(1, buffer, size);
  };
  EXPECT_EQ(describe(sizeof buffer), 44001);
  EXPECT_STREQ(buffer, "DllMapServices extender API example");
  EXPECT_EQ(host.query(0x70001, nullptr, 0), 44001);
  EXPECT_EQ(describe(1), 44001);
  EXPECT_EQ(std::string_view(buffer, 2), std::string_view("\0z", 2));
  describe(5);
  EXPECT_EQ(std::string_view(buffer, 6), std::string_view("DllM\0z", 6));
  describe(0);
  EXPECT_EQ(buffer[0], 'z');
}

TEST(Query, CodeTwoLooksForAFiveAndOtherCodesGiveZero) {
  ModuleHost& host = SharedHost();
  HostWord words[] = {3, 4, 5};
  EXPECT_EQ(host.query(2, words, 3), 5);
  EXPECT_EQ(host.query(2, words, 2), -1);
  EXPECT_EQ(host.query(2, nullptr, 0), -1);
  HostWord wide[] = {5 + (HostWord{1} << 20)};
  EXPECT_EQ(host.query(2, wide, 1), -1);
  EXPECT_EQ(host.query(0x10002, words, 3), 5);
  for (HostWord code : {HostWord{0}, HostWord{3}, HostWord{0x10000}})
    EXPECT_EQ(host.query(code, nullptr, 0), 0) << code;
}

}  // namespace
}  // namespace qrl::testing
