#include "embedded/database/HandleMap.h"

#include <bit>
#include <random>
#include <utility>

namespace velt::database {
namespace {

// Different in every process, so that nobody can write a file whose handles all fall on one place: it would be read in
// quadratic time.
std::uint64_t secret() {
  static const std::uint64_t value = [] {
    std::random_device device;
    return (std::uint64_t{device()} << 32) | device();
  }();
  return value;
}

std::uint64_t scatter(std::uint64_t handle) {
  std::uint64_t mixed = handle ^ secret();
  mixed = (mixed ^ (mixed >> 33)) * 0xFF51AFD7ED558CCD;
  mixed = (mixed ^ (mixed >> 33)) * 0xC4CEB9FE1A85EC53;
  return mixed ^ (mixed >> 33);
}

constexpr std::size_t smallestTable = 16;
constexpr std::uint64_t largestSmall = 0xFFFF'FFFF;

}  // namespace

void HandleMap::reserve(std::size_t handles) {
  const std::size_t places = std::bit_ceil(handles + handles / 2 + 1);
  if (places > places_.size()) grow(places);
}

bool HandleMap::add(std::uint64_t handle, std::uint32_t record) {
  if (handle == 0) return false;
  if (handle > largestSmall) return large_.emplace(handle, record).second;
  if (taken_ + taken_ / 4 >= places_.size()) grow(places_.empty() ? smallestTable : places_.size() * 2);
  const auto small = static_cast<std::uint32_t>(handle);
  Place& place = places_[placeOf(small)];
  if (place.handle != 0) return false;
  place = {small, record};
  ++taken_;
  return true;
}

std::optional<std::uint32_t> HandleMap::find(std::uint64_t handle) const {
  if (handle > largestSmall) {
    const auto found = large_.find(handle);
    return found != large_.end() ? std::optional(found->second) : std::nullopt;
  }
  if (handle == 0 || places_.empty()) return std::nullopt;
  const Place& place = places_[placeOf(static_cast<std::uint32_t>(handle))];
  return place.handle != 0 ? std::optional(place.record) : std::nullopt;
}

std::size_t HandleMap::placeOf(std::uint32_t handle) const {
  // Neighbours stay neighbours, eight to a cache line: a file's handles mostly follow each other.
  constexpr std::uint32_t neighbours = 8;
  const std::size_t mask = places_.size() - 1;
  std::size_t index =
      static_cast<std::size_t>(scatter(handle / neighbours) * neighbours + handle % neighbours) & mask;
  while (places_[index].handle != 0 && places_[index].handle != handle)
    index = (index + 1) & mask;
  return index;
}

void HandleMap::grow(std::size_t places) {
  std::vector<Place> old = std::exchange(places_, std::vector<Place>(places));
  for (const Place& place : old) {
    if (place.handle != 0) places_[placeOf(place.handle)] = place;
  }
}

}  // namespace velt::database
