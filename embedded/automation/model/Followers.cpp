#include "embedded/automation/model/Followers.h"

#include <cstddef>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Dictionary.h"
#include "embedded/database/LastAsked.h"
#include "embedded/database/Layer.h"
#include "embedded/database/RecordEditor.h"

namespace velt::automation {
namespace {

constexpr std::string_view subclassOfHatch = hatchSubclassName;
constexpr int reactorCode = 330;

bool isOnLockedLayer(const database::Drawing& drawing, std::uint32_t record) {
  const std::wstring name = database::Lens(drawing, record).name(8, database::commonSubclass);
  const database::TableEntry* const layer = drawing.layers().find(name);
  return layer != nullptr && database::Layer(drawing, layer->record).isLocked();
}

bool isAssociativeHatch(const database::Drawing& drawing, std::uint32_t record) {
  return drawing.view(record).type() == "HATCH"
         && database::Lens(drawing, record).integer(71, subclassOfHatch, 0) != 0;
}

// Why the record would have to change with the entity, in a program that knows how to do that; null when it would not.
const Reason* whyItFollows(const database::Drawing& drawing, std::uint32_t record, std::uint32_t followed) {
  const std::string_view type = drawing.view(record).type();
  if (type == "HATCH") {
    if (!isAssociativeHatch(drawing, record)) return nullptr;
    if (isOnLockedLayer(drawing, record)) return &reasons::followedByLockedHatch;
    return drawing.breaksAssociations() || FollowingHatch::of(drawing, record, followed)
               ? nullptr
               : &reasons::followedByHatch;
  }
  // It makes a dimension follow other entities, and is told of a change of either.
  if (type == "DIMASSOC")
    return drawing.view(followed).type().ends_with("DIMENSION") ? nullptr : &reasons::followedByDimension;
  return type == "LEADER" ? &reasons::followedByLeader : nullptr;
}

// The records that are told of changes of this one.
std::vector<std::uint32_t> reactorsOf(const database::Drawing& drawing, std::uint32_t record) {
  std::vector<std::uint32_t> found;
  const dxf::RecordView view = drawing.view(record);
  const auto reactors = view.applicationGroup("ACAD_REACTORS");
  if (!reactors) return found;
  for (std::size_t index = reactors->first; index < reactors->first + reactors->count; ++index) {
    if (view.code(index) != reactorCode) continue;
    if (const auto reactor = drawing.recordByHandle(dxf::parseHandle(view.value(index)).value_or(0)))
      found.push_back(*reactor);
  }
  return found;
}

const Reason* findFollower(const database::Drawing& drawing, std::uint32_t record) {
  for (const std::uint32_t reactor : reactorsOf(drawing, record)) {
    if (const Reason* const why = whyItFollows(drawing, reactor, record)) return why;
  }
  return nullptr;
}

const Reason* whyItIsFollowed(const database::Drawing& drawing, std::uint32_t record) {
  if (!drawing.view(record).applicationGroup("ACAD_REACTORS")) return nullptr;
  // A palette asks for each row of a polyline, of which there are many.
  struct Answer {
    bool breaksAssociations = false;
    const Reason* why = nullptr;
  };
  thread_local database::LastAsked<Answer> last;
  const auto ask = [&] { return Answer{drawing.breaksAssociations(), findFollower(drawing, record)}; };
  Answer& known = last.of(drawing.idOf(record), drawing, ask);
  if (known.breaksAssociations != drawing.breaksAssociations()) known = ask();
  return known.why;
}

// The record is no longer told of changes to the entity. The group goes with its last entry.
void removeReactor(database::Drawing& drawing, std::uint32_t entity, std::uint64_t reactor) {
  drawing.edit(entity, [&](dxf::Document& document) {
    const auto group = document.view(entity).applicationGroup("ACAD_REACTORS");
    if (!group) return;
    std::size_t left = group->count;
    for (std::size_t index = group->first + group->count; index-- > group->first;) {
      const dxf::RecordView view = document.view(entity);
      if (view.code(index) != reactorCode || dxf::parseHandle(view.value(index)) != reactor) continue;
      document.erase(entity, index);
      --left;
    }
    const bool isClosed = group->first + left < document.view(entity).size()
                          && document.view(entity).code(group->first + left) == 102;
    if (left > 0 || !isClosed) return;
    document.erase(entity, group->first);
    document.erase(entity, group->first - 1);
  });
}

bool isAttached(const database::Drawing& drawing, std::uint32_t record, std::string_view name) {
  const auto dictionary = database::extensionDictionary(drawing, record);
  return dictionary && database::dictionaryEntry(drawing, *dictionary, name).has_value();
}

// Only drawings with subclass markers have such attributes.
bool saysSeveralLines(const database::Lens& lens) {
  for (const char* const subclass : {"AcDbAttribute", "AcDbAttributeDefinition"}) {
    if (lens.view().hasSubclass(subclass) && lens.integer(71, subclass, 0) != 0) return true;
  }
  return lens.view().hasSubclass("AcDbXrecord") || lens.view().embeddedObject().has_value();
}

}  // namespace

void requireSingleLine(const database::Drawing& drawing, std::uint32_t record) {
  const database::Lens lens(drawing, record);
  if (lens.type() != "ATTRIB" && lens.type() != "ATTDEF") return;
  if (saysSeveralLines(lens) || isAttached(drawing, record, "ACAD_MLATT")) {
    throw Refusal(reasons::severalLines);
  }
}

void requireFreeShape(const database::Drawing& drawing, std::uint32_t record) {
  requireSingleLine(drawing, record);
  if (const Reason* const why = whyItIsFollowed(drawing, record)) throw Refusal(*why);
  if (isAttached(drawing, record, "AcDbContextDataManager")) {
    throw Refusal(reasons::annotative);
  }
}

FollowingHatches::FollowingHatches(database::Drawing& drawing, std::uint32_t entity)
    : drawing_(drawing), entity_(entity) {
  if (drawing.breaksAssociations()) return;
  for (const std::uint32_t reactor : reactorsOf(drawing, entity)) {
    if (!isAssociativeHatch(drawing, reactor)) continue;
    if (auto hatch = FollowingHatch::of(drawing, reactor, entity)) hatches_.push_back(*std::move(hatch));
  }
}

void FollowingHatches::bringAlong() {
  if (drawing_.breaksAssociations()) return releaseHatches(drawing_, entity_);
  try {
    for (const FollowingHatch& hatch : hatches_)
      hatch.follow(drawing_);
  } catch (const BoundaryError&) {
    throw Refusal(reasons::hatchWouldNotClose);
  }
}

void releaseHatches(database::Drawing& drawing, std::uint32_t record) {
  for (const std::uint32_t reactor : reactorsOf(drawing, record)) {
    if (drawing.view(reactor).type() == "HATCH") breakAssociation(drawing, reactor);
  }
}

void breakAssociation(database::Drawing& drawing, std::uint32_t hatch) {
  constexpr int sourceCount = 97;
  const database::Lens lens(drawing, hatch);
  if (lens.integer(71, subclassOfHatch, 0) == 0) return;
  std::vector<std::uint64_t> sources;
  for (const std::size_t pair : lens.view().findAll(reactorCode, subclassOfHatch))
    sources.push_back(dxf::parseHandle(lens.view().value(pair)).value_or(0));
  drawing.edit(hatch, [&](dxf::Document& document) {
    for (const std::size_t pair : document.view(hatch).findAll(sourceCount, subclassOfHatch)) {
      const dxf::RecordView view = document.view(hatch);
      // The same code counts the fit points of a spline, which follow it.
      const bool hasSources = pair + 1 < view.size() && view.code(pair + 1) == reactorCode;
      if (hasSources) document.replace(hatch, pair, "0");
    }
    const std::vector<std::size_t> gone = document.view(hatch).findAll(reactorCode, subclassOfHatch);
    for (auto pair = gone.rbegin(); pair != gone.rend(); ++pair)
      document.erase(hatch, *pair);
  });
  database::RecordEditor(drawing, hatch).setInteger(71, subclassOfHatch, 0);
  for (const std::uint64_t source : sources) {
    if (const auto record = drawing.recordByHandle(source))
      removeReactor(drawing, *record, drawing.handleOf(hatch));
  }
}

void requireOwnWording(const Subject& text) {
  requireSingleLine(text.drawing(), text.record());
  if (isAttached(text.drawing(), text.record(), "ACAD_FIELD")) {
    throw Refusal(reasons::madeByField);
  }
}

}  // namespace velt::automation
