#include "embedded/automation/model/Access.h"

#include <gtest/gtest.h>

#include <numbers>

#include "embedded/automation/geometry/Angle.h"
#include "embedded/automation/model/Refusal.h"
#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;

// The first entity of the drawing that these pairs make.
class AccessTest : public ::testing::Test {
 protected:
  Subject subjectOf(Pairs pairs) {
    drawing = Sample().entity("TOY", pairs).open();
    const VkDbObjectId id = drawing->entities()[0];
    return Subject(*database::resolve(id), id, toyClass);
  }
  template <class T>
  T get(const Access& access, Pairs pairs) {
    return std::get<T>(access.get(subjectOf(pairs), toyRow(access)));
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(AccessTest, ARealIsReadFromItsSubclass) {
  const Access access = storedReal(40, "AcDbToy", 7);
  EXPECT_EQ(2.5, get<double>(access, {{100, "AcDbEntity"}, {40, "1"}, {100, "AcDbToy"}, {40, "2.5"}}));
  EXPECT_EQ(7, get<double>(access, {{100, "AcDbEntity"}, {40, "1"}, {100, "AcDbToy"}}));
  EXPECT_EQ(7, get<double>(access, {{100, "AcDbToy"}, {40, "many"}})) << "not a number";
  EXPECT_EQ(1, get<double>(access, {{40, "1"}})) << "old drawings have no subclasses";
}

TEST_F(AccessTest, DegreesBecomeRadians) {
  EXPECT_NEAR(pi / 6, get<double>(storedDegrees(50, "*"), {{50, "30"}}), 1e-15);
  EXPECT_NEAR(-pi / 6, get<double>(storedDegrees(50, "*"), {{50, "-30"}}), 1e-15);
  EXPECT_NEAR(pi, get<double>(storedDegrees(50, "*", 180), {}), 1e-15);
}

TEST_F(AccessTest, DirectionsLieWithinAFullTurn) {
  EXPECT_NEAR(11 * pi / 6, get<double>(storedDirection(50, "*"), {{50, "-30"}}), 1e-15);
  EXPECT_EQ(0, get<double>(storedDirection(50, "*"), {{50, "360"}}));
}

TEST_F(AccessTest, IntegersThatAreTooLargeAreRefused) {
  EXPECT_EQ(-5, get<std::int32_t>(storedInteger(70, "*"), {{70, "-5"}}));
  EXPECT_EQ(3, get<std::int32_t>(storedInteger(70, "*", 3), {}));
  EXPECT_THROW(get<std::int32_t>(storedInteger(70, "*"), {{70, "99999999999"}}), Refusal);
}

TEST_F(AccessTest, ABitIsOneOfManyInANumber) {
  EXPECT_TRUE(get<bool>(storedBit(70, "*", 128), {{70, "129"}}));
  EXPECT_FALSE(get<bool>(storedBit(70, "*", 2), {{70, "129"}}));
  EXPECT_FALSE(get<bool>(storedBit(70, "*", 2), {}));
}

TEST_F(AccessTest, TextsAreDecodedAndKeepTheirBlanks) {
  EXPECT_EQ(L" \u00E4 ", get<std::wstring>(storedText(1, "*"), {{1, " \\U+00E4 "}}));
  EXPECT_EQ(L"", get<std::wstring>(storedText(1, "*"), {}));
}

TEST_F(AccessTest, AWorldPointIsTakenAsItIs) {
  EXPECT_EQ((Vector3{1, 2, 3}),
            get<Vector3>(worldPoint(10, "*"),
                         {{10, "1"}, {20, "2"}, {30, "3"}, {210, "0"}, {220, "0"}, {230, "-1"}}));
  EXPECT_EQ((Vector3{0, 0, 0}), get<Vector3>(worldPoint(10, "*"), {}));
}

TEST_F(AccessTest, APointOfThePlaneIsTurnedIntoTheWorld) {
  const auto point = get<Vector3>(objectPoint(10, "*"),
                                  {{10, "1"}, {20, "2"}, {30, "3"}, {210, "0"}, {220, "0"}, {230, "-1"}});
  EXPECT_EQ((Vector3{-1, 2, -3}), point);
}

TEST_F(AccessTest, PointsAreExpandedIntoTheirCoordinates) {
  const Access access = worldPoint(10, "*");
  const Subject subject = subjectOf({{10, "1"}, {20, "2"}, {30, "3"}});
  ASSERT_EQ(&pointElements, access.elements);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_EQ(static_cast<double>(i + 1), pointElements.get(subject, toyRow(access), i));
  }
  EXPECT_EQ(nullptr, pointElements.groups) << "always one";
}

TEST_F(AccessTest, ANormalIsOfLengthOneWhateverIsStored) {
  EXPECT_EQ((Vector3{0, 0, 1}), getNormal(subjectOf({})));
  EXPECT_EQ((Vector3{0, 0, -1}), getNormal(subjectOf({{210, "0"}, {220, "0"}, {230, "-4"}})));
  EXPECT_EQ((Vector3{0, 0, 1}), getNormal(subjectOf({{210, "0"}, {220, "0"}, {230, "0"}})));
}

// --- putting ---

class AccessPutTest : public AccessTest {
 protected:
  AccessPutTest() { toy = {}; }
  // The pairs after a put.
  std::string put(const Access& access, Pairs pairs, const Value& value) {
    const Subject subject = subjectOf(pairs);
    access.put(subject, toyRow(access), value);
    return pairsOf(*drawing);
  }
  HRESULT refusal(const Access& access, Pairs pairs, const Value& value) {
    return refusalOf([&] { put(access, pairs, value); });
  }
};

TEST_F(AccessPutTest, NumbersAreStoredInTheirUnit) {
  EXPECT_EQ("40=2.5", put(storedReal(40, "*"), {{40, "1"}}, 2.5));
  EXPECT_EQ("50=30.0", put(storedDegrees(50, "*"), {{50, "1"}}, pi / 6)) << "round degrees stay round";
  EXPECT_EQ("50=-30.0", put(storedDegrees(50, "*"), {{50, "1"}}, -pi / 6));
  EXPECT_EQ("50=330.0", put(storedDirection(50, "*"), {{50, "1"}}, -pi / 6));
  EXPECT_EQ("70=7", put(storedInteger(70, "*"), {{70, "1"}}, 7));
  EXPECT_EQ("1=\xE4 \\U+2264", put(storedText(1, "*"), {{1, "x"}}, std::wstring(L"\u00E4 \u2264")));
}

TEST_F(AccessPutTest, AnAngleThatIsNotRoundKeepsAllItsDigits) {
  const std::string written = put(storedDegrees(50, "*"), {{50, "1"}}, 1.0);
  EXPECT_EQ(1.0, get<double>(storedDegrees(50, "*"), {{50, written.substr(3)}}));
}

TEST_F(AccessPutTest, ABitLeavesTheOthers) {
  EXPECT_EQ("70=133", put(storedBit(70, "*", 4), {{70, "129"}}, true));
  EXPECT_EQ("70=128", put(storedBit(70, "*", 1), {{70, "129"}}, false));
  EXPECT_EQ("8=0 70=1", put(storedBit(70, "*", 1), {{8, "0"}}, true));
}

TEST_F(AccessPutTest, PointsAreStoredInTheirPlane) {
  EXPECT_EQ("10=4.0 20=5.0 30=6.0",
            put(worldPoint(10, "*"), {{10, "1"}, {20, "2"}, {30, "3"}}, Vector3{4, 5, 6}));
  EXPECT_EQ("10=-4.0 20=5.0 30=-6.0 210=0 220=0 230=-1",
            put(objectPoint(10, "*"), {{10, "1"}, {20, "2"}, {30, "3"}, {210, "0"}, {220, "0"}, {230, "-1"}},
                Vector3{4, 5, 6}));
}

TEST_F(AccessPutTest, ACoordinateIsChangedAlone) {
  const Access access = worldPoint(10, "*");
  const Subject subject = subjectOf({{10, "1"}, {20, "2.00"}, {30, "3"}});
  pointElements.put(subject, toyRow(access), 2, 7);
  EXPECT_EQ("10=1 20=2.00 30=7.0", pairsOf(*drawing));
}

TEST_F(AccessPutTest, TheValueThatIsThereChangesNothing) {
  EXPECT_EQ("40=1.50", put(storedReal(40, "*"), {{40, "1.50"}}, 1.5));
  EXPECT_EQ("50=40.139371880263",
            put(storedDegrees(50, "*"), {{50, "40.139371880263"}}, 40.139371880263 / 180 * pi));
  EXPECT_EQ("50=-30", put(storedDirection(50, "*"), {{50, "-30"}}, normalizedAngle(-pi / 6)));
  EXPECT_EQ("1=\\U+00E4", put(storedText(1, "*"), {{1, "\\U+00E4"}}, std::wstring(L"\u00E4")));
  EXPECT_EQ("8=0", put(storedReal(40, "*", 1), {{8, "0"}}, 1.0)) << "a missing value is its default";
}

TEST_F(AccessPutTest, LimitsAndTypesAreKept) {
  const Pairs pairs = {{40, "1"}};
  EXPECT_EQ(E_INVALIDARG, refusal(storedReal(40, "*").positive(), pairs, 0.0));
  EXPECT_EQ(E_INVALIDARG, refusal(storedReal(40, "*").notNegative(), pairs, -1.0));
  EXPECT_EQ(E_INVALIDARG, refusal(storedReal(40, "*").notZero(), pairs, 0.0));
  EXPECT_EQ(E_INVALIDARG, refusal(storedInteger(40, "*").positive(), pairs, 0));
  EXPECT_EQ(E_INVALIDARG, refusal(computed<getToyReal, putToyReal>().positive(), pairs, -1.0));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refusal(storedReal(40, "*"), pairs, 1));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refusal(worldPoint(10, "*"), pairs, std::vector<double>{1, 2}));
  EXPECT_EQ(DISP_E_TYPEMISMATCH, refusal(computed<getToyReal, putToyReal>(), pairs, 1));
  EXPECT_EQ(E_INVALIDARG, refusal(storedText(1, "*"), pairs, std::wstring(L"two\nlines")));
  EXPECT_EQ("40=1", pairsOf(*drawing));
}

TEST_F(AccessPutTest, AStoredValueCanHaveAPutOfItsClass) {
  const Access access = writtenBy<putToyReal>(storedReal(40, "*"));
  EXPECT_EQ("40=1", put(access, {{40, "1"}}, 2.5));
  EXPECT_EQ(std::vector<double>{2.5}, toy.put);
  EXPECT_EQ(AccessKind::Real, access.kind);
}

}  // namespace
}  // namespace velt::automation
