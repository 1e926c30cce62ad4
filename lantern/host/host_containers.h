// The arrays and maps that this host makes at a module's request. The host
// owns them; a record that stands for one carries only a tag and a slot
// number in its private bytes, so a module that copies records whole hands
// the same container around.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/host_contract.h"
#include "lantern/host/call_value.h"

namespace qrl {

// Type codes this host writes into a record that stands for one of its arrays
// or maps. The module copies such records whole and never reads them.
inline constexpr std::uint32_t HostArrayType = 0x2000;
inline constexpr std::uint32_t HostMapType = 0x4000;

struct HostContainer {
  bool isMap = false;
  std::vector<Value> elements;  // an array's slots, Zeroed until stored
  std::vector<MapPair> pairs;   // a map's pairs, in the order they came
  std::unordered_map<std::string, std::size_t> pairIndex;  // key -> position in pairs
  HostWord storeAttempts = 0;   // map stores asked for so far, failed ones too
};

class HostContainers {
 public:
  // Makes a container and points the record at it; every byte of the record
  // is written.
  void makeArray(HostValue& record, std::size_t length);
  void makeMap(HostValue& record);

  // The live container that a record stands for, or null when the record is
  // none of ours or its container was released.
  HostContainer* find(const HostValue& record);

  // Stores a pair; a key that is there already keeps its place and takes the
  // new value, as a map does.
  static void StorePair(HostContainer& map, Value key, Value value);

  // Decodes any record, copying texts and following containers. A record
  // that cannot be read (a text type with no text, a container tag that
  // leads nowhere) decodes as Other and puts the reason into `fault`.
  Value decode(const HostValue& record, std::string* fault) const;

  void releaseAll();
  std::size_t size() const { return containers_.size(); }

 private:
  const HostContainer* lookup(const HostValue& record) const;
  void tag(HostValue& record, std::uint32_t type);

  std::deque<HostContainer> containers_;  // a deque keeps found pointers valid while it grows
  std::uint32_t generation_ = 1;  // tells a record from before a release from a new one
};

}  // namespace qrl
