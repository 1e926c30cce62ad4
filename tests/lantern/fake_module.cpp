// A small extender module that exercises every service of a host, so that
// the host library and lantern are tested apart from the real module. Its
// rows:
//   echo(int [, text [, wide]])   the last argument given, back as it came
//   makelist(int count [, text])  an array of 0..count-1, or of the text
//                                 with each index appended
//   makemap(text "k=v;k=v")       a map of the pairs, stored in the given order
//   report(text)                  reports the text, gives 0
//   setname(text name, text value [, int])
//                                 builds an array of [1, 2] around a named
//                                 value, so a nested call during the named
//                                 value must leave the array alone
//   silent()                      returns without a result
//   twice()                       delivers its result twice
//   @answer                       the constant 42
// Query(1) gives 7 and "fake module"; Query(9) the number of row calls.
#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#include "host/host_contract.h"

namespace {

using qrl::HostServices;
using qrl::HostValue;
using qrl::HostWord;

struct Row {
  const char* name;
  std::int32_t kind;
  std::uint32_t spec;
  std::uint64_t argTypes;
};

constexpr Row Rows[] = {
    {"echo", qrl::KindFunction, 0x0201, 0x510},
    {"makelist", qrl::KindFunction, 0x0101, 0x10},
    {"makemap", qrl::KindFunction, 0x0001, 0x1},
    {"report", qrl::KindFunction, 0x0001, 0x1},
    {"setname", qrl::KindFunction, 0x0102, 0x11},
    {"silent", qrl::KindFunction, 0x0000, 0},
    {"twice", qrl::KindFunction, 0x0000, 0},
    {"@answer", qrl::KindConstant, 42, 0},
};
constexpr HostWord RowCount = sizeof Rows / sizeof Rows[0];

int RowCalls = 0;

struct Frame {
  HostWord hostContext;
  qrl::ResultCallbackFn callback;
  HostServices* services;
  HostValue* result;

