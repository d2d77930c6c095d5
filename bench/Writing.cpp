// Writing one value to a whole selection, beside its floor: the lookups and puts that it must make, in a bare loop.

#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <streambuf>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "bench/Drawings.h"
#include "bench/Groups.h"
#include "bench/Selection.h"
#include "host/com/Bstr.h"
#include "host/com/ComRuntime.h"
#include "host/com/IDispatch.h"
#include "host/database/OpenObject.h"

namespace velt::bench {

namespace {

constexpr const wchar_t* written = L"LinetypeScale";

VARIANT real(double number) {
  VARIANT made{};
  made.vt = VT_R8;
  made.dblVal = number;
  return made;
}

PROPINFO rowOf(Selection& selection) {
  TqVector<PROPINFO> rows;
  selection.query(rows);
  PROPINFO found;
  for (PROPINFO& row : rows) {
    if (row.name == CStdStr<wchar_t>(written)) found = row;
    VariantClear(&row.value);
  }
  if (!found.isEditable) throw std::logic_error("the property that is to be written cannot be written");
  return found;
}

void write(Selection& selection, const PROPINFO& row, VARIANT& value) {
  CStdStr<wchar_t> errorText;
  int lockedCount = 0;
  VkArray<VkDbObjectId> touched;
  const int result =
      SetPropertiesValue(selection.entries(), row, value, false, errorText, lockedCount, touched, 0);
  if (result != 1 || touched.length() != static_cast<int>(selection.entries().length()))
    throw std::logic_error("not every entity was written to");
}

bool isLocked(VkDbObjectId id) {
  VkDbEntity* entity = nullptr;
  vkdbOpenObject(entity, id, VkDb::kForRead);
  const VkDbObjectId layerId = entity->layerId();
  entity->close();
  VkDbLayerTableRecord* layer = nullptr;
  vkdbOpenObject<VkDbLayerTableRecord>(layer, layerId, VkDb::kForRead, false);
  const bool locked = layer->isLocked();
  layer->close();
  return locked;
}

void writeBare(Selection& selection, VARIANT& value) {
  BSTR name = SysAllocString(written);
  DISPID namedArgument = DISPID_PROPERTYPUT;
  for (VeltPropData* const entry : std::as_const(selection.entries())) {
    VkDbObjectId id;
    id.setFromOldId(entry->oldId);
    if (isLocked(id)) continue;
    DISPID dispId = 0;
    entry->pDispatch->GetIDsOfNames(GUID_NULL, &name, 1, LOCALE_SYSTEM_DEFAULT, &dispId);
    DISPPARAMS parameters{&value, &namedArgument, 1, 1};
    VARIANT result{};
    entry->pDispatch->Invoke(dispId, GUID_NULL, GetUserDefaultLCID(), DISPATCH_PROPERTYPUT, &parameters,
                             &result, nullptr, nullptr);
  }
  SysFreeString(name);
}

// Swallows what is written, so that saving is timed without the disk.
class Nowhere final : public std::streambuf {
 protected:
  int_type overflow(int_type character) override { return traits_type::not_eof(character); }
  std::streamsize xsputn(const char*, std::streamsize count) override { return count; }
};

// What a palette does with a text that somebody has written into a cell, and the drawing's way out after it.
void measurePaletteAndSaving(const std::vector<std::uint32_t>& sizes, const Repetitions& repetitions,
                             const Settings& settings, Report& report) {
  for (const std::uint32_t entities : sizes) {
    const std::string nameOfWriting = fmt::format("write/palette/{}", entities);
    const std::string nameOfSaving = fmt::format("write/saving/{}", entities);
    if (!settings.wantsOneOf({nameOfWriting, nameOfSaving})) continue;
    Selection selection(drawingOf(Content::Lines, entities));
    selection.setUp();
    palette::Selection& palette = selection.palette();
    const palette::Row row = [&] {
      palette.query();
      return palette.row("Linetype scale");
    }();
    double next = 1.0;
    const Spread time = spreadOf(sample(repetitions, [&] {
      const palette::Report outcome = palette.writeText(row, fmt::format("{}", next += 0.25));
      if (outcome.count(palette::Fate::changed) != entities)
        throw std::logic_error("not every entity was written to");
    }));
    report.add({nameOfWriting,
                {{"entities", static_cast<double>(entities)}},
                {{"write", "ns per entity", time.over(static_cast<double>(entities))}}});
    Nowhere nowhere;
    std::ostream out(&nowhere);
    const Spread saving = spreadOf(sample(repetitions, [&] { selection.drawing().document().write(out); }));
    report.add({nameOfSaving,
                {{"entities", static_cast<double>(entities)}},
                {{"save", "ns per entity", saving.over(static_cast<double>(entities))}}});
  }
}

}  // namespace

void measureWriting(const Settings& settings, Report& report) {
  constexpr std::string_view nameOfGrowth = "growth/write/lines";
  const std::vector<std::uint32_t> sizes = settings.quick ? std::vector<std::uint32_t>{10, 100}
                                                          : std::vector<std::uint32_t>{1'000, 10'000, 50'000};
  const Repetitions repetitions = settings.quick ? Repetitions{.atLeast = 2, .atMost = 2} : Repetitions{};
  measurePaletteAndSaving(sizes, repetitions, settings, report);
  std::vector<Point> growth;
  for (const std::uint32_t entities : sizes) {
    const std::string name = fmt::format("write/lines/{}", entities);
    if (!settings.wantsOneOf({nameOfGrowth, name})) continue;
    Selection selection(drawingOf(Content::Lines, entities));
    selection.setUp();
    const PROPINFO row = rowOf(selection);
    // Another value each time, because the host does not write a value that is there already.
    double next = 1.0;
    const auto another = [&] { return real(next += 0.25); };
    VARIANT first = another();
    // The first edit of a record costs more than later ones, so every record is edited once beforehand.
    writeBare(selection, first);
    const Pairs times = samplePairs(
        repetitions,
        [&] {
          VARIANT value = another();
          write(selection, row, value);
        },
        [&] {
          VARIANT value = another();
          writeBare(selection, value);
        });
    const Spread time = spreadOf(times.first);
    growth.push_back({static_cast<double>(entities), time.median});
    report.add({name,
                {{"entities", static_cast<double>(entities)}},
                {{"ratio", "", spreadOf(times.ratio)},
                 {"write", "ns per entity", time.over(static_cast<double>(entities))},
                 {"floor", "ns per entity", spreadOf(times.second).over(static_cast<double>(entities))}}});
  }
  if (!settings.wants(nameOfGrowth)) return;
  const double exponent = growthExponent(growth);
  report.add({std::string(nameOfGrowth),
              {{"from", growth.front().size}, {"to", growth.back().size}},
              {{"exponent", "", {exponent, exponent, exponent}}}});
}

}  // namespace velt::bench
