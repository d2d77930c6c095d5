// Writes a value to one row of a selection, and finds out what became of each entity.

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <map>
#include <new>
#include <unordered_map>
#include <utility>

#include "palette/Palette.h"
#include "palette/selection/DynamicNodes.h"
#include "palette/selection/EntityValue.h"
#include "palette/support/HostCalls.h"
#include "palette/writing/CancelledWrite.h"
#include "palette/writing/Meaning.h"
#include "palette/writing/Refusal.h"

namespace velt::palette {

namespace {

class Writing {
 public:
  // One value for each entity; null for one that stays as it is. What the entities have now, if the caller has read it.
  Writing(TqVector<VeltPropData*>& entries, const PROPINFO& row, std::vector<const Value*> values,
          const WriteOptions& options, std::vector<PlainValue> before = {})
      : entries_(entries),
        row_(row),
        values_(std::move(values)),
        options_(options),
        before_(std::move(before)) {
    report_.fates.assign(entries.length(), Fate::notReached);
    for (std::size_t i = 0; i < count(); ++i) {
      if (values_[i] == nullptr) report_.fates[i] = Fate::unchanged;
    }
  }

  Report run() {
    before_.reserve(count());
    try {
      while (before_.size() < count())
        before_.push_back(valueNow(before_.size()));
    } catch (const Cancelled&) {
      return reportOfCancelled(count());
    }
    if (row_.dispId == dynamicPropertyDispId) {
      writeDynamic();
    } else {
      writeStatic();
    }
    return std::move(report_);
  }

 private:
  std::size_t count() const { return report_.fates.size(); }
  VeltPropData& entry(std::size_t i) const { return *std::as_const(entries_)[static_cast<std::uint32_t>(i)]; }
  VkDbObjectId id(std::size_t i) const { return VkDbObjectId().setFromOldId(entry(i).oldId); }
  // Nothing also when the host throws, so that the fates of the other entities are told all the same.
  PlainValue valueNow(std::size_t i) const {
    try {
      return orError([&] { return entityValue(row_, entry(i), i).plain(); });
    } catch (const Cancelled&) {
      throw;
    } catch (const Error&) {
      return {};
    }
  }

  // What was written is told all the same: once a host has cancelled, it answers.
  template <class Call>
  auto despiteCancelling(Call&& call) {
    try {
      return call();
    } catch (const Cancelled&) {
      report_.isCancelled = true;
      return call();
    }
  }
  PlainValue valueAfter(std::size_t i) {
    return despiteCancelling([&] { return valueNow(i); });
  }

  // In portions, so that progress can be told; one call for all entities of one value would have the same effect.
  void writeStatic() {
    for (std::size_t from = 0; from < count() && !report_.isCancelled;) {
      if (values_[from] == nullptr) {
        ++from;
        continue;
      }
      const std::size_t end = endOfPortion(from);
      const std::size_t refused = writePortion(from, end);
      if (refused != end && !options_.keepGoing) return;
      from = refused != end ? refused + 1 : end;
      if (options_.progress && !options_.progress(from, count())) report_.isCancelled = true;
    }
  }

  // Where the next portion begins: entities of one value, and those between them that stay as they are.
  std::size_t endOfPortion(std::size_t from) const {
    constexpr std::size_t most = 1000;
    std::size_t end = from + 1;
    while (end < count() && end - from < most && (values_[end] == values_[from] || values_[end] == nullptr))
      ++end;
    return end;
  }