  HostWord deliver() const { return callback(0, hostContext, services, result); }
  HostWord deliverInteger(std::int32_t number) const {
    result->intValue = number;
    result->type = qrl::ValueInteger;
    return deliver();
  }
  void report(const std::string& text) const {
    services->DllReportError(services->context, text.c_str());
  }
};

// Fills `array` with the items; reports and stops at the first failure.
void FillArray(const Frame& frame, HostValue& array, const std::vector<HostValue>& items) {
  std::int32_t dims[5] = {static_cast<std::int32_t>(items.size()), 0, 0, 0, 0};
  HostServices& services = *frame.services;
  const HostWord made = services.DllArrayServices(services.context, &array, qrl::HostValueSize,
                                                  dims, qrl::ArrayDimsSize, qrl::ServiceFlags);
  if (made != 0) {
    frame.report("DllArrayServices " + std::to_string(made));
    return;
  }
  for (std::size_t i = 0; i < items.size(); ++i) {
    HostValue element = items[i];
    const HostWord stored =
        services.DllArrHandler(services.context, &array, static_cast<HostWord>(i), 0, 0, 0, 0,
                               &element, qrl::HostValueSize, qrl::ServiceFlags);
    if (stored != 0) {
      frame.report("DllArrHandler " + std::to_string(stored));
      return;
    }
  }
}

HostValue IntegerRecord(std::int32_t number) {
  HostValue record{};
  record.type = qrl::ValueInteger;
  record.intValue = number;
  return record;
}

HostValue TextRecord(const std::string& text) {
  HostValue record{};
  record.type = qrl::ValueText;
  record.text = text.c_str();
  return record;
}

HostWord Echo(const Frame& frame, const HostValue* args, HostWord count) {
  if (count == 1) return frame.deliverInteger(args[0].intValue);
  frame.result->text = args[count - 1].text;
  frame.result->type = count == 2 ? qrl::ValueText : qrl::ValueWideText;
  return frame.deliver();
}

HostWord MakeList(const Frame& frame, const HostValue* args, HostWord count) {
  const auto size = static_cast<std::size_t>(std::max(args[0].intValue, 0));
  std::vector<std::string> texts(size);  // sized up front: the records point into it
  std::vector<HostValue> items;
  for (std::size_t i = 0; i < size; ++i) {
    if (count == 2) texts[i] = static_cast<const char*>(args[1].text) + std::to_string(i);
    const auto index = static_cast<std::int32_t>(i);
    items.push_back(count == 2 ? TextRecord(texts[i]) : IntegerRecord(index));
  }
  HostValue array{};
  FillArray(frame, array, items);
  *frame.result = array;
  return frame.deliver();
}

HostWord MakeMap(const Frame& frame, const HostValue* args) {
  HostServices& services = *frame.services;
  HostValue map{};
  HostWord status = services.DllMapServices(services.context, &map, qrl::HostValueSize, 0, 0,
                                            nullptr, 0, nullptr, 0, qrl::MapCreate);
  const std::string spec = static_cast<const char*>(args[0].text);
  std::size_t start = 0;
  while (status == 0 && start < spec.size()) {
    std::size_t end = spec.find(';', start);
    if (end == std::string::npos) end = spec.size();
    const std::string pair = spec.substr(start, end - start);
    const std::size_t equals = pair.find('=');
    const std::string keyText = pair.substr(0, equals);
    const std::string valueText = equals == std::string::npos ? "" : pair.substr(equals + 1);
    HostValue key = TextRecord(keyText);
    HostValue value = TextRecord(valueText);
    status = services.DllMapServices(services.context, &map, qrl::HostValueSize, 0, 0, &key,
                                     qrl::HostValueSize, &value, qrl::HostValueSize, qrl::MapStore);
    start = end + 1;
  }
  if (status != 0) frame.report("DllMapServices " + std::to_string(status));
  *frame.result = map;
  return frame.deliver();
}

HostWord SetName(const Frame& frame, const HostValue* args) {
  HostServices& services = *frame.services;
  HostValue array{};
  std::int32_t dims[5] = {2, 0, 0, 0, 0};
  services.DllArrayServices(services.context, &array, qrl::HostValueSize, dims,
                            qrl::ArrayDimsSize, qrl::ServiceFlags);
  HostValue value{};
  value.type = qrl::ValueText;
  value.text = args[1].text;
  services.DllNamedValue(services.context, static_cast<const char*>(args[0].text), &value,
                         qrl::HostValueSize, qrl::ServiceFlags);
  for (std::int32_t i = 0; i < 2; ++i) {
    HostValue element = IntegerRecord(i + 1);
    services.DllArrHandler(services.context, &array, i, 0, 0, 0, 0, &element,
                           qrl::HostValueSize, qrl::ServiceFlags);
  }
  *frame.result = array;
  return frame.deliver();
}

HostWord RunRow(const Frame& frame, std::int16_t row, const HostValue* args, HostWord count) {
  ++RowCalls;
  switch (row) {
    case 0:
      return Echo(frame, args, count);
    case 1:
      return MakeList(frame, args, count);
    case 2:
      return MakeMap(frame, args);
    case 3:
      frame.report(static_cast<const char*>(args[0].text));
      return frame.deliverInteger(0);
    case 4:
      return SetName(frame, args);
    case 5:
      return 0;
    case 6:
      frame.deliverInteger(1);
      return frame.deliverInteger(2);
    default:
      return 0;
  }
}

HostWord Describe(HostWord index, void* record) {
  if (index < 0 || index >= RowCount) return 0;
  if (record == nullptr) return 1;
  auto& info = *static_cast<qrl::CommandInfo*>(record);
  const Row& row = Rows[index];
  info.index = static_cast<std::int32_t>(index);
  info.kind = row.kind;
  info.argTypes = row.argTypes;
  info.spec = row.spec;
  info.nameLength = static_cast<std::uint16_t>(std::strlen(row.name));
  std::memcpy(info.name, row.name, info.nameLength + 1u);
  return 1;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) HostWord QORExtenderQuery(HostWord code, void* buffer,
                                                                 HostWord size) {
  if (code == 9) return RowCalls;
  if (code != 1) return 0;
  if (buffer != nullptr && size > 0) {
    std::strncpy(static_cast<char*>(buffer), "fake module", static_cast<std::size_t>(size));
    static_cast<char*>(buffer)[size - 1] = '\0';
  }
  return 7;
}

__attribute__((visibility("default"))) HostWord QORExtender2(
    HostWord, HostWord, HostWord hostContext, HostWord code, qrl::ResultCallbackFn callback,
    HostServices* services, HostWord, void* args, HostWord argCount, HostValue* result) {
  const auto row = static_cast<std::int16_t>(code & 0xFFFF);
  if (row == -1) return RowCount;
  if (row == -2) return Describe(argCount, args);
  if (row < 0 || row >= RowCount || Rows[row].kind != qrl::KindFunction) return 0;
  const Frame frame{hostContext, callback, services, result};
  return RunRow(frame, row, static_cast<const HostValue*>(args), argCount);
}
}
