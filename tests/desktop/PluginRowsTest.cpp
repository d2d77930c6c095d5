// Rows of plug-ins and of what else property sources know, in the window: shown and edited like any other.

#include <gtest/gtest.h>

#include <QAction>
#include <QComboBox>

#include "tests/desktop/WindowFixture.h"
#include "tests/plugins/Palette.h"

namespace velt::desktop {
namespace {

class WindowWithPlugin : public Window {
 protected:
  void TearDown() override {
    // Rows end before the plug-in that they come from.
    window_.reset();
    plugin_.reset();
    EXPECT_TRUE(told_.empty());
  }

  // Several entities have no rows of plug-ins.
  void selectOneCircle() {
    selectClass("Circle");
    window_->select({session().selected().front()});
  }

  std::vector<std::string> told_;
  std::unique_ptr<sources::LoadedPlugins> plugin_ = tests::loadSample("material", told_);
};

TEST_F(WindowWithPlugin, ShowsItsRowsAmongTheOthersAndEditsThem) {
  selectOneCircle();
  ASSERT_NE(shown("Material"), "Oak");
  EXPECT_EQ(valueOf("Material").parent().data().toString(), "Material");
  rows().setCurrentIndex(valueOf("Material"));
  rows().edit(valueOf("Material"));
  auto* const list = rows().viewport()->findChild<QComboBox*>();
  ASSERT_NE(list, nullptr) << "its choices are offered";
  const int oak = list->findText("Oak");
  ASSERT_GE(oak, 0);
  choose(*list, oak);
  EXPECT_EQ(shown("Material"), "Oak");
  EXPECT_FALSE(session().canUndo()) << "it is not kept in the drawing";
}

TEST_F(WindowWithPlugin, ADynamicRowThatTheDrawingKeepsIsUndone) {
  const std::string before = session().drawing().document().bytes();
  const auto attribute = [this] {
    for (const palette::Row& row : session().rows()) {
      if (row.isDynamic() && row.isEditable() && row.label() != "Material")
        return QString::fromStdString(row.label());
    }
    return QString();
  };
  selectClass("BlockReference");
  const std::vector<VkDbObjectId> references(session().selected().begin(), session().selected().end());
  for (std::size_t i = 0; i < references.size() && attribute().isEmpty(); ++i)
    window_->select({references[i]});
  const QString label = attribute();
  ASSERT_NE(label, "") << "none has an attribute";
  type(label, "X9");
  EXPECT_EQ(shown(label), "X9");
  part<QAction>("undo").trigger();
  EXPECT_NE(shown(label), "X9");
  EXPECT_TRUE(session().drawing().document().bytes() == before);
}

TEST_F(WindowWithPlugin, SaysWhyARowOfItCannotBeEdited) {
  selectOneCircle();
  EXPECT_FALSE(rows().model()->flags(valueOf("Price")) & Qt::ItemIsEditable);
}

}  // namespace
}  // namespace velt::desktop
