#include "bench/FloorPlan.h"

#include <algorithm>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "host/automation/Ids.h"

namespace velt::bench {

namespace {

using List = TqVector<PROPINFO>;
using Lists = TqVector<List>;

constexpr DISPID hyperlinksDispId = 1301;
// Properties whose kind follows from their DISPID, so their values are not asked whether they are colors.
constexpr DISPID knownByNumber[] = {1280, 1281, 1282, 1283, 1299, 1300, hyperlinksDispId};

class ClearedLists {
 public:
  ~ClearedLists() { freePropInfoVariantValue(lists); }
  Lists lists;
};

Lists harvested(Selection& selection) {
  Lists lists;
  lists.setPhysicalLength(selection.entries().length());
  for (VeltPropData* const entry : selection.entries()) {
    List list;
    CStdStr<wchar_t> errorText;
    bool flag = false;
    if (!GetSingleEntPropInfo(entry, list, errorText, flag)) throw std::runtime_error("a harvest failed");
    lists.append(list);
  }
  return lists;
}

List merged(Selection& selection, Lists& lists) {
  List result;
  CStdStr<wchar_t> errorText;
  bool flag = false;
  if (!ExcuteIntersect(selection.entries(), lists, result, errorText, flag))
    throw std::runtime_error("a merge failed");
  return result;
}

FloorPlan::Kind kindFor(const List& list) {
  FloorPlan::Kind kind;
  kind.isHatch = list[0].clsid == CLSID_VeltHatch;
  kind.rows = list.length();
  for (const PROPINFO& row : list) {
    if (row.isWritable) kind.writable.push_back(row.dispId);
  }
  return kind;
}

bool isSameRow(const PROPINFO& a, const PROPINFO& b) {
  return a.categoryId == b.categoryId && a.categoryName == b.categoryName && a.name == b.name
         && a.isEditable == b.isEditable;
}

bool isSameProperty(const PROPINFO& a, const PROPINFO& b) {
  return isSameRow(a, b) && a.displayName == b.displayName && a.hasChoices == b.hasChoices
         && a.isElement == b.isElement;
}

class Planner {
 public:
  explicit Planner(Selection& selection) : selection_(selection) {
    asHarvested_ = harvested(selection);
    Lists firstAlone;
    firstAlone.append(std::as_const(asHarvested_)[0]);
    first_.lists.append(merged(selection, firstAlone));
    merged_.lists = asHarvested_;
    result_ = merged(selection, merged_.lists);
  }
  ~Planner() {
    for (PROPINFO& row : result_)
      VariantClear(&row.value);
  }

  FloorPlan plan() {
    planKinds();
    planFirst();
    std::uint32_t value = 0;
    for (const PROPINFO& row : std::as_const(first_.lists)[0]) {
      if (row.elementGrouping == 0) planSearch(row, value);
      if (isInResult(row)) plan_.inResult.push_back(value);
      ++value;
    }
    plan_.firstValues = value;
    for (const PROPINFO& row : std::as_const(result_)) {
      if (row.hasChoices) plan_.withChoices.push_back(row.dispId);
    }
    return std::move(plan_);
  }

 private:
  void planKinds() {
    // Lists that come from one cached list have its strings.
    std::unordered_map<const wchar_t*, std::uint32_t> kinds;
    for (std::uint32_t k = 0; k < asHarvested_.length(); ++k) {
      const List& list = std::as_const(asHarvested_)[k];
      const auto [kind, isNew] =
          kinds.try_emplace(list[0].name.c_str(), static_cast<std::uint32_t>(plan_.kinds.size()));
      if (isNew) {
        plan_.kinds.push_back(kindFor(list));
        exampleOf_.push_back(k);
      }
      plan_.kindOf.push_back(kind->second);
      plan_.properties += list.length();
      plan_.recordsOf.push_back(std::as_const(merged_.lists)[k].length());
      plan_.records += plan_.recordsOf.back();
    }
    if (std::as_const(asHarvested_)[0][0].clsid == CLSID_VeltBlockReference) {
      throw std::logic_error("a block reference at the beginning may have dynamic rows");
    }
  }

