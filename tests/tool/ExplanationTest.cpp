#include "tool/Explanation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/com/ComObject.h"
#include "embedded/database/Drawing.h"
#include "embedded/sources/PluginProperty.h"
#include "embedded/sources/SourceRegistry.h"
#include "holders/InterfaceHolder.h"
#include "host/database/VkDbEntity.h"
#include "host/palette/IPropertySource.h"
#include "tests/tool/Drawings.h"

namespace velt::tool {
namespace {

using testing::HasSubstr;

class ExplanationOfRows : public testing::Test {
 protected:
  void SetUp() override { selection_.query(); }

  std::unique_ptr<database::Drawing> drawing_ = database::Drawing::parse(
      tests::drawingOf({{"0"}}, tests::line("2F", "0") + tests::circle("30", "0")), "house.dxf");
  palette::Selection selection_{drawing_->entities()};
};

TEST_F(ExplanationOfRows, OfOneThatVariesHasItsValues) {
  const Explanation made = explainRow(selection_, selection_.row("Handle"), {});
  EXPECT_EQ(made.cause, "readOnly");
  EXPECT_EQ(made.values.size(), 2U);
}

TEST_F(ExplanationOfRows, OfOneThatIsMissingNamesThoseWithoutIt) {
  const Explanation made = explainAbsence(selection_, "Radius");
  EXPECT_EQ(made.cause, "notCommon");
  EXPECT_EQ(made.entities, std::vector<std::size_t>{0});
}

TEST_F(ExplanationOfRows, AdviceForEveryoneDoesNotSpeakOfOptions) {
  const Explanation made = explainAbsence(selection_, "Radius");
  ASSERT_FALSE(made.advice.empty());
  EXPECT_EQ(made.advice[0].step, "select only those that have it");
  EXPECT_THAT(made.advice[0].onCommandLine, HasSubstr("--where \"has Radius\""));
}

TEST_F(ExplanationOfRows, OneThatOneHasIsToldInTheSingular) {
  EXPECT_EQ(explainAbsence(selection_, "Radius").said[0],
            "1 of the 2 entities has it. Those without it: 2F.");
}

class ExplanationOfOneLine : public testing::Test {
 protected:
  void use(const std::string& entities) {
    drawing_ = database::Drawing::parse(tests::drawingOf({{"0"}}, entities), "house.dxf");
    selection_.emplace(drawing_->entities());
  }
  // What is said, and behind arrows what is advised.
  std::vector<std::string> explained(const std::string& name) {
    const Explanation made = explainAbsence(*selection_, name);
    cause_ = made.cause;
    std::vector<std::string> lines = made.said;
    for (const Advice& advice : made.advice)
      lines.push_back("-> " + advice.step + advice.onCommandLine);
    return lines;
  }
  const std::string unknown_ =
      "There is no such property: neither of the class, nor an attribute, extended data or a row of a "
      "plug-in.";
  const std::string whatThereIs_ =
      "-> \"show\" names the properties that there are; rows of plug-ins need --plugin";
  std::unique_ptr<database::Drawing> drawing_;
  std::optional<palette::Selection> selection_;
  std::string cause_;
};

TEST_F(ExplanationOfOneLine, ClassesAreFoundByTheNameOfAPropertyToo) {
  use(tests::line("2F", "0"));
  selection_->query();
  EXPECT_THAT(explained("startangle"),
              testing::ElementsAre(unknown_, testing::StartsWith("Classes that have it: Arc"),
                                   testing::StartsWith("-> select entities of these classes: --type Arc")));
  EXPECT_EQ(cause_, unknownCause);
  // One of the rows of each family of classes, and one that all dimensions share.
  EXPECT_THAT(explained("Dim roundoff")[1], HasSubstr("DimRotated"));
  EXPECT_THAT(explained("Contents")[1], HasSubstr("Text"));
}

TEST_F(ExplanationOfOneLine, NamesLikeItAreThoseOfTheRowsThatAreShownToo) {
  use(tests::line("2F", "0") + tests::pairs({{1001, "PARTS"}, {1000, "Oak"}}));
  selection_->query();
  EXPECT_THAT(explained("PRATS 1"),
              testing::ElementsAre(unknown_, "-> perhaps PARTS 1 is meant", whatThereIs_));
  EXPECT_THAT(explained("Quite another thing"), testing::ElementsAre(unknown_, whatThereIs_));
}

class FailingSource final : public com::ComObject<IPropertySource> {
 public:
  FailingSource() : ComObject(platform::Ledger::account("FailingSource")) {}
  HRESULT GetProperties(IDispatch*, VARIANT*) override { return E_FAIL; }
};

TEST_F(ExplanationOfOneLine, APlugInThatFailsMayHaveHadTheProperty) {
  use(tests::line("2F", "0"));
  const auto source = holders::InterfaceHolder<IPropertySource>::owning(com::makeObject<FailingSource>());
  sources::SourceRegistry& registry = sources::SourceRegistry::ofProcess();
  ASSERT_EQ(S_OK, registry.attach(L"failing", VkDbEntity::desc(), source.get()));
  EXPECT_THAT(
      explained("Wood"),
      testing::ElementsAre("The class has no such property, and a plug-in failed that may have had it.",
                           "-> read what standard error says of the plug-in"));
  EXPECT_EQ(cause_, "sourceFailed");
  registry.remove(L"failing");
}

struct DisabledRow final : plugins::Property {
  DisabledRow() : Property({.id = {1, 2, 3, {}}, .name = L"Wood", .description = L""}) {}
  bool isFor(IDispatch*) override { return false; }
  HRESULT get(IDispatch*, VARIANT&) override { return E_NOTIMPL; }
};

TEST_F(ExplanationOfOneLine, APropertyThatItsPlugInDisabledIsNotUnknown) {
  use(tests::line("2F", "0"));
  auto* const source = new plugins::Source({static_cast<IDynamicProperty2*>(new DisabledRow)});
  sources::SourceRegistry& registry = sources::SourceRegistry::ofProcess();
  ASSERT_EQ(S_OK, registry.attach(L"disabling", VkDbEntity::desc(), source));
  source->Release();
  EXPECT_THAT(
      explained("wood"),
      testing::ElementsAre("A plug-in has it, or the extended data, and has disabled it for this entity.",
                           "-> ask the author of the plug-in when it is enabled"));
  EXPECT_EQ(cause_, "disabled");
  registry.remove(L"disabling");
}

TEST(ExplanationOfAnOldDrawing, OfEntitiesThatRefuseEveryValueNamesThemAndTheReason) {
  const std::string line = tests::pairs({{8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}});
  const auto lineOf = [&](const char* handle) { return tests::pairs({{0, "LINE"}, {5, handle}}) + line; };
  const auto drawing = database::Drawing::parse(
      tests::pairs(
          {{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1009"}, {0, "ENDSEC"}, {0, "SECTION"}})
          + tests::pairs({{2, "ENTITIES"}}) + lineOf("2F") + lineOf("30")
          + tests::pairs({{0, "ENDSEC"}, {0, "EOF"}}),
      "old.dxf");
  palette::Selection selection(drawing->entities());
  selection.query();
  const Explanation made = explainRow(selection, selection.row("Lineweight"), {});
  EXPECT_EQ(made.cause, "shown");
  EXPECT_EQ(made.entities, (std::vector<std::size_t>{0, 1}));
  EXPECT_THAT(made.said, testing::ElementsAre(
                             "It is shown, with the value ByLayer.",
                             "It cannot be edited on 2 of 2 entities, because DXF R12 cannot store this "
                             "property; DXF 2000 and later can (2F, 30)."));
  EXPECT_TRUE(made.advice.empty());
}

}  // namespace
}  // namespace velt::tool
