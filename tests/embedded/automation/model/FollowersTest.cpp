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

class AssociativeHatch : public FollowersTest {
 protected:
  // A line and a circle that a hatch was made from; two edges, of which the first is a spline with fit points.
  std::unique_ptr<Drawing> open(const std::string& layer = "0") {
    return Sample()
        .layer("0")
        .layer("Locked", {{70, "4"}})
        .entity(
            "LINE",
            {{5, "A"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {330, "77"}, {102, "}"}, {8, "0"}, {10, "1.0"}})
        .entity("CIRCLE", {{5, "C"}, {102, "{ACAD_REACTORS"}, {330, "B"}, {102, "}"}, {8, "0"}, {40, "1.0"}})
        .entity("HATCH", {{5, "B"},
                          {8, layer},
                          {71, "1"},
                          {72, "4"},
                          {97, "1"},
                          {11, "0"},
                          {21, "0"},
                          {97, "2"},
                          {330, "A"},
                          {330, "C"},
                          {75, "0"},
                          {97, "1"},
                          {330, "A"},
                          {76, "1"}})
        .open();
  }
};

TEST_F(AssociativeHatch, NoLongerFollowsWhatItWasMadeFromAndNothingSaysSo) {
  drawing = open();
  breakAssociation(*drawing, recordOf(*drawing, 2));
  EXPECT_EQ("5=B 8=0 71=0 72=4 97=1 11=0 21=0 97=0 75=0 97=0 76=1", pairsOf(*drawing, recordOf(*drawing, 2)));
  EXPECT_EQ("5=A 102={ACAD_REACTORS 330=77 102=} 8=0 10=1.0", pairsOf(*drawing, recordOf(*drawing, 0)));
  EXPECT_EQ("5=C 8=0 40=1.0", pairsOf(*drawing, recordOf(*drawing, 1)))
      << "a group without an entry says nothing";
  EXPECT_EQ(S_OK, refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 0)); }));
}

TEST_F(AssociativeHatch, KeepsWhatItFollowsUnlessAssociationsAreToBeBroken) {
  drawing = open();
  EXPECT_EQ(E_FAIL, refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 1)); }));
  drawing->setBreaksAssociations(true);
  EXPECT_EQ(S_OK, refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 1)); }));
  releaseHatches(*drawing, recordOf(*drawing, 1));
  EXPECT_EQ("5=C 8=0 40=1.0", pairsOf(*drawing, recordOf(*drawing, 1)));
}

TEST_F(AssociativeHatch, OnALockedLayerStaysWhatItIs) {
  drawing = open("Locked");
  drawing->setBreaksAssociations(true);
  EXPECT_EQ(E_FAIL, refusalOf([&] { requireFreeShape(*drawing, recordOf(*drawing, 1)); }));
}

TEST_F(AssociativeHatch, IsReleasedByAPutThatChangesTheShapeAndByNoOther) {
  drawing = open();
  drawing->setBreaksAssociations(true);
  const std::string before = drawing->document().bytes();
  const Bound circle(*drawing, 1);
  EXPECT_EQ(S_OK, circle.put(L"Radius", number(1)).result) << "it has this radius";
  EXPECT_EQ(DISP_E_EXCEPTION, circle.put(L"Radius", number(-1)).result);
  EXPECT_EQ(before, drawing->document().bytes());
  EXPECT_EQ(S_OK, circle.put(L"Color", integer(1)).result);
  EXPECT_TRUE(Bound(*drawing, 2).flag(L"Associative")) << "a color is no shape";
  EXPECT_EQ(S_OK, circle.put(L"Radius", number(2)).result);
  EXPECT_FALSE(Bound(*drawing, 2).flag(L"Associative"));
}

TEST_F(AssociativeHatch, IsReleasedByAPutOfAnElement) {
  drawing = open();
  drawing->setBreaksAssociations(true);
  EXPECT_EQ(S_OK, Bound(*drawing, 0).putElement(L"StartPoint", 0, 5));
  EXPECT_FALSE(Bound(*drawing, 2).flag(L"Associative"));
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
