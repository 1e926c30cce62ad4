#include "lantern/host/host_containers.h"

#include <cstring>

namespace qrl {

namespace {

// The private bytes of a container record: a tag that marks it as ours, the
// slot and the generation it was made in.
constexpr std::uint32_t ContainerTag = 0x514C4843;
struct ContainerStamp {
  std::uint32_t tag;
  std::uint32_t slot;
  std::uint32_t generation;
};
static_assert(sizeof(ContainerStamp) <= sizeof(HostValue::hostPrivate));

ContainerStamp ReadStamp(const HostValue& record) {
  ContainerStamp stamp;
  std::memcpy(&stamp, record.hostPrivate, sizeof stamp);
  return stamp;
}

std::u16string ReadWide(const char16_t* units) {
  std::size_t length = 0;
  while (units[length] != 0) ++length;
  return std::u16string(units, length);
}

// Pairs are found again by kind and content; containers as keys are not
// merged, as no module stores one.
std::string KeyOf(const Value& key) {
  switch (key.kind) {
    case Value::Kind::Integer:
      return "i" + std::to_string(key.integer);
    case Value::Kind::Text:
      return "t" + key.text;
    case Value::Kind::WideText:
      return "w" + std::string(reinterpret_cast<const char*>(key.wide.data()),
                               key.wide.size() * sizeof(char16_t));
    default:
      return {};
  }
}

}  // namespace

void HostContainers::tag(HostValue& record, std::uint32_t type) {
  std::memset(&record, 0, sizeof record);
  const ContainerStamp stamp{ContainerTag, static_cast<std::uint32_t>(containers_.size() - 1),
                             generation_};
  std::memcpy(record.hostPrivate, &stamp, sizeof stamp);
  record.type = type;
}

void HostContainers::makeArray(HostValue& record, std::size_t length) {
  HostContainer& array = containers_.emplace_back();
  array.elements.resize(length);
  tag(record, HostArrayType);
}

void HostContainers::makeMap(HostValue& record) {
  containers_.emplace_back().isMap = true;
  tag(record, HostMapType);
}

const HostContainer* HostContainers::lookup(const HostValue& record) const {
  if (record.type != HostArrayType && record.type != HostMapType) return nullptr;
  const ContainerStamp stamp = ReadStamp(record);
  if (stamp.tag != ContainerTag || stamp.generation != generation_ ||
      stamp.slot >= containers_.size()) {
    return nullptr;
  }
  const HostContainer& container = containers_[stamp.slot];
  if (container.isMap != (record.type == HostMapType)) return nullptr;
  return &container;
}

HostContainer* HostContainers::find(const HostValue& record) {
  return const_cast<HostContainer*>(lookup(record));
}

void HostContainers::StorePair(HostContainer& map, Value key, Value value) {
  std::string index = KeyOf(key);
  if (!index.empty()) {
    auto [where, isNew] = map.pairIndex.try_emplace(std::move(index), map.pairs.size());
    if (!isNew) {
      map.pairs[where->second].value = std::move(value);
      return;
    }
  }
  map.pairs.push_back({std::move(key), std::move(value)});
}

Value HostContainers::decode(const HostValue& record, std::string* fault) const {
  Value value;
  value.typeCode = record.type;
  auto unreadable = [&](std::string reason) {
    value.kind = Value::Kind::Other;
    if (fault) *fault = std::move(reason);
    return value;
  };
  switch (record.type) {
    case 0:
      return value;
    case ValueInteger:
      return Value::Integer(record.intValue);
    case ValueText:
      if (record.text == nullptr) return unreadable("a text record without text");
      return Value::Text(static_cast<const char*>(record.text));
    case ValueWideText:
      if (record.text == nullptr) return unreadable("a wide text record without text");
      return Value::WideText(ReadWide(static_cast<const char16_t*>(record.text)));
    case HostArrayType:
    case HostMapType: {
      const HostContainer* container = lookup(record);
      if (container == nullptr) return unreadable("a container record that leads to no container");
      value.kind = container->isMap ? Value::Kind::Map : Value::Kind::Array;
      value.elements = container->elements;
      value.pairs = container->pairs;
      return value;
    }
    default:
      return unreadable("a record of unknown type " + std::to_string(record.type));
  }
}

void HostContainers::releaseAll() {
  containers_.clear();
  ++generation_;
}

}  // namespace qrl
