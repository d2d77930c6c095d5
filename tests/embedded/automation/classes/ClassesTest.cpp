// What holds for the table of every class, and the golden listing of each.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>
#include <set>
#include <string>

#include "dxf/Numbers.h"
#include "embedded/automation/classes/ClassDirectory.h"
#include "embedded/automation/model/ClassIndex.h"
#include "tests/embedded/automation/Automation.h"
#include "tests/support/Golden.h"
#include "tests/support/Narrow.h"

namespace velt::automation {
namespace {

using namespace test;
using tests::narrow;

std::string typeName(const ValueType& type) {
  if (type.user != nullptr) return narrow(type.user->name);
  switch (type.declared) {
    case VT_R8:
      return "R8";
    case VT_I4:
      return "I4";
    case VT_BSTR:
      return "BSTR";
    case VT_BOOL:
      return "BOOL";
    case VT_VARIANT:
      return "VARIANT";
    case VT_DISPATCH:
      return "DISPATCH";
    default:
      return "?";
  }
}

std::string accessName(const Access& access) {
  const char* kinds[] = {"computed", "real", "degrees",     "direction",    "integer",
                         "bit",      "text", "world point", "object point", "style variable"};
  std::string name = kinds[static_cast<std::size_t>(access.kind)];
  if (access.kind != AccessKind::Computed) name += " " + std::to_string(access.code) + " " + access.subclass;
  if (access.otherwise != 0) name += " else " + dxf::formatReal(access.otherwise);
  if (access.mask != 0) name += " & " + std::to_string(access.mask);
  if (access.elements != nullptr) name += access.elements->grouping == 0 ? ", expanded" : ", grouped";
  const char* limits[] = {"", ", above 0", ", from 0", ", not 0"};
  name += limits[static_cast<std::size_t>(access.limit)];
  if (*access.since != '\0') name += std::string(", since ") + access.since;
  return name;
}

std::string editName(const PropertyRow& row) {
  if (!row.isWritable()) return "no";
  return row.writability.obstacle == nullptr ? "yes" : "some";
}

std::string choicesName(Choices choices) {
  const char* names[] = {"-",          "enumeration", "layers",    "linetypes", "text styles",
                         "dim styles", "colors",      "gradients", "own names"};
  return names[static_cast<std::size_t>(choices)];
}

std::string padded(std::string text, std::size_t width) {
  text.resize(std::max(text.size() + 1, width), ' ');
  return text;
}

std::string shownForName(Variants variants) {
  if (variants == everyVariant) return "";
  std::string name = " only for";
  for (unsigned bit = 0; bit < 8; ++bit) {
    if ((variants & (1U << bit)) != 0) name += " " + std::to_string(bit);
  }
  return name;
}

// One line per row: what a palette, and whoever wrote scripts against the class, depends on.
std::string listing(const ClassIndex& index) {
  const AutomationClass& kind = index.kind();
  std::string text =
      narrow(kind.name) + " \"" + narrow(kind.label) + "\" " + std::string(kind.dxfName) + "\n\n";
  text += padded("name", 20) + padded("DISPID", 8) + padded("type", 24) + padded("category", 18)
          + padded("access", 52) + padded("edit", 6) + padded("weight", 8) + padded("choices", 13)
          + "label\n";
  for (const PropertyRow* row : index.rows()) {
    text += padded(narrow(row->name), 20) + padded(std::to_string(row->dispId), 8)
            + padded(typeName(row->type), 24) + padded(narrow(categoryName(row->category.number)), 18)
            + padded(accessName(row->access), 52) + padded(editName(*row), 6)
            + padded(std::to_string(row->weight), 8) + padded(choicesName(row->choices), 13)
            + narrow(row->label) + shownForName(row->shownFor) + "\n";
  }
  return text;
}

class EveryClass : public ::testing::TestWithParam<const AutomationClass*> {
 protected:
  const AutomationClass& kind = *GetParam();
  const ClassIndex index{kind};
};

TEST_P(EveryClass, IsListedAsAccepted) {
  const std::string name = narrow(kind.name).substr(4);  // without the common beginning of all type names
  EXPECT_TRUE(tests::matchesGolden("golden/classes/" + name + ".txt", listing(index)));
}

TEST_P(EveryClass, HasEachIdAndEachNameOnce) {
  std::set<DISPID> ids;
  std::set<std::string> names;
  for (const PropertyRow* row : index.rows()) {
    EXPECT_TRUE(ids.insert(row->dispId).second) << row->dispId;
    std::string lower = narrow(row->name);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return static_cast<char>(std::tolower(c)); });
    EXPECT_TRUE(names.insert(lower).second) << lower;
  }
}

