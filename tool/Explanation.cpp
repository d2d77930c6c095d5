#include "tool/Explanation.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>
#include <span>
#include <utility>

#include "embedded/automation/classes/ClassDirectory.h"
#include "tool/EntitySelection.h"
#include "tool/ReadOnlyRows.h"

namespace velt::tool {

namespace {

using palette::Absence;
using Cause = Absence::Cause;

constexpr const char* orTable = ", or see all values side by side with \"table --columns\"";

std::string handlesText(const palette::Selection& selection, const std::vector<std::size_t>& entities) {
  constexpr std::size_t mostHandles = 8;
  std::string text;
  for (std::size_t i = 0; i < entities.size() && i < mostHandles; ++i)
    text += (i > 0 ? ", " : "") + handleText(selection.entity(entities[i]));
  if (entities.size() > mostHandles) text += fmt::format(" and {} more", entities.size() - mostHandles);
  return text;
}

// --- what the classes have -------------------------------------------------------------------------------

template <class Function>
void forEachRow(const automation::AutomationClass& kind, Function function) {
  const auto visit = [&](std::span<const automation::PropertyRow> rows) {
    for (const automation::PropertyRow& row : rows)
      function(row);
  };
  if (kind.general != nullptr) visit(*kind.general);
  for (const auto* const family : kind.families)
    visit(*family);
  visit(kind.rows);
}

// A row that is broken up is shown by its elements, whose labels may begin with its own.
bool mayBe(const automation::PropertyRow& row, std::string_view name) {
  const std::string label = palette::toUtf8(row.label);
  if (palette::equalIgnoringCase(label, name)) return true;
  if (palette::equalIgnoringCase(palette::toUtf8(row.name), name)) return true;
  if (row.access.elements == nullptr) return false;
  const std::span<const wchar_t* const> elements = row.access.elements->labels;
  return std::any_of(elements.begin(), elements.end(), [&](const wchar_t* element) {
    const std::string own = palette::toUtf8(element);
    return palette::equalIgnoringCase(row.access.elements->labelsFollowRow ? label + " " + own : own, name);
  });
}

std::vector<std::string> classesThatHave(std::string_view name) {
  std::vector<std::string> classes;
  for (const automation::AutomationClass* const kind : automation::automationClasses()) {
    bool hasIt = false;
    forEachRow(*kind, [&](const automation::PropertyRow& row) { hasIt = hasIt || mayBe(row, name); });
    if (hasIt) classes.push_back(shortName(*kind));
  }
  return classes;
}

std::vector<std::string> allLabels(const palette::Selection& selection) {
  std::set<std::string> labels;
  for (const palette::Row& row : selection.rows())
    labels.insert(row.label());
  for (const automation::AutomationClass* const kind : automation::automationClasses())
    forEachRow(*kind, [&](const automation::PropertyRow& row) { labels.insert(palette::toUtf8(row.label)); });
  return {labels.begin(), labels.end()};
}

// --- a row that is missing -------------------------------------------------------------------------------

const char* nameOf(Cause cause) {
  switch (cause) {
    case Cause::none:
      return "shown";
    case Cause::unreadable:
      return "unreadable";
    case Cause::hidden:
      return "hidden";
    case Cause::notShown:
      return "notShown";
    case Cause::notReadable:
      return "notReadable";
    case Cause::disabled:
      return "disabled";
    case Cause::sourceFailed:
      return "sourceFailed";
    case Cause::unknown:
      return unknownCause;
    case Cause::notCommon:
      return "notCommon";
    case Cause::dynamicWithheld:
      return "dynamicWithheld";
    case Cause::oneAtATime:
      return "oneAtATime";
    case Cause::different:
      return "different";
  }
  return "";
}

const char* nameOf(Absence::Part part) {
  switch (part) {
    case Absence::Part::category:
      return "category";
    case Absence::Part::name:
      return "name";
    case Absence::Part::label:
      return "label";
    case Absence::Part::editability:
      return "editability";
    case Absence::Part::choices:
      return "choices";
    case Absence::Part::isElement:
      return "isElement";
    case Absence::Part::elementCount:
      return "elementCount";
    case Absence::Part::type:
      return "type";
  }
  return "";
}

const char* wordsFor(Absence::Part part) {
  switch (part) {
    case Absence::Part::category:
      return "it stands in another category";
    case Absence::Part::name:
      return "another property has the same label";
    case Absence::Part::label:
      return "it has another label";
    case Absence::Part::editability:
      return "it can be edited on one and not on the other";
    case Absence::Part::choices:
      return "only one of them offers choices";
    case Absence::Part::isElement:
      return "on one it is part of a point, and on the other it stands alone";
    case Absence::Part::elementCount:
      return "it is part of a point or list of another length";
    case Absence::Part::type:
      return "its value is of another type";
  }
  return "";
}

class Absent {
 public:
  Absent(const palette::Selection& selection, const std::string& name)
      : selection_(selection), name_(name), absence_(selection.whyAbsent(name)) {}

  Explanation explain() {
    made_.cause = nameOf(absence_.cause);
    made_.entities = absence_.entities;
    switch (absence_.cause) {
      case Cause::notCommon:
        say(fmt::format("{} of the {} entities {} it. Those without it: {}.", selection_.size() - count(),
                        selection_.size(), selection_.size() - count() == 1 ? "has" : "have",
                        handlesText(selection_, absence_.entities)));
        say("Of the first of these:");
        ofEntities(absence_.ofEntity);
        advise("select only those that have it", fmt::format(": --where \"has {}\"", name_));
        break;
      case Cause::dynamicWithheld:
        say("Every entity has it, but as an attribute, extended data or a row of a plug-in. Such rows are "
            "shown for several entities only when all are references to one dynamic "
            "block.");
        advise("select one entity", orTable);
        break;
      case Cause::oneAtATime:
        say("Every entity has it, as one of a group such as the vertices of a polyline. Groups are shown for "
            "one entity at a time.");
        advise("select one entity", orTable);
        break;
      case Cause::different:
        explainDifference();
        break;
      default:
        ofEntities(absence_.cause);
    }
    return std::move(made_);
  }

