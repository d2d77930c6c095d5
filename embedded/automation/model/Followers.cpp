#include "embedded/automation/model/Followers.h"

#include "dxf/Numbers.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/Dictionary.h"

namespace velt::automation {
namespace {

// Whether the record is to change with the entity, in a program that knows how to do that.
bool follows(const database::Drawing& drawing, std::uint32_t record, std::string_view followed) {
  const std::string_view type = drawing.view(record).type();
  if (type == "HATCH") return database::Lens(drawing, record).integer(71, "AcDbHatch", 0) != 0;
  // It makes a dimension follow other entities, and is told of a change of either.
  if (type == "DIMASSOC") return !followed.ends_with("DIMENSION");
  return type == "LEADER";
}

bool hasFollower(const database::Drawing& drawing, std::uint32_t record) {
  constexpr int handleCode = 330;
  const dxf::RecordView view = drawing.view(record);
  const auto reactors = view.applicationGroup("ACAD_REACTORS");
  if (!reactors) return false;
  for (std::size_t index = reactors->first; index < reactors->first + reactors->count; ++index) {
    if (view.code(index) != handleCode) continue;
    const auto reactor = drawing.recordByHandle(dxf::parseHandle(view.value(index)).value_or(0));
    if (reactor && follows(drawing, *reactor, view.type())) return true;
  }
  return false;
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
  if (hasFollower(drawing, record)) {
    throw Refusal(reasons::followedByOthers);
  }
  if (isAttached(drawing, record, "AcDbContextDataManager")) {
    throw Refusal(reasons::annotative);
  }
}

void requireOwnWording(const Subject& text) {
  requireSingleLine(text.drawing(), text.record());
  if (isAttached(text.drawing(), text.record(), "ACAD_FIELD")) {
    throw Refusal(reasons::madeByField);
  }
}

}  // namespace velt::automation
