#include "recorder/Session.h"

#include <unordered_map>

namespace velt::recorder {

namespace {

std::unordered_map<const void*, std::uint64_t>& numbers() {
  static auto& all = *new std::unordered_map<const void*, std::uint64_t>;
  return all;
}

}  // namespace

Side& side() {
  thread_local Side whose = Side::outside;
  return whose;
}

bool& aValueWasRead() {
  static bool was = false;
  return was;
}

std::uint64_t numberOf(const void* thing) {
  // What a replay has not made bears none of the numbers that were recorded.
  constexpr std::uint64_t beyondRecorded = std::uint64_t{1} << 40;
  if (thing == nullptr) return 0;
  const std::uint64_t next = numbers().size() + 1 + (session().isReplay() ? beyondRecorded : 0);
  return numbers().try_emplace(thing, next).first->second;
}

void setNumber(const void* thing, std::uint64_t number) {
  numbers()[thing] = number;
}

}  // namespace velt::recorder