  // Answers the index of the entity that refused, or at which the write was cancelled; else `end`.
  std::size_t writePortion(std::size_t from, std::size_t end) {
    TqVector<VeltPropData*> portion;
    if (!portion.setPhysicalLength(static_cast<std::uint32_t>(end - from))) throw std::bad_alloc();
    for (std::size_t i = from; i < end; ++i) {
      if (values_[i] != nullptr) portion.push_back(&entry(i));
    }
    // A bitwise copy: what the value holds stays the caller's.
    VARIANT shared = values_[from]->variant();
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    const int result = SetPropertiesValue(portion, row_, shared, row_.isElement, errorText, lockedCount,
                                          touched, row_.elementCookie);
    report_.isCancelled = result == 0 && tellsOfCancelling(errorText.str());
    if (report_.isCancelled && touched.length() == 0) return from;
    // `touched` has the entities that were tried, in order; those between them were passed over.
    std::size_t i = from;
    for (int t = 0; t < touched.length(); ++t, ++i) {
      for (; values_[i] == nullptr || id(i) != touched[t]; ++i)
        passOver(i);
      if (result == 0 && t + 1 == touched.length()) {
        if (!report_.isCancelled) {
          refuse(i, toUtf8(errorText.str()));
        } else if (!isSame(valueAfter(i), before_[i])) {
          report_.fates[i] = Fate::changed;
        }
        return i;
      }
      tell(i, valueAfter(i));
    }
    for (; i < end; ++i)
      passOver(i);
    return end;
  }

  // The host took the value; what it made of it is told by the value that the entity has now.
  void tell(std::size_t i, const PlainValue& now) {
    if (!isSame(now, before_[i])) {
      report_.fates[i] = Fate::changed;
    } else if (mayMean(row_, values_[i]->plain(), now)) {
      report_.fates[i] = Fate::unchanged;
    } else {
      report_.fates[i] = Fate::refused;
      report_.reasons[i] = "the entity kept the value that it had";
    }
  }

  bool isLocked(std::size_t i) {
    return despiteCancelling([&] { return isOnLockedLayer(id(i)); });
  }

  void passOver(std::size_t i) {
    if (values_[i] != nullptr) report_.fates[i] = isLocked(i) ? Fate::locked : Fate::skipped;
  }

  void refuse(std::size_t i, std::string message) {
    report_.reasons[i] =
        despiteCancelling([&] { return reasonOfRefusal(row_, entry(i), values_[i]->variant()); });
    report_.message = std::move(message);
    // The host was asked for the reason by putting the value once more, and may have taken it this time.
    const bool isTaken = !isSame(valueAfter(i), before_[i]);
    report_.fates[i] = isTaken ? Fate::changed : Fate::refused;
    if (isTaken) report_.reasons.erase(i);
  }

  // The layer writes dynamic properties all at once and does not tell what they answer, so their values are compared.
  void writeDynamic() {
    std::map<const Value*, std::vector<std::size_t>> sharers;
    for (std::size_t i = 0; i < count(); ++i) {
      if (values_[i] != nullptr) sharers[values_[i]].push_back(i);
    }
    for (const auto& [value, entities] : sharers) {
      if (!report_.isCancelled) writeDynamic(*value, entities);
    }
  }

  void writeDynamic(const Value& value, const std::vector<std::size_t>& entities) {
    const PlainValue wanted = value.plain();
    VARIANT shared = value.variant();
    PROPINFO row(row_);
    row.dynSources = nodesOf(entities);
    TqVector<VeltPropData*> unused;
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    SetPropertiesValue(unused, row, shared, false, errorText, lockedCount, touched, 0);
    for (const std::size_t i : entities) {
      const PlainValue now = valueAfter(i);
      if (!isSame(now, before_[i])) {
        report_.fates[i] = Fate::changed;
      } else if (isSame(now, wanted)) {
        report_.fates[i] = Fate::unchanged;
      } else if (isLocked(i)) {
        report_.fates[i] = Fate::locked;
      } else {
        report_.fates[i] = Fate::refused;
        report_.reasons[i] = "the property does not take the value";
      }
    }
  }

  TqVector<DispatchDynPropSourceNode> nodesOf(const std::vector<std::size_t>& entities) const {
    const TqVector<DispatchDynPropSourceNode>& all = row_.dynSources;
    TqVector<DispatchDynPropSourceNode> nodes;
    if (!nodes.setPhysicalLength(static_cast<std::uint32_t>(entities.size()))) throw std::bad_alloc();
    for (const std::size_t i : entities) {
      if (i < all.length()) nodes.push_back(all[static_cast<std::uint32_t>(i)]);
    }
    return nodes;
  }