 private:
  std::size_t count() const { return absence_.entities.size(); }
  void say(std::string sentence) { made_.said.push_back(std::move(sentence)); }
  void advise(std::string step, std::string onCommandLine) {
    made_.advice.push_back({std::move(step), std::move(onCommandLine)});
  }

  void explainDifference() {
    say(fmt::format(
        "Every entity has it, but not as the same property. Those that differ from the first one, {}: {}.",
        handleText(selection_.entity(0)), handlesText(selection_, absence_.entities)));
    for (const Absence::Part part : absence_.parts) {
      made_.parts.emplace_back(nameOf(part));
      say(fmt::format("Of the first of these, {}.", wordsFor(part)));
    }
    advise("select only entities of which it is the same, such as those of one class", orTable);
  }

  // What holds for each entity by itself.
  void ofEntities(Cause cause) {
    switch (cause) {
      case Cause::unreadable:
        say(fmt::format("The properties of {} cannot be read: {}",
                        handleText(selection_.entity(absence_.entities.front())), absence_.message));
        advise("select others", fmt::format(": --not --handle {} selects all but that entity",
                                            handleText(selection_.entity(absence_.entities.front()))));
        break;
      case Cause::hidden:
        say("The class has such a property, and hides it from people.");
        break;
      case Cause::notShown:
        say("The class has such a property, and does not show it for entities of this kind: another kind of "
            "the class has it, or it means nothing here.");
        advise("find entities that show it", fmt::format(": --all --where \"has {}\"", name_));
        break;
      case Cause::notReadable:
        say("The class has something of that name, but it gives no value.");
        break;
      case Cause::disabled:
        say("A plug-in has it, or the extended data, and has disabled it for this entity.");
        advise("ask the author of the plug-in when it is enabled", "");
        break;
      case Cause::sourceFailed:
        say("The class has no such property, and a plug-in failed that may have had it.");
        advise("read what standard error says of the plug-in", "");
        break;
      default:
        explainUnknown();
    }
  }

  void explainUnknown() {
    say("There is no such property: neither of the class, nor an attribute, extended data or a row of a "
        "plug-in.");
    const std::vector<std::string> classes = classesThatHave(name_);
    if (!classes.empty()) {
      say(fmt::format("Classes that have it: {}.", fmt::join(classes, ", ")));
      adviseClasses();
      return;
    }
    if (absence_.cause == Cause::notCommon) return;
    const std::vector<std::string> alike = palette::namesLike(name_, allLabels(selection_));
    if (!alike.empty()) advise(fmt::format("perhaps {} is meant", fmt::join(alike, " or ")), "");
    advise("", "\"show\" names the properties that there are; rows of plug-ins need --plugin");
  }

  void adviseClasses() {
    const std::vector<std::string> classes = classesThatHave(name_);
    if (!classes.empty() && absence_.cause != Cause::notCommon)
      advise("select entities of these classes", fmt::format(": --type {}", fmt::join(classes, ",")));
  }

  const palette::Selection& selection_;
  const std::string& name_;
  Absence absence_;
  Explanation made_;
};

// --- a row that is there ---------------------------------------------------------------------------------

}  // namespace

Explanation explainRow(const palette::Selection& selection, const palette::Row& row,
                       const palette::NumberStyle& style) {
  Explanation made{.cause = "shown"};
  if (row.isVarying()) {
    made.cause = "varying";
    made.values = valuesBehind(selection, row, selection.rows(), style);
    made.said.push_back(
        made.values.size() > 1
            ? fmt::format("It is shown, with {} different values.", made.values.size())
            : "It is shown as varying although all entities give the same value: colors that are by "
              "layer differ with the layers, and two empty values count as different.");
  } else {
    made.said.push_back(fmt::format("It is shown, with the value {}.", row.text(style)));
  }
  if (!row.isEditable()) {
    made.cause = "readOnly";
    const std::string reason = readOnlyReason(row);
    made.said.push_back(
        reason.empty() ? fmt::format("It cannot be edited: {}.",
                                     row.isDynamic()
                                         ? "its plug-in, attribute or extended data says that it is read-only"
                                         : "the class offers no way to write it")
                       : fmt::format("It cannot be edited: {}.", reason));
    return made;
  }
  const Refusals refusals = refusalsOf(selection, row);
  if (refusals.entities.empty()) {
    made.said.emplace_back("It can be edited.");
  } else {
    made.said.push_back(fmt::format("It cannot be edited on {} of {}, because {} ({}).",
                                    refusals.entities.size(), entitiesText(selection.size()), refusals.reason,
                                    handlesText(selection, refusals.entities)));
    made.entities = refusals.entities;
  }
  const std::vector<std::size_t> locked = selection.lockedEntities();
  if (locked.empty()) return made;
  made.said.push_back(fmt::format("On locked layers, and so left as they are: {} of {}: {}.", locked.size(),
                                  entitiesText(selection.size()), handlesText(selection, locked)));
  made.advice.push_back({"unlock the layers in a CAD program, or leave these entities out", ""});
  if (made.entities.empty()) made.entities = locked;
  return made;
}

Explanation explainAbsence(const palette::Selection& selection, const std::string& name) {
  return Absent(selection, name).explain();
}

}  // namespace velt::tool