TEST_P(EveryClass, FindsEachRowByIdAndByName) {
  for (const PropertyRow* row : index.rows()) {
    EXPECT_EQ(row, index.find(row->dispId));
    EXPECT_EQ(row, index.find(std::wstring_view(row->name)));
  }
}

TEST_P(EveryClass, UsesNoIdThatMeansSomethingElse) {
  for (const PropertyRow* row : index.rows()) {
    EXPECT_GT(row->dispId, 0) << "0 reads as an unknown name, and -23 marks rows of other origin";
    if (row->dispId < 1280 || row->dispId > 1301) continue;
    const std::set<std::pair<DISPID, std::string>> meanings = {
        {1280, "Color"},      {1281, "Layer"},         {1282, "Linetype"},  {1283, "LinetypeScale"},
        {1299, "Lineweight"}, {1300, "PlotStyleName"}, {1301, "Hyperlinks"}};
    EXPECT_TRUE(meanings.contains({row->dispId, narrow(row->name)})) << row->dispId;
  }
}

TEST_P(EveryClass, ExplainsEveryRow) {
  for (const PropertyRow* row : index.rows()) {
    const std::string help = narrow(row->help);
    EXPECT_FALSE(help.empty()) << narrow(row->name);
    EXPECT_FALSE(std::wstring_view(row->label).empty()) << narrow(row->name);
    EXPECT_EQ(std::string::npos, help.find("Read-only"))
        << narrow(row->name) << ": why it is read-only stands in a column of its own";
    EXPECT_NE(nullptr, categoryName(row->category.number)) << narrow(row->name);
  }
}

TEST_P(EveryClass, CanPutEveryRowOrSaysWhyNot) {
  for (const PropertyRow* row : index.rows()) {
    const Writability& writability = row->writability;
    const ElementAccess* const elements = row->access.elements;
    if (row->isWritable()) {
      EXPECT_NE(nullptr, row->access.put) << narrow(row->name);
      EXPECT_TRUE(elements == nullptr || elements->put != nullptr) << narrow(row->name);
    } else {
      EXPECT_EQ(nullptr, writability.obstacle) << narrow(row->name) << ": no entity's can be changed anyway";
    }
    // Stored values come with a put that a read-only row does not use; one that is written for it is a mistake.
    if (row->access.kind == AccessKind::Computed) {
      EXPECT_EQ(row->isWritable(), row->access.put != nullptr) << narrow(row->name);
    }
  }
}

TEST_P(EveryClass, PublishesAPutForEachRowThatCanBeWritten) {
  const DispatchType type = dispatchTypeOf(index);
  for (const PropertyRow* row : index.rows()) {
    const bool hasPut =
        std::any_of(type.functions.begin(), type.functions.end(), [&](const TypeFunction& function) {
          return function.id == row->dispId && function.kind == INVOKE_PROPERTYPUT;
        });
    EXPECT_EQ(row->isWritable(), hasPut) << narrow(row->name);
  }
}

void expectSentence(std::wstring_view text, wchar_t lowest, wchar_t highest) {
  ASSERT_FALSE(text.empty());
  EXPECT_TRUE(text.front() >= lowest && text.front() <= highest) << narrow(text);
  EXPECT_TRUE(text.ends_with(L'.')) << narrow(text);
}

TEST_P(EveryClass, GivesItsReasonsAsSentences) {
  for (const PropertyRow* row : index.rows()) {
    const auto& [never, obstacle, obstacleShows] = row->writability;
    if (never != nullptr) expectSentence(never->sentence, L'A', L'Z');
    if (obstacle == nullptr) continue;
    expectSentence(obstacle->where, L'a', L'z');
    EXPECT_NE(nullptr, obstacle->reasonFor) << narrow(row->name);
  }
}

