#include "tests/support/Toy.h"

#include <gtest/gtest.h>

namespace velt::toys {

Toy::Toy(ToyHost& host, std::string name) : host_(host), name_(std::move(name)), unknown_(*this) {
  facets_[nameOf(IID_IUnknown)].object = static_cast<IUnknown*>(&unknown_);
  host_.toys.insert(this);
}

Toy::~Toy() {
  host_.toys.erase(this);
}

int Toy::references() const {
  int sum = 0;
  for (const auto& [iid, facet] : facets_)
    sum += facet.references;
  return sum;
}

int Toy::references(REFIID iid) const {
  const auto found = facets_.find(nameOf(iid));
  return found == facets_.end() ? 0 : found->second.references;
}

IUnknown* Toy::referenced(REFIID iid) {
  ++facets_.at(nameOf(iid)).references;
  return as<IUnknown>(iid);
}

HRESULT Toy::query(REFIID iid, void** object) {
  const tests::AllocationPause pause;
  const std::string wanted = nameOf(iid);
  const auto nothing = [object] { *object = nullptr; };
  return call(
      "QueryInterface(" + wanted + ")",
      [&] {
        const auto other = handedOut_.find(wanted);
        auto& facets = other != handedOut_.end() ? other->second->facets_ : facets_;
        const auto found = facets.find(wanted);
        if (found == facets.end() || withheld_.contains(wanted)) {
          nothing();
          return E_NOINTERFACE;
        }
        ++found->second.references;
        *object = found->second.object;
        return S_OK;
      },
      nothing);
}

ULONG Toy::addRef(REFIID iid) {
  const tests::AllocationPause pause;
  host_.log.add("AddRef(" + nameOf(iid) + ") on " + name_);
  return static_cast<ULONG>(++facets_.at(nameOf(iid)).references);
}

ULONG Toy::release(REFIID iid) {
  const tests::AllocationPause pause;
  const std::string line = "Release(" + nameOf(iid) + ") on " + name_;
  host_.log.add(line);
  int& count = facets_.at(nameOf(iid)).references;
  if (count <= 0) {
    ADD_FAILURE() << line << ": no reference is left";
    return 0;
  }
  return static_cast<ULONG>(--count);
}

}  // namespace velt::toys
