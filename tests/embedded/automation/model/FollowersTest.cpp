#include "embedded/automation/model/Followers.h"

#include <gtest/gtest.h>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;

class FollowersTest : public ::testing::Test {
 protected:
  HRESULT shapeOf(const Sample& sample) {
    drawing = sample.open();
    return refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 0)); });
  }
  static Sample watchedBy(const std::string& type, Pairs pairs) {
    Sample sample;
    sample.entity("LINE",
                  {{5, "A"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {330, "77"}, {102, "}"}, {10, "1.0"}});
    if (type == "DIMASSOC") return sample.object(type, pairs);
    return sample.entity(type, pairs);
  }
  static Sample with(const std::string& attached) {
    return Sample()
        .entity("TEXT", {{5, "A"}, {102, "{ACAD_XDICTIONARY"}, {360, "B"}, {102, "}"}, {1, "x"}})
        .object("DICTIONARY", {{5, "B"}, {3, attached}, {360, "C"}})
        .object("DICTIONARY", {{5, "C"}});
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(FollowersTest, AnEntityThatNobodyFollowsIsFree) {
  EXPECT_EQ(S_OK, shapeOf(Sample().entity("LINE", {{10, "1.0"}})));
  EXPECT_EQ(S_OK, shapeOf(watchedBy("GROUP", {{5, "B"}})));
  EXPECT_EQ(S_OK, shapeOf(watchedBy("HATCH", {{5, "B"}, {71, "0"}})))
      << "it has been made from the entity, no more";
  EXPECT_EQ(S_OK, shapeOf(watchedBy("LEADER", {{5, "C"}}))) << "one that is not there";
  EXPECT_EQ(S_OK, shapeOf(with("MINE")));
}

TEST_F(FollowersTest, AnEntityThatIsFollowedKeepsItsShape) {
  EXPECT_EQ(E_FAIL, shapeOf(watchedBy("HATCH", {{5, "B"}, {71, "1"}})));
  EXPECT_EQ(E_FAIL, shapeOf(watchedBy("LEADER", {{5, "B"}})));
  EXPECT_EQ(E_FAIL, shapeOf(watchedBy("DIMASSOC", {{5, "B"}})));
}

TEST_F(FollowersTest, AnAnnotationKeepsItsShape) {
  EXPECT_EQ(E_FAIL, shapeOf(with("AcDbContextDataManager")));
}

TEST_F(FollowersTest, AFieldMakesTheWording) {
  drawing = with("ACAD_FIELD").open();
  EXPECT_EQ(E_FAIL, refusalOf([&] { requireOwnWording(subjectOf(*drawing)); }));
  drawing = with("MINE").open();
  EXPECT_EQ(S_OK, refusalOf([&] { requireOwnWording(subjectOf(*drawing)); }));
}

TEST_F(FollowersTest, ADimensionIsNotFollowedByWhatMakesItFollow) {
  drawing = Sample()
                .entity("DIMENSION", {{5, "A"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {102, "}"}})
                .object("DIMASSOC", {{5, "B"}})
                .open();
  EXPECT_EQ(S_OK, refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 0)); }));
}

TEST_F(FollowersTest, AnAttributeOfSeveralLinesKeepsItsTextAndItsShape) {
  const auto result = [&](const std::string& type, Pairs pairs) {
    drawing = Sample()
                  .entity(type, pairs)
                  .object("DICTIONARY", {{5, "B"}, {3, "ACAD_MLATT"}, {360, "C"}})
                  .object("XRECORD", {{5, "C"}})
                  .open();
    const HRESULT shape = refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 0)); });
    EXPECT_EQ(shape, refusalOf([&] { requireOwnWording(subjectOf(*drawing)); }));
    return shape;
  };
  const Pairs attached = {{102, "{ACAD_XDICTIONARY"}, {360, "B"}, {102, "}"}, {1, "x"}};
  EXPECT_EQ(S_OK,
            result("ATTDEF", {{100, "AcDbText"}, {71, "2"}, {100, "AcDbAttributeDefinition"}, {71, "0"}}));
  EXPECT_EQ(S_OK, result("ATTDEF", {{1, "x"}, {71, "2"}}))
      << "in old drawings this tells that it is mirrored";
  EXPECT_EQ(E_FAIL, result("ATTDEF", {{100, "AcDbText"}, {100, "AcDbAttributeDefinition"}, {71, "4"}}));
  EXPECT_EQ(E_FAIL, result("ATTDEF", {{100, "AcDbText"}, {101, "Embedded Object"}}));
  EXPECT_EQ(E_FAIL, result("ATTDEF", attached));
  EXPECT_EQ(S_OK, result("TEXT", attached));
}

}  // namespace
}  // namespace velt::automation