TEST_P(EveryClass, ExpandsExactlyItsVariants) {
  for (const PropertyRow* row : index.rows()) {
    EXPECT_EQ(row->type.declared == VT_VARIANT, row->access.elements != nullptr) << narrow(row->name);
    if (row->access.elements != nullptr) {
      EXPECT_FALSE(index.findEntry(row->dispId)->labels.empty());
    }
  }
}

TEST_P(EveryClass, OffersChoicesThatItsTypeCanTake) {
  for (const PropertyRow* row : index.rows()) {
    const bool isEnumeration = row->type.user != nullptr && row->type.user->isEnumeration();
    EXPECT_EQ(isEnumeration, row->choices == Choices::Enumeration) << narrow(row->name);
    if (row->choices == Choices::Colors) {
      EXPECT_TRUE(row->type.base() == VT_DISPATCH || row->type.base() == VT_I4) << narrow(row->name);
    }
    if (row->choices == Choices::Layers) {
      EXPECT_EQ(VT_BSTR, row->type.base());
    }
  }
}

TEST_P(EveryClass, OrdersItsRowsByTheirWeight) {
  std::set<std::int32_t> weights;
  for (const PropertyRow* row : index.rows()) {
    EXPECT_GT(row->weight, 0) << narrow(row->name) << ": rows without a weight come before all others";
    EXPECT_TRUE(weights.insert(row->weight).second) << narrow(row->name) << " has the weight of another row";
  }
}

TEST_P(EveryClass, DependsOnNothingButItsVariantInWhatItShows) {
  for (const PropertyRow* row : index.rows()) {
    if (kind.variant == nullptr) {
      EXPECT_EQ(everyVariant, row->shownFor) << narrow(row->name);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, EveryClass,
                         ::testing::ValuesIn(automationClasses().begin(), automationClasses().end()),
                         [](const auto& parameter) { return narrow(parameter.param->name); });

TEST(Classes, HaveDifferentIdsAndNames) {
  std::set<std::string> names;
  std::set<std::string> ids;
  for (const AutomationClass* kind : automationClasses()) {
    EXPECT_TRUE(names.insert(narrow(kind->name)).second);
    const auto* bytes = static_cast<const char*>(static_cast<const void*>(&kind->clsid));
    EXPECT_TRUE(ids.insert(std::string(bytes, sizeof kind->clsid)).second) << narrow(kind->name);
  }
}

TEST(Classes, NameEachReasonOnce) {
  std::map<std::wstring_view, const Reason*> reasons;
  for (const AutomationClass* kind : automationClasses()) {
    const ClassIndex index(*kind);
    for (const PropertyRow* row : index.rows()) {
      const Reason* const reason = row->writability.never;
      if (reason == nullptr) continue;
      const auto& [known, added] = reasons.emplace(reason->sentence, reason);
      EXPECT_EQ(reason, known->second) << narrow(known->first) << " has two names";
    }
  }
}

// By name.
std::map<std::string, const UserType*> userTypes() {
  std::map<std::string, const UserType*> types;
  for (const AutomationClass* kind : automationClasses()) {
    const ClassIndex index(*kind);
    for (const PropertyRow* row : index.rows()) {
      if (row->type.user == nullptr) continue;
      const auto& [known, added] = types.emplace(narrow(row->type.user->name), row->type.user);
      EXPECT_EQ(row->type.user, known->second) << known->first << " is the name of two types";
    }
  }
  return types;
}

// Drawings hold the numbers, scripts the names, and people choose by the labels.
TEST(Classes, UseTheTypesThatAreListedAsAccepted) {
  std::string text;
  for (const auto& [name, type] : userTypes()) {
    text += name + ": " + (type->isEnumeration() ? "enumeration" : typeName(static_cast<VARENUM>(type->base)))
            + ". " + narrow(type->help) + "\n";
    for (const EnumMember& member : type->members)
      text += "  " + padded(std::to_string(member.value), 5) + padded(narrow(member.name), 28)
              + narrow(member.label) + "\n";
  }
  EXPECT_TRUE(tests::matchesGolden("golden/types.txt", text));
}

}  // namespace
}  // namespace velt::automation
