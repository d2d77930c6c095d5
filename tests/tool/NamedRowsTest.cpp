#include "tool/NamedRows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velt::tool {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using velt::palette::Row;

class NamedRows : public testing::Test {
 protected:
  void add(const wchar_t* name, const wchar_t* label) {
    PROPINFO record;
    record.name = name;
    record.displayName = label;
    records_.push_back(record);
  }
  std::vector<Row> rows() const {
    std::vector<Row> made;
    for (const PROPINFO& record : records_)
      made.emplace_back(record);
    return made;
  }
  // Their places in the list.
  std::vector<std::size_t> meant(std::string_view name) const {
    std::vector<std::size_t> places;
    for (const Row& row : rowsMeant(rows(), name)) {
      for (std::size_t i = 0; i < records_.size(); ++i) {
        if (&row.record() == &records_[i]) places.push_back(i);
      }
    }
    return places;
  }

 private:
  std::vector<PROPINFO> records_;
};

TEST_F(NamedRows, ANameMeansTheRowsOfThatLabelAndElseOfThatName) {
  add(L"ScaleFactor", L"Scale");
  add(L"Layer", L"Layer");
  EXPECT_THAT(meant("scale"), ElementsAre(0));
  EXPECT_THAT(meant("ScaleFactor"), ElementsAre(0));
  EXPECT_THAT(meant("Length"), IsEmpty());
}

TEST_F(NamedRows, OfSeveralPropertiesWithOneLabelTheFirstIsMeant) {
  add(L"EffectiveName", L"Name");
  add(L"EntityName", L"Name");
  EXPECT_THAT(meant("Name"), ElementsAre(0));
  EXPECT_THAT(meant("EntityName"), ElementsAre(1));
  EXPECT_THAT(meant("Name#2"), ElementsAre(1));
  EXPECT_THAT(namesToFind(rows()), ElementsAre("Name", "EntityName"));
}

TEST_F(NamedRows, AllElementsOfOnePropertyAreMeantTogether) {
  add(L"Vertex", L"Vertex X");
  add(L"Vertex", L"Vertex Y");
  add(L"Vertex", L"Vertex X");
  EXPECT_THAT(meant("Vertex X"), ElementsAre(0, 2));
  EXPECT_THAT(meant("Vertex X#2"), ElementsAre(2));
  EXPECT_THAT(meant("Vertex X#3"), IsEmpty());
  EXPECT_THAT(namesToFind(rows()), ElementsAre("Vertex X", "Vertex Y", "Vertex X"));
}

TEST_F(NamedRows, ANumberSignThatIsNoNumberBelongsToTheName) {
  EXPECT_EQ(withoutNumber("Part #"), std::pair(std::string("Part #"), std::size_t{0}));
  EXPECT_EQ(withoutNumber("Part#0"), std::pair(std::string("Part#0"), std::size_t{0}));
  EXPECT_EQ(withoutNumber("Part#12"), std::pair(std::string("Part"), std::size_t{12}));
}

TEST_F(NamedRows, OnlyWhatFollowsANumberSignIsANumber) {
  for (const char* const name : {"Part", "12", "#1", "#", "Part#1a", "Part#12 ", "Part#-1"})
    EXPECT_EQ(withoutNumber(name), std::pair(std::string(name), std::size_t{0})) << name;
  EXPECT_EQ(withoutNumber("Part#1"), std::pair(std::string("Part"), std::size_t{1}));
  EXPECT_EQ(withoutNumber("P#3"), std::pair(std::string("P"), std::size_t{3}));
  EXPECT_EQ(withoutNumber("Part#1#2"), std::pair(std::string("Part#1"), std::size_t{2}));
}

TEST_F(NamedRows, TheFirstOfSeveralHasTheNumberOne) {
  add(L"Vertex", L"Vertex X");
  add(L"Vertex", L"Vertex X");
  EXPECT_THAT(meant("Vertex X#1"), ElementsAre(0));
  EXPECT_THAT(meant("Vertex X#0"), IsEmpty());
  EXPECT_THAT(meant("Vertex Y#1"), IsEmpty());
}

}  // namespace
}  // namespace velt::tool
