#include <gtest/gtest.h>

#include <numbers>

#include "tests/embedded/automation/Edits.h"

namespace velt::automation {
namespace {

using namespace test;
using std::numbers::pi;
using Numbers = std::vector<double>;

class MTextTest : public ::testing::Test {
 protected:
  Bound mtext(Pairs pairs) {
    drawing = Sample().version("AC1027").entity("MTEXT", pairs).open();
    return Bound(*drawing, 0);
  }

  std::unique_ptr<Drawing> drawing;
};

TEST_F(MTextTest, TellsWhatIsStored) {
  const Bound made = mtext({{100, "AcDbMText"},
                            {10, "1"},
                            {20, "2"},
                            {30, "3"},
                            {40, "2.5"},
                            {41, "80"},
                            {71, "5"},
                            {72, "3"},
                            {1, "{\\fArial;Text}"},
                            {7, "Notes"},
                            {73, "2"},
                            {44, "1.5"},
                            {90, "1"}});
  EXPECT_EQ(L"{\\fArial;Text}", made.text(L"TextString"));
  EXPECT_EQ(L"Notes", made.text(L"Style"));
  EXPECT_EQ(5, made.integer(L"Justify"));
  EXPECT_EQ(3, made.integer(L"Direction"));
  EXPECT_EQ(2.5, made.real(L"Height"));
  EXPECT_EQ(80, made.real(L"Width"));
  EXPECT_EQ(1.5, made.real(L"LineSpaceFactor"));
  EXPECT_NEAR(6.25, made.real(L"LineSpaceDistance"), 1e-14);
  EXPECT_EQ(2, made.integer(L"LineSpaceStyle"));
  EXPECT_TRUE(made.flag(L"BackgroundFill"));
  EXPECT_EQ((Numbers{1, 2, 3}), made.numbers(L"InsertionPoint"));
}

TEST_F(MTextTest, WhatIsNotStoredOrMakesNoSenseHasItsDefault) {
  const Bound made = mtext({{100, "AcDbMText"}, {71, "17"}, {72, "2"}, {90, "16"}});
  EXPECT_EQ(1, made.integer(L"Justify"));
  EXPECT_EQ(1, made.integer(L"Direction"));
  EXPECT_EQ(1, made.integer(L"LineSpaceStyle"));
  EXPECT_EQ(1, made.real(L"LineSpaceFactor"));
  EXPECT_EQ(L"Standard", made.text(L"Style"));
  EXPECT_FALSE(made.flag(L"BackgroundFill")) << "a frame alone hides nothing";
}

TEST_F(MTextTest, PiecesOfALongTextAreDecodedTogether) {
  // The character between the first two is cut in the middle of its two bytes.
  EXPECT_EQ(
      L"one \u00E4 two \u00F6",
      mtext({{100, "AcDbMText"}, {3, "one \xC3"}, {3, "\xA4 two \\U+0"}, {1, "0F6"}}).text(L"TextString"));
}

TEST_F(MTextTest, RotationIsAnAngleOrADirectionWhicheverComesLater) {
  EXPECT_NEAR(pi / 6, mtext({{100, "AcDbMText"}, {50, "30"}}).real(L"Rotation"), 1e-15);
  EXPECT_NEAR(pi / 2, mtext({{100, "AcDbMText"}, {11, "0"}, {21, "2"}, {31, "0"}}).real(L"Rotation"), 1e-15);
  EXPECT_NEAR(pi / 6,
              mtext({{100, "AcDbMText"}, {11, "0"}, {21, "2"}, {31, "0"}, {50, "30"}}).real(L"Rotation"),
              1e-15);
  EXPECT_NEAR(pi / 2,
              mtext({{100, "AcDbMText"}, {50, "30"}, {11, "0"}, {21, "2"}, {31, "0"}}).real(L"Rotation"),
              1e-15);
  EXPECT_EQ(0, mtext({{100, "AcDbMText"}}).real(L"Rotation"));
}

TEST_F(MTextTest, ADirectionIsMeasuredInThePlaneOfTheText) {
  EXPECT_NEAR(
      pi,
      mtext({{100, "AcDbMText"}, {210, "0"}, {220, "0"}, {230, "-1"}, {11, "1"}, {21, "0"}, {31, "0"}})
          .real(L"Rotation"),
      1e-15);
}

// --- putting ---

TEST_F(MTextTest, ALongWordingIsCutIntoPieces) {
  const Bound made =
      mtext({{100, "AcDbMText"}, {10, "1"}, {40, "2"}, {3, "old"}, {3, "er"}, {1, "text"}, {7, "Standard"}});
  const std::wstring wording = std::wstring(249, L'a') + L"\u00E4" + std::wstring(300, L'b');
  EXPECT_EQ(S_OK, made.put(L"TextString", wording).result);
  EXPECT_EQ(wording, made.text(L"TextString"));
  EXPECT_EQ("100=AcDbMText 10=1 40=2 3=" + std::string(249, 'a') + " 3=\xC3\xA4" + std::string(248, 'b')
                + " 1=" + std::string(52, 'b') + " 7=Standard",
            pairsOf(*drawing))
      << "a character is not cut in two";
  EXPECT_EQ(S_OK, made.put(L"TextString", std::wstring(L"short")).result);
  EXPECT_EQ("100=AcDbMText 10=1 40=2 1=short 7=Standard", pairsOf(*drawing));
}

TEST_F(MTextTest, LineEndsAndTabsBecomeTheirCodes) {
  const Bound made = mtext({{100, "AcDbMText"}, {40, "2"}, {71, "1"}, {7, "Standard"}});
  EXPECT_EQ(S_OK, made.put(L"TextString", std::wstring(L"one\r\ntwo\nthree\rfour\tfive")).result);
  EXPECT_EQ("100=AcDbMText 40=2 71=1 1=one\\Ptwo\\Pthree\\Pfour^Ifive 7=Standard", pairsOf(*drawing));
  EXPECT_EQ(E_INVALIDARG, made.put(L"TextString", std::wstring(L"bell\x07")).scode);
}

TEST_F(MTextTest, TheRotationIsPutAsItIsStored) {
  EXPECT_EQ(S_OK, mtext({{50, "10.0"}}).put(L"Rotation", number(pi / 6)).result);
  EXPECT_EQ("50=30.0", pairsOf(*drawing));
  EXPECT_EQ(S_OK, mtext({{11, "1.0"}, {21, "0.0"}, {31, "0.0"}}).put(L"Rotation", number(pi / 2)).result);
  EXPECT_EQ("11=0.0 21=1.0 31=0.0", pairsOf(*drawing));
  const Bound both = mtext({{50, "10.0"}, {11, "1.0"}, {21, "0.0"}, {31, "0.0"}});
  EXPECT_EQ(S_OK, both.put(L"Rotation", number(pi / 2)).result);
  EXPECT_EQ("50=90.0 11=0.0 21=1.0 31=0.0", pairsOf(*drawing)) << "both say the same";
  EXPECT_EQ(S_OK, mtext({{100, "AcDbMText"}, {40, "2.0"}}).put(L"Rotation", number(pi / 6)).result);
  EXPECT_EQ("100=AcDbMText 40=2.0 50=30.0", pairsOf(*drawing));
}

TEST_F(MTextTest, TheColumnsStayWhereTheTextIs) {
  const Bound made = mtext({{100, "AcDbMText"},
                            {10, "1.0"},
                            {20, "2.0"},
                            {30, "0.0"},
                            {41, "9.0"},
                            {11, "1.0"},
                            {21, "0.0"},
                            {31, "0.0"},
                            {101, "Embedded Object"},
                            {70, "1"},
                            {10, "1.0"},
                            {20, "0.0"},
                            {30, "0.0"},
                            {11, "1.0"},
                            {21, "2.0"},
                            {31, "0.0"},
                            {40, "9.0"}});
  EXPECT_EQ(S_OK, made.putElement(L"InsertionPoint", 1, 5));
  EXPECT_EQ(S_OK, made.put(L"Rotation", number(pi / 2)).result);
  EXPECT_EQ(
      "100=AcDbMText 10=1.0 20=5.0 30=0.0 41=9.0 11=0.0 21=1.0 31=0.0 "
      "101=Embedded Object 70=1 10=0.0 20=1.0 30=0.0 11=1.0 21=5.0 31=0.0 40=9.0",
      pairsOf(*drawing));
  EXPECT_EQ(E_FAIL, made.put(L"Width", number(3)).scode);
}

TEST_F(MTextTest, NumbersHaveTheirBounds) {
  const Bound made = mtext({{100, "AcDbMText"}, {40, "2.0"}});
  EXPECT_EQ(E_INVALIDARG, made.put(L"Height", number(0)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Width", number(-1)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"LineSpaceFactor", number(0.2)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"LineSpaceFactor", number(4.1)).scode);
  EXPECT_EQ(E_INVALIDARG, made.put(L"Justify", integer(10)).scode);
  EXPECT_EQ("100=AcDbMText 40=2.0", pairsOf(*drawing));
  EXPECT_EQ(S_OK, made.put(L"Width", number(0)).result) << "lines are not broken";
}

TEST_F(MTextTest, AFieldKeepsItsWording) {
  drawing = Sample()
                .entity("MTEXT", {{102, "{ACAD_XDICTIONARY"}, {360, "B"}, {102, "}"}, {40, "2.0"}, {1, "x"}})
                .object("DICTIONARY", {{5, "B"}, {3, "ACAD_FIELD"}, {360, "C"}})
                .object("DICTIONARY", {{5, "C"}})
                .open();
  const Bound made(*drawing, 0);
  EXPECT_EQ(E_FAIL, made.put(L"TextString", std::wstring(L"y")).scode);
  EXPECT_EQ(S_OK, made.put(L"Height", number(3)).result);
}

}  // namespace
}  // namespace velt::automation
