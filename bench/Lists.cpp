// How the work on property lists grows with the number of rows. No host object is asked anything here: the rows hold
// their values already, so what is timed is the layer alone.

#include <algorithm>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "bench/Groups.h"
#include "propdata/VeltPropData.h"

namespace velt::bench {

namespace {

using List = TqVector<PROPINFO>;

struct ListScale {
  std::vector<std::uint32_t> sizes;
  Repetitions repetitions;
};

ListScale listScaleFor(const Settings& settings) {
  if (settings.quick) return {{10, 100}, {.atLeast = 2, .atMost = 2}};
  return {{100, 1'000, 10'000}, {.atLeast = 7, .atMost = 201, .nanoseconds = 0.5e9}};
}

// Rows of that many properties, all different. Every list has strings of its own, as lists of two classes do.
List listOf(std::uint32_t rows) {
  List list;
  list.setPhysicalLength(rows);
  for (std::uint32_t i = 0; i < rows; ++i) {
    PROPINFO row;
    row.clsid = GUID_NULL;
    row.dispId = static_cast<DISPID>(i + 1);
    row.name = CStdStr<wchar_t>((L"Property" + std::to_wstring(i)).c_str());
    row.displayName = row.name;
    row.description = CStdStr<wchar_t>(L"What the property is about.");
    row.categoryName = CStdStr<wchar_t>(L"Geometry");
    row.categoryId = 3;
    row.customType = 0;
    row.valueType = VT_I4;
    row.value.vt = VT_I4;
    row.value.lVal = static_cast<LONG>(i);
    row.isEditable = true;
    row.isWritable = true;
    row.hasValue = true;
    list.append(row);
  }
  return list;
}

List reversed(const List& list) {
  List result(list);
  std::reverse(result.begin(), result.end());
  return result;
}

// A list in which the weights are in no order; the same one in every run.
List shuffledWeights(std::uint32_t rows) {
  List list = listOf(rows);
  std::mt19937 random(20240229);
  for (PROPINFO& row : list)
    row.weight = static_cast<std::int32_t>(random() % rows);
  return list;
}

// Rows that are known by one label, category and name, and differ in their numbers and values only.
List ofOneKey(List list) {
  const PROPINFO first = std::as_const(list)[0];
  for (PROPINFO& row : list) {
    row.name = first.name;
    row.displayName = first.displayName;
  }
  return list;
}

List withOtherNames(List list) {
  for (PROPINFO& row : list) {
    row.name = CStdStr<wchar_t>((L"Other" + std::wstring(row.name.c_str())).c_str());
    row.displayName = row.name;
  }
  return list;
}

List withOtherValues(List list) {
  for (PROPINFO& row : list)
    row.value.lVal += 1;
  return list;
}

Samples sampleMerge(const Repetitions& repetitions, const List& first, const List& other,
                    std::uint32_t merged) {
  TqVector<VeltPropData*> noEntities;
  TqVector<List> lists;
  lists.append(first);
  lists.append(other);
  List result;
  CStdStr<wchar_t> errorText;
  bool flag = false;
  return sample(repetitions, [&] {
    ExcuteIntersect(noEntities, lists, result, errorText, flag);
    if (result.length() != merged) throw std::logic_error("the merge lost rows");
  });
}

Samples sampleShare(const Repetitions& repetitions, const List& list) {
  return sample(repetitions, [&] {
    for (int i = 0; i < 1000; ++i)
      const List copy(list);
  });
}

// The copy that the first write to a shared list makes.
Samples sampleClone(const Repetitions& repetitions, const List& list) {
  return sample(repetitions, [&] {
    List copy(list);
    copy.copyBeforeWrite();
  });
}

Samples sampleSort(const Repetitions& repetitions, const List& list) {
  return sample(repetitions, [&] {
    List sorted(list);
    SortByWeight(sorted);
  });
}

struct ListWork {
  const char* name;
  const char* unit;
  Samples (*samples)(const Repetitions&, std::uint32_t rows);
  double (*divisor)(std::uint32_t rows);
};

double perRow(std::uint32_t rows) {
  return rows;
}

constexpr ListWork listWorks[] = {
    {"merge/same-order", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleMerge(repetitions, listOf(rows), listOf(rows), rows);
     },
     perRow},
    {"merge/reversed", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleMerge(repetitions, listOf(rows), reversed(listOf(rows)), rows);
     },
     perRow},
    {"merge/nothing-matches", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleMerge(repetitions, listOf(rows), withOtherNames(listOf(rows)), 0);
     },
     perRow},
    {"merge/every-value-varies", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleMerge(repetitions, listOf(rows), withOtherValues(listOf(rows)), rows);
     },
     perRow},
    {"merge/one-key", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleMerge(repetitions, ofOneKey(listOf(rows)), ofOneKey(listOf(rows)), rows);
     },
     perRow},
    {"copy/shared", "ns per list",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleShare(repetitions, listOf(rows));
     },
     [](std::uint32_t) { return 1000.0; }},
    {"copy/before-write", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleClone(repetitions, listOf(rows));
     },
     perRow},
    {"sort/by-weight", "ns per row",
     [](const Repetitions& repetitions, std::uint32_t rows) {
       return sampleSort(repetitions, shuffledWeights(rows));
     },
     perRow},
};

void measure(const ListWork& work, const Settings& settings, Report& report) {
  const ListScale scale = listScaleFor(settings);
  const std::string nameOfGrowth = fmt::format("growth/{}", work.name);
  std::vector<Point> growth;
  for (const std::uint32_t rows : scale.sizes) {
    const std::string name = fmt::format("{}/{}", work.name, rows);
    if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
    const Spread time = spreadOf(work.samples(scale.repetitions, rows));
    growth.push_back({static_cast<double>(rows), time.median});
    report.add(
        {name, {{"rows", static_cast<double>(rows)}}, {{"time", work.unit, time.over(work.divisor(rows))}}});
  }
  if (!settings.wants(nameOfGrowth)) return;
  const double exponent = growthExponent(growth);
  report.add({nameOfGrowth,
              {{"from", growth.front().size}, {"to", growth.back().size}},
              {{"exponent", "", {exponent, exponent, exponent}}}});
}

}  // namespace

void measureLists(const Settings& settings, Report& report) {
  for (const ListWork& work : listWorks)
    measure(work, settings, report);
}

}  // namespace velt::bench
