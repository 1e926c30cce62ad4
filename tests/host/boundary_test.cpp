// The two exports as a host meets them.
#include <cstring>

#include "tests/host/module_fixture.h"

namespace qrl::testing {
namespace {

using namespace std::string_view_literals;

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

// Only the low half of a code counts, for the negative codes and the rows.
// -1 counts the rows, -3 answers 1, -2 says whether a row exists (and fills
// a record for one that does, never past its end), and a code without a
// handler does nothing: none of them delivers or touches the result record.
TEST(Dispatch, CodesActByTheLowHalfOfTheWord) {
  ModuleHost& host = SharedHost();
  struct {
    CommandInfo info;
    char guard[8];
  } record;
  const struct {
    HostWord code, argCount, returned;
    bool withRecord = false;
  } cases[] = {{-1, 0, 41}, {0x0001FFFF, 99, 41}, {-3, 0, 1}, {-2, 5, 1}, {-2, 41, 0, true}, {-2, -1, 0, true},
               {35, 0, 0},  {41, 0, 0},           {-4, 0, 0}, {0x7FFE0000 - 2, 40, 1, true}};
  for (const auto& c : cases) {
    HostValue result;
    std::memset(&result, 0x5A, sizeof result);
    std::memset(&record, 0x5A, sizeof record);
    const CallOutcome outcome = host.dispatch(c.code, c.withRecord ? &record : nullptr, c.argCount, &result);
    EXPECT_EQ(outcome.returned, c.returned) << c.code;
    EXPECT_EQ(outcome.deliveries, 0) << c.code;
    EXPECT_EQ(result.type, 0x5A5A5A5Au) << c.code;
    EXPECT_EQ(record.info.index == 0x5A5A5A5A, !c.withRecord || c.returned == 0) << c.code;
  }
  EXPECT_STREQ(record.info.name, "@colnamerowname");  // the last row's
  EXPECT_EQ(record.guard[0], 0x5A);
}

// Dispatch returns what the result callback returned (a row's code, too,
// counts by its low half). An integer result leaves the text field as the
// host left it, and a text result the integer field.
TEST_F(ModuleTest, ResultsWriteOnlyTheirOwnFieldAndReturnTheCallbacksWord) {
  Load("<p>x</p>");
  host.setCallbackReturn(77);
  const char marker[] = "host";
  HostValue args[1]{};  // the root
  HostValue result{};
  result.text = marker;
  result.intValue = 1234;
  EXPECT_EQ(host.dispatch(0x00030002, args, 0, &result).returned, 77);  // wvclear: integer 0
  EXPECT_EQ(result.text, marker);
  EXPECT_EQ(result.type, ValueInteger);
  result.intValue = 1234;
  EXPECT_EQ(host.dispatch(11, args, 1, &result).returned, 77);  // wvgetinnertext of the root
  EXPECT_EQ(result.intValue, 1234);
  EXPECT_EQ(result.type, ValueText);
  EXPECT_EQ(host.call("wvgetelementsbytagname", {-1, std::string("p")}).returned, 77);
}

// Code 1 gives the version and writes the description as far as the buffer
// holds it, with its NUL ('z' marks bytes left alone); code 2 looks for a
// five among the words; other codes give 0.
TEST(Query, AnswersByTheLowHalfOfTheCode) {
  ModuleHost& host = SharedHost();
  char buffer[300];
  for (const auto& [size, written] : {std::pair{HostWord{sizeof buffer}, "DllMapServices extender API example\0z"sv},
                                      {5, "DllM\0z"sv}, {0, "z"sv}}) {
    std::memset(buffer, 'z', sizeof buffer);
    EXPECT_EQ(host.query(1, buffer, size), 44001) << size;
    EXPECT_EQ(std::string_view(buffer, written.size()), written) << size;
  }
  HostWord words[] = {3, 4, 5};
  HostWord wide[] = {5 + (HostWord{1} << 20)};
  const struct {
    HostWord code;
    void* buffer;
    HostWord size, returned;
  } cases[] = {{0x70001, nullptr, 0, 44001}, {2, words, 3, 5}, {2, words, 2, -1}, {2, nullptr, 0, -1},
               {2, wide, 1, -1},             {3, nullptr, 0, 0}};
  for (const auto& c : cases) EXPECT_EQ(host.query(c.code, c.buffer, c.size), c.returned) << c.code << " " << c.size;
}

}  // namespace
}  // namespace qrl::testing
