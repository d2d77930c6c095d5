// velt_bench_counts checks that a query and its floor make the same calls to the host, each one equally often. It exits
// with 1 when they do not.
//
// The automation objects of the entities and the host's functions are replaced by ones that count. What objects inside
// values (colors, hyperlinks) hand out is taken from the host's ledger.

#include <array>
#include <cstdint>
#include <exception>
#include <functional>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Floor.h"
#include "bench/HostTraffic.h"
#include "bench/Selection.h"
#include "bench/counting/CallCounts.h"
#include "bench/counting/CountedObject.h"

using namespace velt::bench;

namespace {

struct NamedContent {
  const char* name;
  Content content;
};

constexpr NamedContent contents[] = {
    {"equal lines", Content::EqualLines},
    {"lines", Content::Lines},
    {"mixed", Content::Mixed},
};

constexpr std::array<std::uint32_t, 5> sizes{2, 3, 10, 11, 60};

IDispatch* countedFor(IUnknown& real, const GUID& clsid) {
  if (clsid == CLSID_VeltHatch) return new CountedHatch(real);
  return new CountedEntity(real);
}

// Puts objects that count in the place of the entries' own, and takes over their references.
void countObjectsOf(Selection& selection) {
  for (VeltPropData* const entry : selection.entries()) {
    IDispatch* const counted = countedFor(*entry->pUnknown, entry->clsid);
    entry->pUnknown->Release();
    entry->pDispatch->Release();
    counted->AddRef();
    entry->pUnknown = counted;
    entry->pDispatch = counted;
  }
}

CallCounts countsOf(const std::function<void()>& work) {
  callCounts().clear();
  const auto traffic = hostTrafficOf(work);
  CallCounts counts = callCounts();
  for (const auto& [name, count] : traffic) {
    counts["handed out: " + name] = count.handedOut;
    counts["given back: " + name] = count.givenBack;
  }
  return counts;
}

bool compare(const char* what, std::uint32_t entities, CallCounts ofQuery, CallCounts ofFloor) {
  for (const auto& [name, count] : ofQuery)
    ofFloor.try_emplace(name, 0);
  std::int64_t total = 0;
  bool isEqual = true;
  for (const auto& [name, inFloor] : ofFloor) {
    const std::int64_t inQuery = ofQuery[name];
    total += inQuery;
    if (inQuery == inFloor) continue;
    fmt::print("{} {}: {} {} times in the query, {} times in its floor\n", entities, what, name, inQuery,
               inFloor);
    isEqual = false;
  }
  if (isEqual) fmt::print("{} {}: the same {} calls\n", entities, what, total);
  return isEqual;
}

bool check(const NamedContent& named, std::uint32_t entities) {
  Selection selection(drawingOf(named.content, entities));
  selection.setUp();
  countObjectsOf(selection);
  const auto query = [&] {
    TqVector<PROPINFO> rows;
    selection.query(rows);
    for (PROPINFO& row : rows)
      VariantClear(&row.value);
  };
  // Fills the cache of property lists.
  query();
  Floor floor(selection);
  const CallCounts ofQuery = countsOf(query);
  const CallCounts ofFloor = countsOf([&] { floor.run(); });
  floor.clearLeftovers();
  return compare(named.name, entities, ofQuery, ofFloor);
}

}  // namespace

int main() {
  try {
    bool isEqual = true;
    for (const NamedContent& named : contents) {
      for (const std::uint32_t entities : sizes)
        isEqual = check(named, entities) && isEqual;
    }
    return isEqual ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "velt_bench_counts: {}\n", error.what());
    return 1;
  }
}