  TqVector<VeltPropData*>& entries_;
  const PROPINFO& row_;
  std::vector<const Value*> values_;
  const WriteOptions& options_;
  Report report_;
  std::vector<PlainValue> before_;
};

// Whether values show a text to a row. Many entities have one number, which is made a text once.
class Showing {
 public:
  Showing(const Row& row, std::string_view text, const NumberStyle& style)
      : row_(row), text_(text), style_(style) {}

  bool shows(const Value& value) {
    const VARIANT& variant = value.variant();
    if (variant.vt != VT_R8 && variant.vt != VT_I4) return showsAnew(value);
    const Number number{variant.vt, variant.vt == VT_R8 ? std::bit_cast<std::uint64_t>(variant.dblVal)
                                                        : static_cast<std::uint32_t>(variant.lVal)};
    const auto known = known_.find(number);
    return known != known_.end() ? known->second : known_.emplace(number, showsAnew(value)).first->second;
  }

 private:
  using Number = std::pair<VARTYPE, std::uint64_t>;
  struct Hash {
    std::size_t operator()(const Number& number) const {
      return std::hash<std::uint64_t>()(number.second ^ number.first);
    }
  };

  bool showsAnew(const Value& value) const { return row_.textOf(value, style_) == text_; }

  const Row& row_;
  std::string_view text_;
  const NumberStyle& style_;
  std::unordered_map<Number, bool, Hash> known_;
};

// Whether the number is another one than that which the text means, which rounding hides.
bool isRounded(const Value& value, const std::optional<Value>& meant) {
  if (!meant) return false;
  const PlainValue now = value.plain();
  const PlainValue wanted = meant->plain();
  const auto* const a = std::get_if<double>(&now);
  const auto* const b = std::get_if<double>(&wanted);
  constexpr double ofComputing = 1e-12;
  return a != nullptr && b != nullptr
         && std::fabs(*a - *b) > ofComputing * std::max(std::fabs(*a), std::fabs(*b));
}

}  // namespace

Report Selection::write(const Row& row, const Value& value, const WriteOptions& options) {
  return orError([&] {
    const PROPINFO record = withOneNodePerEntity(row.record());
    return Writing(selection_, record, std::vector<const Value*>(size(), &value), options).run();
  });
}

Report Selection::writeEach(const Row& row, std::span<const std::optional<Value>> values,
                            const WriteOptions& options) {
  return orError([&] {
    const PROPINFO record = withOneNodePerEntity(row.record());
    std::vector<const Value*> each(size(), nullptr);
    for (std::size_t i = 0; i < size() && i < values.size(); ++i) {
      if (values[i]) each[i] = &*values[i];
    }
    return Writing(selection_, record, std::move(each), options).run();
  });
}

Report Selection::writeText(const Row& row, std::string_view text, const WriteOptions& options) {
  // A row that does not vary shows what all of them have, also where no entity gives that as a value of its own, as of
  // the vertex that a palette has chosen.
  const bool leavesAll = row.text(options.style) == text;
  std::vector<Value> now;
  try {
    now = values(row);
  } catch (const Cancelled&) {
    return reportOfCancelled(size());
  }
  Showing showing(row, text, options.style);
  std::vector<bool> showsIt;
  for (const Value& value : now)
    showsIt.push_back(leavesAll || showing.shows(value));
  const bool allShowIt = std::find(showsIt.begin(), showsIt.end(), false) == showsIt.end();
  std::optional<Value> meant;
  try {
    meant = row.parse(text, options.style);
  } catch (const Error&) {
    // What is shown need not be understood where nothing is written.
    if (!allShowIt) throw;
  }
  return orError([&] {
    const PROPINFO record = withOneNodePerEntity(row.record());
    std::vector<const Value*> each(size(), nullptr);
    std::vector<PlainValue> before;
    before.reserve(size());
    std::size_t rounded = 0;
    for (std::size_t i = 0; i < size(); ++i) {
      before.push_back(now[i].plain());
      if (!showsIt[i]) each[i] = &*meant;
      if (showsIt[i] && isRounded(now[i], meant)) ++rounded;
    }
    Report report = Writing(selection_, record, std::move(each), options, std::move(before)).run();
    report.rounded = rounded;
    return report;
  });
}

}  // namespace velt::palette
