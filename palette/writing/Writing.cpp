// Writes a value to one row of a selection, and finds out what became of each entity.

#include <algorithm>
#include <new>
#include <utility>

#include "palette/Palette.h"
#include "palette/selection/DynamicNodes.h"
#include "palette/selection/EntityValue.h"
#include "palette/support/HostCalls.h"
#include "palette/writing/Meaning.h"
#include "palette/writing/Refusal.h"

namespace velt::palette {

namespace {

class Writing {
 public:
  Writing(TqVector<VeltPropData*>& entries, const PROPINFO& row, const Value& value,
          const WriteOptions& options)
      : entries_(entries), row_(row), value_(value), options_(options) {
    report_.fates.assign(entries.length(), Fate::notReached);
  }

  Report run() {
    before_.reserve(count());
    for (std::size_t i = 0; i < count(); ++i)
      before_.push_back(valueNow(i));
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
    } catch (const Error&) {
      return {};
    }
  }

  // In portions, so that progress can be told; one call for all entities would have the same effect.
  void writeStatic() {
    constexpr std::size_t portion = 1000;
    for (std::size_t from = 0; from < count();) {
      const std::size_t end = std::min(from + portion, count());
      const std::size_t refused = writePortion(from, end);
      if (refused != end && !options_.keepGoing) return;
      from = refused != end ? refused + 1 : end;
      if (options_.progress && !options_.progress(from, count())) return;
    }
  }

  // Answers the index of the entity that refused, else `end`.
  std::size_t writePortion(std::size_t from, std::size_t end) {
    TqVector<VeltPropData*> portion;
    if (!portion.setPhysicalLength(static_cast<std::uint32_t>(end - from))) throw std::bad_alloc();
    for (std::size_t i = from; i < end; ++i)
      portion.push_back(&entry(i));
    // A bitwise copy: what the value holds stays the caller's.
    VARIANT shared = value_.variant();
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    const int result = SetPropertiesValue(portion, row_, shared, row_.isElement, errorText, lockedCount,
                                          touched, row_.elementCookie);
    // `touched` has the entities that were tried, in order; those between them were passed over.
    std::size_t i = from;
    for (int t = 0; t < touched.length(); ++t, ++i) {
      for (; id(i) != touched[t]; ++i)
        passOver(i);
      if (result == 0 && t + 1 == touched.length()) {
        refuse(i, toUtf8(errorText.str()));
        return i;
      }
      tell(i, valueNow(i));
    }
    for (; i < end; ++i)
      passOver(i);
    return end;
  }

  // The host took the value; what it made of it is told by the value that the entity has now.
  void tell(std::size_t i, const PlainValue& now) {
    if (!isSame(now, before_[i])) {
      report_.fates[i] = Fate::changed;
    } else if (mayMean(row_, value_.plain(), now)) {
      report_.fates[i] = Fate::unchanged;
    } else {
      report_.fates[i] = Fate::refused;
      report_.reasons[i] = "the host took the value, but the entity kept the one it had";
    }
  }

  void passOver(std::size_t i) { report_.fates[i] = isOnLockedLayer(id(i)) ? Fate::locked : Fate::skipped; }

  void refuse(std::size_t i, std::string message) {
    report_.fates[i] = Fate::refused;
    report_.reasons[i] = reasonOfRefusal(row_, entry(i), value_.variant());
    report_.message = std::move(message);
  }

  // The layer writes dynamic properties all at once and does not tell what they answer, so their values are compared.
  void writeDynamic() {
    const PlainValue wanted = value_.plain();
    VARIANT shared = value_.variant();
    TqVector<VeltPropData*> unused;
    CStdStr<wchar_t> errorText;
    int lockedCount = 0;
    VkArray<VkDbObjectId> touched;
    SetPropertiesValue(unused, row_, shared, false, errorText, lockedCount, touched, 0);
    for (std::size_t i = 0; i < count(); ++i) {
      const PlainValue now = valueNow(i);
      if (!isSame(now, before_[i])) {
        report_.fates[i] = Fate::changed;
      } else if (isSame(now, wanted)) {
        report_.fates[i] = Fate::unchanged;
      } else if (isOnLockedLayer(id(i))) {
        report_.fates[i] = Fate::locked;
      } else {
        report_.fates[i] = Fate::refused;
        report_.reasons[i] = "the property does not take the value";
      }
    }
  }

  TqVector<VeltPropData*>& entries_;
  const PROPINFO& row_;
  const Value& value_;
  const WriteOptions& options_;
  Report report_;
  std::vector<PlainValue> before_;
};

}  // namespace

Report Selection::write(const Row& row, const Value& value, const WriteOptions& options) {
  return orError([&] {
    const PROPINFO record = withOneNodePerEntity(row.record());
    return Writing(selection_, record, value, options).run();
  });
}

}  // namespace velt::palette
