#include "palette/selection/DynamicNodes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>
#include <vector>

using namespace velt::palette;
using testing::ElementsAre;

namespace {

// Nodes are told apart by addresses alone.
struct Place {
  IUnknown* at() { return reinterpret_cast<IUnknown*>(&bytes); }
  long bytes = 0;
};

class DynamicNodes : public testing::Test {
 protected:
  PROPINFO rowWith(const std::vector<std::pair<Place*, Place*>>& nodes) {
    PROPINFO row;
    row.dispId = dynamicPropertyDispId;
    for (const auto& [entity, property] : nodes)
      row.dynSources.append({entity->at(), property->at()});
    return row;
  }
  static std::vector<IUnknown*> propertiesOf(const PROPINFO& row) {
    std::vector<IUnknown*> properties;
    for (const DispatchDynPropSourceNode& node : row.dynSources)
      properties.push_back(node.pDynamicProperty);
    return properties;
  }

  Place one_, two_, three_, before_, own_, mine_;
};

TEST_F(DynamicNodes, OfEachEntityTheLastOneStays) {
  const PROPINFO row =
      rowWith({{&one_, &own_}, {&two_, &before_}, {&two_, &own_}, {&three_, &before_}, {&three_, &mine_}});
  EXPECT_THAT(propertiesOf(withOneNodePerEntity(row)), ElementsAre(own_.at(), own_.at(), mine_.at()));
  EXPECT_EQ(row.dynSources.length(), 5U) << "the row itself is not changed";
}

TEST_F(DynamicNodes, OneNodePerEntityStaysAsItIs) {
  EXPECT_THAT(propertiesOf(withOneNodePerEntity(rowWith({{&one_, &own_}, {&two_, &own_}}))),
              ElementsAre(own_.at(), own_.at()));
  EXPECT_TRUE(withOneNodePerEntity(rowWith({})).dynSources.isEmpty());
}

TEST_F(DynamicNodes, RowsThatAreNotDynamicStayAsTheyAre) {
  PROPINFO row = rowWith({{&two_, &before_}, {&two_, &own_}});
  row.dispId = 7;
  EXPECT_EQ(withOneNodePerEntity(row).dynSources.length(), 2U);
}

}  // namespace
