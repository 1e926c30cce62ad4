// A small extender module that reaches every host service on purpose, so the
// host library and lantern are tested apart from the real module. Its rows:
//   echo(int [, text [, wide]])  the last argument given, back as it came
//   makelist(int n)              0..n-1
//   makemap(text)                a map of the character pairs: "k1v1k2v2"
//   setname(text name, text value)  [1, 2] built around a named value, so a
//                                nested call during it must leave the array alone
//   silent()                     returns without a result
//   twice()                      delivers its result twice
//   @answer                      the constant 42
// Query(1) gives 7 and "fake module".
#include <cstdio>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "host/host_contract.h"

namespace {

using qrl::HostValue;
using qrl::HostWord;

// The rows as the host reads them at code -2.
constexpr qrl::CommandInfo Rows[] = {
    {0, qrl::KindFunction, 0x510, 0x0201, 4, "echo"},
    {1, qrl::KindFunction, 0x0, 0x0001, 8, "makelist"},
    {2, qrl::KindFunction, 0x1, 0x0001, 7, "makemap"},
    {3, qrl::KindFunction, 0x11, 0x0002, 7, "setname"},
    {4, qrl::KindFunction, 0, 0, 6, "silent"},
    {5, qrl::KindFunction, 0, 0, 5, "twice"},
    {6, qrl::KindConstant, 0, 42, 7, "@answer"},
};
constexpr HostWord RowCount = std::size(Rows);

HostValue Record(std::uint32_t type, std::int32_t number, const void* text = nullptr) {
  HostValue record{};
  record.type = type;
  record.intValue = number;
  record.text = text;
  return record;
}

const char* Text(const HostValue& value) { return static_cast<const char*>(value.text); }

// One call: what it delivers goes back through the host's callback.
struct Call {
  HostWord hostContext;
  qrl::ResultCallbackFn callback;
  qrl::HostServices& s;
  HostValue* result;

  HostWord deliver(const HostValue& value) const {
    *result = value;
    return callback(0, hostContext, &s, result);
  }
  // Reports a failed service and tells whether it failed.
  bool failed(const char* service, HostWord status) const {
    const std::string text = std::string(service) + " " + std::to_string(status);
    if (status != 0) s.DllReportError(s.context, text.c_str());
    return status != 0;
  }
  // Makes an array, runs `meanwhile`, then fills the array with `items` up to
  // the first failing service, and delivers it.
  HostWord deliverArray(std::vector<HostValue> items,
                        const std::function<void()>& meanwhile = nullptr) const {
    HostValue array{};
    std::int32_t dims[5] = {static_cast<std::int32_t>(items.size()), 0, 0, 0, 0};
    const HostWord made = s.DllArrayServices(s.context, &array, qrl::HostValueSize, dims,
                                             qrl::ArrayDimsSize, qrl::ServiceFlags);
    if (!failed("DllArrayServices", made)) {
      if (meanwhile) meanwhile();
      for (std::size_t i = 0; i < items.size(); ++i) {
        if (failed("DllArrHandler",
                   s.DllArrHandler(s.context, &array, static_cast<HostWord>(i), 0, 0, 0, 0,
                                   &items[i], qrl::HostValueSize, qrl::ServiceFlags)))
          break;
      }
    }
    return deliver(array);
  }
};

HostWord MakeList(const Call& call, const HostValue* args) {
  std::vector<HostValue> items;
  for (std::int32_t i = 0; i < args[0].intValue; ++i) items.push_back(Record(qrl::ValueInteger, i));
  return call.deliverArray(std::move(items));
}

HostWord MakeMap(const Call& call, const HostValue* args) {
  qrl::HostServices& s = call.s;
  HostValue map{};
  s.DllMapServices(s.context, &map, qrl::HostValueSize, 0, 0, nullptr, 0, nullptr, 0,
                   qrl::MapCreate);
  const std::string pairs = Text(args[0]);
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const std::string keyText = pairs.substr(i, 1), valueText = pairs.substr(i + 1, 1);
    HostValue key = Record(qrl::ValueText, 0, keyText.c_str());
    HostValue value = Record(qrl::ValueText, 0, valueText.c_str());
    s.DllMapServices(s.context, &map, qrl::HostValueSize, 0, 0, &key, qrl::HostValueSize, &value,
                     qrl::HostValueSize, qrl::MapStore);
  }
  return call.deliver(map);
}

HostWord RunRow(const Call& call, std::int16_t row, const HostValue* args, HostWord count) {
  qrl::HostServices& s = call.s;
  switch (row) {
    case 0:
      if (count == 1) return call.deliver(Record(qrl::ValueInteger, args[0].intValue));
      return call.deliver(Record(count == 2 ? qrl::ValueText : qrl::ValueWideText, 0,
                                 args[count - 1].text));
    case 1:
      return MakeList(call, args);
    case 2:
      return MakeMap(call, args);
    case 3:
      return call.deliverArray({Record(qrl::ValueInteger, 1), Record(qrl::ValueInteger, 2)}, [&] {
        HostValue value = Record(qrl::ValueText, 0, args[1].text);
        s.DllNamedValue(s.context, Text(args[0]), &value, qrl::HostValueSize, qrl::ServiceFlags);
      });
    case 5:
      call.deliver(Record(qrl::ValueInteger, 1));
      return call.deliver(Record(qrl::ValueInteger, 2));
    default:
      return 0;
  }
}

HostWord Describe(HostWord index, void* record) {
  if (index < 0 || index >= RowCount) return 0;
  if (record != nullptr) *static_cast<qrl::CommandInfo*>(record) = Rows[index];
  return 1;
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) HostWord QORExtenderQuery(HostWord code, void* buffer,
                                                                 HostWord size) {
  if (code == 1 && buffer != nullptr && size > 0)
    std::snprintf(static_cast<char*>(buffer), static_cast<std::size_t>(size), "fake module");
  return code == 1 ? 7 : 0;
}

__attribute__((visibility("default"))) HostWord QORExtender2(
    HostWord, HostWord, HostWord hostContext, HostWord code, qrl::ResultCallbackFn callback,
    qrl::HostServices* services, HostWord, void* args, HostWord argCount, HostValue* result) {
  const auto row = static_cast<std::int16_t>(code & 0xFFFF);
  if (row == -1) return RowCount;
  if (row == -2) return Describe(argCount, args);
  if (row < 0 || row >= RowCount || Rows[row].kind != qrl::KindFunction) return 0;
  return RunRow(Call{hostContext, callback, *services, result}, row,
                static_cast<const HostValue*>(args), argCount);
}
}
