// Display order of properties.

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>
#include <vector>

#include "propdata/VeltPropData.h"
#include "propdata/support/Lists.h"
#include "propdata/typing/Cores.h"

using namespace velt::propdata;

namespace {

// clang-format off
#define VELT_CLSID(name, d1, d2, d3, ...) constexpr GUID classId##name{d1, d2, d3, {__VA_ARGS__}};
#define VELT_IID(name, ...)
#include "host/automation/Ids.inc"

// The DISPIDs of every kind of dimension, in display order.
#define DIMENSION_ORDER { \
      1542, 62, 63, 61, 43, 44, 60, 23, 25, 26,  \
      13, 68, 69, 70, 16, 27, 28, 14, 17, 35,  \
      19, 1546, 1563, 1549, 33, 20, 1554, 1562, 30, 1539,  \
      1540, 67, 64, 1541, 32, 29, 1553, 18, 31, 1558,  \
      1548, 1551, 1552, 24, 21, 22, 1565, 1566, 56, 57,  \
      15, 3, 9, 4, 6, 5, 48, 49, 50, 51,  \
      11, 12, 36, 41, 1559, 1557, 1561, 1560, 1555, 1569,  \
      1570, 58, 59, 1556, 7, 52, 53, 54, 55 }
// clang-format on

}  // namespace

// clang-format off
extern "C" const Guid2DispIds g_guid2dispids[13] = {
    {classIdVeltDimRotated,        DIMENSION_ORDER},
    {classIdVeltDimAligned,        DIMENSION_ORDER},
    {classIdVeltDimRadial,         DIMENSION_ORDER},
    {classIdVeltDimDiametric,      DIMENSION_ORDER},
    {classIdVeltDimAngular,        DIMENSION_ORDER},
    {classIdVeltDim3PointAngular,  DIMENSION_ORDER},
    {classIdVeltDimOrdinate,       DIMENSION_ORDER},
    {classIdVeltDimRadialLarge,    DIMENSION_ORDER},
    {classIdVeltDimArcLength,      DIMENSION_ORDER},
    {classIdVeltLeader,            {64, 1542, 65, 1553, 69, 1543, 1550, 13, 1549, 1554}},
    {classIdVeltTolerance,         {81, 1542, 1553, 13, 1546, 1563, 1549, 1562, 1541}},
    {classIdVeltExternalReference, {4}},
    {GUID_NULL,                    {}},
};
// clang-format on

static_assert(sizeof(Guid2DispIds) == 336);

namespace velt::propdata {

void setWeight(const GUID& clsid, PROPINFO& prop) {
  // No break: the last entry with this DISPID counts.
  for (const Guid2DispIds* row = g_guid2dispids; !(row->clsid == GUID_NULL); ++row) {
    if (!(row->clsid == clsid)) continue;
    for (int position = 0; row->dispIds[position] != 0; ++position) {
      if (row->dispIds[position] == prop.dispId) prop.weight = position + 1;
    }
  }
}

}  // namespace velt::propdata

// Needs no guard, like the next: nothing in them throws.
int SetPropertyWeight(GUID clsid, PROPINFO& prop) {
  setWeight(clsid, prop);
  return 0;
}

bool picompare(const PROPINFO& a, const PROPINFO& b) {
  if (a.dispId == b.dispId && a.sortByCookie && b.sortByCookie && a.weight == b.weight
      && a.elementCookie < b.elementCookie) {
    return true;
  }
  // QUIRK(unweighted_rows_first): a row without a weight stands before all weighted ones, and one with a
  // negative weight before both; objects put rows to the top with it.
  return a.weight < b.weight;
}

namespace {

// picompare must not be passed to a standard sort: it orders the elements of one property, but not rows of other
// properties with the same weight that stand between them. So the rows are sorted by weight first, and then the
// elements of each property among the places that they take.
void sortByWeight(TqVector<PROPINFO>& list) {
  const TqVector<PROPINFO>& rows = list;
  std::vector<std::uint32_t> order(rows.length());
  std::iota(order.begin(), order.end(), 0U);
  std::stable_sort(order.begin(), order.end(),
                   [&](std::uint32_t a, std::uint32_t b) { return rows[a].weight < rows[b].weight; });

  std::map<std::pair<std::int32_t, DISPID>, std::vector<std::uint32_t>> placesOfElements;
  for (std::uint32_t place = 0; place < order.size(); ++place) {
    const PROPINFO& row = rows[order[place]];
    if (row.sortByCookie) placesOfElements[{row.weight, row.dispId}].push_back(place);
  }
  for (const auto& [property, places] : placesOfElements) {
    std::vector<std::uint32_t> elements;
    for (const std::uint32_t place : places)
      elements.push_back(order[place]);
    std::stable_sort(elements.begin(), elements.end(), [&](std::uint32_t a, std::uint32_t b) {
      return rows[a].elementCookie < rows[b].elementCookie;
    });
    for (std::size_t i = 0; i < places.size(); ++i)
      order[places[i]] = elements[i];
  }

  std::vector<PROPINFO> sorted;
  sorted.reserve(order.size());
  for (const std::uint32_t index : order)
    sorted.push_back(rows[index]);
  // Written through writable(), so that vectors that share the rows keep their order.
  std::copy(sorted.begin(), sorted.end(), writable(list).begin());
}

}  // namespace

void SortByWeight(TqVector<PROPINFO>& list) {
  if (list.length() < 2) return;
  velt::errors::guarded([&] { sortByWeight(list); });
}
