// The list of entities follows what is selected elsewhere.

#include <gtest/gtest.h>

#include <QTableView>
#include <algorithm>

#include "desktop/EntityModel.h"
#include "desktop/MainWindow.h"
#include "samples/FloorPlan.h"
#include "tests/desktop/Application.h"
#include "tests/support/Files.h"

namespace velt::desktop {
namespace {

std::vector<int> selectedRows(MainWindow& window) {
  std::vector<int> rows;
  for (const QModelIndex& index : window.findChild<QTableView*>("entities")->selectionModel()->selectedRows())
    rows.push_back(index.row());
  std::sort(rows.begin(), rows.end());
  return rows;
}

TEST(ListSelection, HoldsWhatIsSelectedHoweverItIsScattered) {
  const tests::TemporaryFolder folder;
  MainWindow window(std::make_unique<Session>(folder.write("plan.dxf", samples::sampleFloorPlan())));
  const auto& list = dynamic_cast<EntityModel&>(*window.findChild<QTableView*>("entities")->model());
  for (const std::vector<int>& rows :
       {std::vector<int>{0, 1, 2, 5, 7, 8, 20}, std::vector<int>{1, 2, 3, 9}, std::vector<int>{}}) {
    std::vector<VkDbObjectId> entities;
    // In any order.
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
      entities.push_back(list.entityAt(*row));
    window.select(entities);
    EXPECT_EQ(selectedRows(window), rows);
  }
}

}  // namespace
}  // namespace velt::desktop