  FloorPlan::Read readOf(const List& list, std::uint32_t place) const {
    const PROPINFO& row = list[place];
    FloorPlan::Read read;
    read.place = place;
    read.dispId = row.dispId;
    read.type = row.valueType;
    read.expands = row.valueType == VT_VARIANT;
    read.probesColor = (row.customType == PropertyKind::none || row.customType == PropertyKind::unknownType)
                       && std::find(std::begin(knownByNumber), std::end(knownByNumber), row.dispId)
                              == std::end(knownByNumber);
    return read;
  }

  void planFirst() {
    const List& list = std::as_const(asHarvested_)[0];
    for (std::uint32_t place = 0; place < list.length(); ++place)
      plan_.first.push_back(readOf(list, place));
  }

  bool isInResult(const PROPINFO& wanted) const {
    return std::any_of(result_.begin(), result_.end(), [&](const PROPINFO& row) {
      return isSameProperty(row, wanted) && row.dispId == wanted.dispId
             && row.elementCookie == wanted.elementCookie;
    });
  }

  static std::optional<std::uint32_t> placeOf(const PROPINFO& wanted, const List& list) {
    for (std::uint32_t place = 0; place < list.length(); ++place) {
      if (isSameRow(wanted, list[place])) return place;
    }
    return std::nullopt;
  }

  // The row that is compared with the wanted one: the row itself, or an element of it.
  static const PROPINFO* counterpart(const PROPINFO& wanted, const List& list, const FloorPlan::Read& read,
                                     std::uint32_t harvestedRows) {
    const PROPINFO& row = list[read.place];
    if (!row.hasValue) throw std::logic_error("a row that was to be read was not");
    if (!read.expands) return isSameProperty(wanted, row) ? &row : nullptr;
    for (std::uint32_t element = harvestedRows; element < list.length(); ++element) {
      if (list[element].dispId == read.dispId && isSameProperty(wanted, list[element])) return &list[element];
    }
    return nullptr;
  }

  // True when the search goes on with the next entity, because the value is the same.
  static bool isEqual(const PROPINFO& first, const PROPINFO& other) {
    PROPINFO a(first);
    PROPINFO b(other);
    if (CompareVARIANT(a.value, b.value) != 0) return false;
    return a.value.vt != VT_DISPATCH || a.dispId == hyperlinksDispId || !IsDifferentByLayerColors(a, b);
  }

  void planSearch(const PROPINFO& row, std::uint32_t value) {
    FloorPlan::Search search;
    search.firstValue = value;
    search.isElement = row.isElement;
    search.isHyperlink = row.dispId == hyperlinksDispId;
    search.name = row.name.str();
    search.ofKind.resize(plan_.kinds.size());
    std::vector<bool> hasRow;
    for (std::size_t kind = 0; kind < plan_.kinds.size(); ++kind) {
      const List& list = std::as_const(asHarvested_)[exampleOf_[kind]];
      const auto place = placeOf(row, list);
      hasRow.push_back(place.has_value());
      if (place) search.ofKind[kind].read = readOf(list, *place);
    }
    for (std::uint32_t k = 1; k < plan_.kindOf.size(); ++k) {
      const std::uint32_t kind = plan_.kindOf[k];
      if (!hasRow[kind]) break;
      search.entities = k;
      const PROPINFO* const other =
          counterpart(row, std::as_const(merged_.lists)[k], search.ofKind[kind].read, plan_.kinds[kind].rows);
      search.ofKind[kind].compares = other != nullptr;
      if (other == nullptr || !isEqual(row, *other)) break;
    }
    std::uint32_t& expanded = expandedUpTo_[search.name];
    search.expandedBefore = expanded;
    if (search.isElement) expanded = std::max(expanded, search.entities);
    if (search.entities > 0) plan_.searches.push_back(std::move(search));
  }

  Selection& selection_;
  Lists asHarvested_;
  // One list: the first entity's rows with their values, each element as a row.
  ClearedLists first_;
  // All lists, as the merge leaves them.
  ClearedLists merged_;
  List result_;
  // One entity of each kind.
  std::vector<std::uint32_t> exampleOf_;
  std::unordered_map<std::wstring, std::uint32_t> expandedUpTo_;
  FloorPlan plan_;
};

}  // namespace

FloorPlan planFor(Selection& selection) {
  if (selection.entries().length() < 2) throw std::logic_error("one entity is not merged with anything");
  return Planner(selection).plan();
}

}  // namespace velt::bench
