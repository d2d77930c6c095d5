#include "embedded/database/RecordShapes.h"

#include <gtest/gtest.h>

#include <set>

#include "embedded/database/Drawing.h"
#include "embedded/database/Lens.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ReplacedAllocation.h"
#include "tests/support/WholeDrawings.h"

namespace velt::database {
namespace {

using RecordPairs = std::vector<std::pair<int, std::string>>;

std::unique_ptr<Drawing> drawingOfLines(const std::vector<RecordPairs>& entities) {
  std::string text = "0\nSECTION\n2\nENTITIES\n";
  for (const RecordPairs& pairs : entities) {
    text += "0\nLINE\n";
    for (const auto& [code, value] : pairs)
      text += std::to_string(code) + "\n" + value + "\n";
  }
  return Drawing::parse(text + "0\nENDSEC\n0\nEOF\n", "shapes.dxf");
}

std::set<std::string> subclassesOf(const dxf::RecordView& view) {
  std::set<std::string> names{"", "AcDbEntity", "AcDbNothing", std::string(dxf::anySubclass)};
  for (std::size_t pair = 0; pair < view.size(); ++pair) {
    if (view.code(pair) == 100) names.emplace(dxf::trimmed(view.value(pair)));
  }
  return names;
}

void expectTheSame(const std::optional<dxf::PointPairs>& one, const std::optional<dxf::PointPairs>& other) {
  ASSERT_EQ(one.has_value(), other.has_value());
  if (!one) return;
  EXPECT_EQ(one->x, other->x);
  EXPECT_EQ(one->y, other->y);
  EXPECT_EQ(one->z, other->z);
}

// Every lookup with a code that the record has, and with some that it may lack.
std::optional<std::size_t> foundBy(RecordShapes& shapes, std::uint32_t record, const dxf::RecordView& view,
                                   int code, std::string_view subclass) {
  const std::size_t index = shapes.find(record, view, code, subclass);
  return index != RecordShapes::nowhere ? std::optional(index) : std::nullopt;
}

void expectEveryLookupToBeThatOfTheView(RecordShapes& shapes, const Drawing& drawing, std::uint32_t record) {
  const dxf::RecordView view = drawing.view(record);
  std::set<int> codes{0, 6, 8, 10, 11, 39, 62, 70, 330};
  for (std::size_t pair = 0; pair < view.size(); ++pair)
    codes.insert(view.code(pair));
  for (const std::string& subclass : subclassesOf(view)) {
    for (const int code : codes) {
      SCOPED_TRACE(std::to_string(record) + ": " + std::to_string(code) + " in " + subclass);
      EXPECT_EQ(view.find(code, subclass), foundBy(shapes, record, view, code, subclass));
      expectTheSame(view.pointPairs(code, subclass), shapes.pointPairs(record, view, code, subclass));
    }
  }
}

TEST(RecordShapes, FindWhatTheRecordsTell) {
  tests::forEachDrawing([](const tests::WholeDrawing& whole) {
    const auto drawing = Drawing::parse(whole.bytes, whole.name);
    const auto count = static_cast<std::uint32_t>(drawing->document().recordCount());
    RecordShapes shapes(count);
    // Of a large drawing some, twice: the second time from what was kept.
    const std::uint32_t step = 1 + count / 1500;
    for (int round = 0; round < 2; ++round) {
      for (std::uint32_t record = 0; record < count && !testing::Test::HasFailure(); record += step)
        expectEveryLookupToBeThatOfTheView(shapes, *drawing, record);
    }
  });
}

class RecordShapesOf : public testing::Test {
 protected:
  // Finds the pair in a drawing's entities one after the other.
  static std::vector<std::optional<std::size_t>> found(const std::vector<RecordPairs>& entities, int code,
                                                       std::string_view subclass) {
    const auto drawing = drawingOfLines(entities);
    std::vector<std::optional<std::size_t>> places;
    for (std::uint32_t record = 0; record < drawing->document().recordCount(); ++record) {
      if (drawing->document().type(record) == "LINE")
        places.push_back(foundBy(drawing->shapes(), record, drawing->view(record), code, subclass));
    }
    return places;
  }
};

TEST_F(RecordShapesOf, WithoutMemoryForAShapeTheRecordIsLookedThrough) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new cannot be failed here";
  const auto drawing =
      drawingOfLines({{{100, "AcDbEntity"}, {8, "0"}, {100, "A longer name than a text holds"}, {39, "1"}}});
  std::uint32_t record = 0;
  while (drawing->document().type(record) != "LINE")
    ++record;
  const dxf::RecordView view = drawing->view(record);
  const std::string_view subclass = "A longer name than a text holds";
  const auto there = view.find(39, subclass);
  ASSERT_TRUE(there);
  std::uint64_t failed = 0;
  for (bool isFailing = true; isFailing; failed += isFailing ? 1 : 0) {
    RecordShapes shapes(drawing->document().recordCount());
    std::optional<std::size_t> found, missing;
    {
      const auto spy = tests::AllocationSpy::failNth(failed + 1);
      found = foundBy(shapes, record, view, 39, subclass);
      isFailing = spy.counts().failures > 0;
      missing = foundBy(shapes, record, view, 40, subclass);
    }
    EXPECT_EQ(there, found) << failed;
    EXPECT_FALSE(missing) << failed;
    EXPECT_EQ(there, foundBy(shapes, record, view, 39, subclass)) << "with memory again";
  }
  EXPECT_GT(failed, 3U);
}

TEST_F(RecordShapesOf, RecordsThatDifferInAMarkerDiffer) {
  const RecordPairs one{{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbLine"}, {40, "1"}};
  const RecordPairs other{{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbRay"}, {40, "1"}};
  const auto places = found({one, other, one}, 40, "AcDbLine");
  ASSERT_EQ(3U, places.size());
  EXPECT_TRUE(places[0]);
  EXPECT_FALSE(places[1]);
  EXPECT_EQ(places[0], places[2]);
}

TEST_F(RecordShapesOf, RecordsThatDifferInAnApplicationGroupOrAnEmbeddedObjectDiffer) {
  const auto groups =
      found({{{102, "{A"}, {40, "1"}, {102, "}"}}, {{102, "A"}, {40, "1"}, {102, "}"}}}, 40, "");
  EXPECT_FALSE(groups[0]);
  EXPECT_TRUE(groups[1]);
  const auto objects = found({{{101, "Embedded Object"}, {40, "1"}}, {{101, "Other"}, {40, "1"}}}, 40, "");
  EXPECT_FALSE(objects[0]);
  EXPECT_TRUE(objects[1]);
}

TEST_F(RecordShapesOf, RecordsThatDifferInCodesOrLengthDiffer) {
  const auto places =
      found({{{40, "1"}, {70, "1"}}, {{70, "1"}, {40, "1"}}, {{70, "1"}}, {{40, "1"}}}, 40, "");
  ASSERT_EQ(4U, places.size());
  EXPECT_LT(places[0], places[1]);
  EXPECT_FALSE(places[2]);
  EXPECT_EQ(places[0], places[3]);
}

TEST_F(RecordShapesOf, AnEditedRecordIsLookedThrough) {
  const RecordPairs pairs{{100, "AcDbEntity"}, {8, "0"}, {100, "AcDbLine"}, {39, "1"}, {10, "1"}, {20, "2"}};
  const auto drawing = drawingOfLines({pairs, pairs});
  std::uint32_t record = 0;
  while (drawing->document().type(record) != "LINE")
    ++record;
  const auto thickness = [&] { return Lens(*drawing, record).real(39, "AcDbLine", 0.0); };
  const auto start = [&] { return Lens(*drawing, record).point(10, "AcDbLine"); };
  EXPECT_DOUBLE_EQ(1.0, thickness());
  const auto place = drawing->view(record).find(39, "AcDbLine");
  drawing->edit(record, [&](dxf::Document& document) { document.insert(record, *place, 40, "7"); });
  EXPECT_DOUBLE_EQ(1.0, thickness());
  EXPECT_EQ((Point{1, 2, 0}), start());
  drawing->edit(record, [&](dxf::Document& document) { document.revert(record); });
  EXPECT_DOUBLE_EQ(1.0, thickness());
  EXPECT_EQ((Point{1, 2, 0}), start());
}

TEST_F(RecordShapesOf, LongRecordsAndThoseOfMoreShapesThanAreKeptAreFoundToo) {
  std::vector<RecordPairs> entities;
  for (std::size_t length = 1; length <= RecordShapes::mostPairs + 3; ++length) {
    RecordPairs pairs(length, {70, "1"});
    pairs.emplace_back(40, "2");
    entities.push_back(pairs);
  }
  // Codes as digits of a number, so that no two of them look alike.
  for (std::size_t number = 0; number < RecordShapes::mostShapes + 10; ++number) {
    RecordPairs pairs;
    for (std::size_t rest = number; rest > 0; rest /= 10)
      pairs.emplace_back(static_cast<int>(70 + rest % 10), "1");
    pairs.emplace_back(40, "2");
    entities.push_back(pairs);
  }
  for (int round = 0; round < 2; ++round) {
    const auto places = found(entities, 40, "");
    ASSERT_EQ(entities.size(), places.size());
    for (std::size_t i = 0; i < places.size(); ++i) {
      ASSERT_TRUE(places[i]) << i;
      // After the type and the handle that every entity has here.
      EXPECT_EQ(*places[0] + entities[i].size() - entities[0].size(), *places[i]);
    }
  }
}

}  // namespace
}  // namespace velt::database
