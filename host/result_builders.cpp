// Host arrays and maps: the module asks the host for a new one, fills it
// through the host's services and passes the filled record on. Texts are not
// copied here: the host copies each one while it stores it.
#include <stdexcept>
#include <utility>

#include "host/cdom.h"

namespace qrl {
namespace {

void CheckArrayStatus(HostWord status, const char* service) {
  if (status != 0) throw CDllGenericExecption{status, service};
}

void CheckMapStatus(HostWord status) {
  if (status != 0) throw CDllMapException{status};
}

}  // namespace

HostServices& CDOM::Services() {
  if (!frame.services) throw std::invalid_argument("no host services");
  return *frame.services;
}

// An array failure is reported here and the array goes out as far as it
// came: zeroed when the host made none, filled up to the failed index else.
template <class List, class SetElement>
HostValue* CDOM::FillArray(HostValue* out, const List& list, std::uint32_t elementType,
                           SetElement setElement) {
  if (TraceOn()) CallTrace::NoteContainer("array", list.size());
  HostValue& array = StartRecord();
  try {
    HostServices& services = Services();
    std::int32_t dims[5] = {static_cast<std::int32_t>(list.size()), 0, 0, 0, 0};
    CheckArrayStatus(services.DllArrayServices(services.context, &array, HostValueSize, dims,
                                               ArrayDimsSize, ServiceFlags),
                     "DllArrayServices");
    HostValue element{};
    element.type = elementType;
    for (std::size_t i = 0; i < list.size(); ++i) {
      setElement(element, list[i]);
      CheckArrayStatus(services.DllArrHandler(services.context, &array, static_cast<HostWord>(i),
                                              0, 0, 0, 0, &element, HostValueSize, ServiceFlags),
                       "DllArrHandler");
    }
  } catch (const CDllGenericExecption& failure) {
    ReportServiceFailure(failure.text.c_str(), failure.status);
  } catch (const std::exception& failure) {
    ReportError(failure.what());
  } catch (const CUserException&) {
    // Nothing in an array raises it; the map builder is where it matters.
  }
  return FinishRecord(out);
}

HostValue* CDOM::MakeIntArray(HostValue* out, std::vector<std::int32_t> list) {
  return FillArray(out, list, ValueInteger,
                   [](HostValue& element, std::int32_t item) { element.intValue = item; });
}

HostValue* CDOM::MakeTextArray(HostValue* out, std::vector<std::string> list) {
  return FillArray(out, list, ValueText,
                   [](HostValue& element, const std::string& item) { element.text = item.c_str(); });
}

// Has no guard of its own: a failure leaves the handler, and the dispatch
// guard reports it and delivers the record as the host left it.
HostValue* CDOM::MakeEmptyArray(HostValue* out) {
  if (TraceOn()) CallTrace::NoteContainer("array", 0);
  HostValue& array = StartRecord();
  HostServices& services = Services();
  std::int32_t dims[5] = {};
  CheckArrayStatus(services.DllArrayServices(services.context, &array, HostValueSize, dims,
                                             ArrayDimsSize, ServiceFlags),
                   "DllArrayServices");
  return FinishRecord(out);
}

// A host too old for maps gets the zeroed record, silently. A failed map
// service leaves the handler; the dispatch guard reports "DllMapServices"
// with the status and delivers the map as far as it came.
HostValue* CDOM::MakeTextMap(HostValue* out, TextMap map) {
  HostValue& mapValue = StartRecord();
  try {
    HostServices& services = Services();
    if (services.hostVersion < FirstHostVersionWithMaps) throw CUserException{};
    if (TraceOn()) CallTrace::NoteContainer("map", map.size());
    CheckMapStatus(services.DllMapServices(services.context, &mapValue, HostValueSize, 0, 0,
                                           nullptr, 0, nullptr, 0, MapCreate));
    HostValue key{};
    HostValue value{};
    key.type = ValueText;
    value.type = ValueText;
    for (const auto& [name, text] : map) {
      key.text = name.c_str();
      value.text = text.c_str();
      CheckMapStatus(services.DllMapServices(services.context, &mapValue, HostValueSize, 0, 0,
                                             &key, HostValueSize, &value, HostValueSize,
                                             MapStore));
    }
  } catch (const CUserException&) {
  }
  return FinishRecord(out);
}

HostWord CDOM::GiveHandleArray(std::vector<std::int32_t> handles) {
  HostValue record;
  MakeIntArray(&record, std::move(handles));
  return GiveRecord(record);
}

HostWord CDOM::GiveEmptyArray() {
  HostValue record;
  MakeEmptyArray(&record);
  return GiveRecord(record);
}

}  // namespace qrl
