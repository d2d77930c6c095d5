#include "embedded/database/Drawing.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <set>

#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "embedded/database/ObjectTable.h"
#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using test::entityRecord;
using test::Pairs;
using test::record;
using test::Sample;

std::vector<std::string> typesOf(const Drawing& drawing) {
  std::vector<std::string> types;
  for (const VkDbObjectId id : drawing.entities())
    types.emplace_back(drawing.document().type(resolve(id)->record));
  return types;
}

std::vector<std::wstring> namesOf(const Table& table) {
  std::vector<std::wstring> names;
  for (const TableEntry& entry : table.entries())
    names.push_back(entry.name);
  return names;
}

using Types = std::vector<std::string>;
using Names = std::vector<std::wstring>;

// --- entities ---

TEST(Drawing, EntitiesAreThoseOfBlocksAndOfTheSectionOfEntitiesInFileOrder) {
  const auto drawing = Sample()
                           .layer("0")
                           .block({{2, "DOOR"}}, record("ARC", {}) + record("LINE", {}))
                           .entity("CIRCLE")
                           .entity("SPACESHIP")
                           .object("XRECORD", {})
                           .open();
  EXPECT_EQ((Types{"ARC", "LINE", "CIRCLE", "SPACESHIP"}), typesOf(*drawing));
}

TEST(Drawing, ASequenceIsOneEntity) {
  const auto drawing = Sample()
                           .entity("POLYLINE", {{66, "1"}})
                           .entity("VERTEX", {{5, "1"}})
                           .entity("VERTEX", {{5, "2"}})
                           .entity("SEQEND")
                           .entity("INSERT", {{66, "1"}, {2, "DOOR"}})
                           .entity("ATTRIB", {{5, "3"}})
                           .entity("SEQEND")
                           .entity("INSERT", {{2, "DOOR"}})
                           .entity("LINE")
                           .open();
  EXPECT_EQ((Types{"POLYLINE", "INSERT", "INSERT", "LINE"}), typesOf(*drawing));

  const RecordRange vertices = drawing->members(entityRecord(*drawing, 0));
  EXPECT_EQ(2U, vertices.count);
  EXPECT_EQ(1U, drawing->handleOf(vertices.first));
  EXPECT_EQ(2U, drawing->handleOf(vertices.first + 1));
  EXPECT_EQ(1U, drawing->members(entityRecord(*drawing, 1)).count);
  EXPECT_EQ(0U, drawing->members(entityRecord(*drawing, 2)).count);
  EXPECT_EQ(0U, drawing->members(entityRecord(*drawing, 3)).count);
}

TEST(Drawing, MembersCanBeOpenedAndAreNotListed) {
  const auto drawing = Sample()
                           .entity("INSERT", {{66, "1"}})
                           .entity("ATTRIB", {{5, "3"}, {8, "0"}})
                           .entity("SEQEND")
                           .layer("0")
                           .open();
  const VkDbObjectPointer<VkDbEntity> attribute(drawing->objectByHandle(3), VkDb::kForRead);
  ASSERT_EQ(Velt::eOk, attribute.openStatus());
  EXPECT_EQ(drawing->layers().entries()[0].id, attribute->layerId());
  EXPECT_TRUE(drawing->entityByHandle(3).isNull());
}

TEST(Drawing, ASequenceWithoutAnEndLosesNothing) {
  const auto drawing = Sample().entity("POLYLINE").entity("VERTEX").entity("LINE").entity("VERTEX").open();
  EXPECT_EQ((Types{"POLYLINE", "LINE"}), typesOf(*drawing));
  EXPECT_EQ(1U, drawing->members(entityRecord(*drawing)).count);
}

// --- tables ---

TEST(Drawing, TablesListTheirNamesInFileOrder) {
  const auto drawing = Sample()
                           .layer("0")
                           .layer("Walls")
                           .tableRecord("STYLE", {{2, "Standard"}})
                           .tableRecord("STYLE", {{2, ""}, {70, "1"}, {3, "shapes.shx"}})
                           .tableRecord("STYLE", {{2, "SHAPES"}, {70, "65"}})
                           .tableRecord("DIMSTYLE", {{105, "27"}, {2, "ISO-25"}})
                           .tableRecord("APPID", {{2, "ACAD"}})
                           .open();
  EXPECT_EQ((Names{L"0", L"Walls"}), namesOf(drawing->layers()));
  EXPECT_EQ((Names{L"Standard"}), namesOf(drawing->textStyles()));
  EXPECT_EQ((Names{L"ISO-25"}), namesOf(drawing->dimStyles()));
  EXPECT_EQ((Names{L"ACAD"}), namesOf(drawing->appIds()));
  EXPECT_EQ(0x27U, drawing->handleOf(drawing->dimStyles().entries()[0].record));
}

TEST(Drawing, LineTypesThatEveryDrawingHasAreImpliedWhereTheyAreMissing) {
  const auto none = Sample().entity("LINE").open();
  EXPECT_EQ((Names{L"ByBlock", L"ByLayer", L"Continuous"}), namesOf(none->linetypes()));
  EXPECT_TRUE(none->linetypes().find(L"bylayer")->isImplied());

  const auto some =
      Sample().tableRecord("LTYPE", {{2, "CONTINUOUS"}}).tableRecord("LTYPE", {{2, "DASHED"}}).open();
  EXPECT_EQ((Names{L"ByBlock", L"ByLayer", L"CONTINUOUS", L"DASHED"}), namesOf(some->linetypes()));

  const auto all = Sample()
                       .tableRecord("LTYPE", {{2, "BYBLOCK"}})
                       .tableRecord("LTYPE", {{2, "ByLayer"}})
                       .tableRecord("LTYPE", {{2, "Continuous"}})
                       .open();
  EXPECT_EQ((Names{L"BYBLOCK", L"ByLayer", L"Continuous"}), namesOf(all->linetypes()));
  EXPECT_FALSE(all->linetypes().find(L"ByBlock")->isImplied());
}

TEST(Drawing, LayersThatEntitiesNameAreThereAfterThoseOfTheTableOnceEach) {
  const auto drawing = Sample()
                           .layer("Walls")
                           .block({{2, "DOOR"}}, record("ARC", {{8, "Frames"}}))
                           .entity("LINE", {{8, "WALLS"}})
                           .entity("LINE", {{8, "Doors"}})
                           .entity("LINE", {{8, "DOORS"}})
                           .entity("LINE")
                           .open();
  EXPECT_EQ((Names{L"Walls", L"Frames", L"Doors", L"0"}), namesOf(drawing->layers()));
  EXPECT_FALSE(drawing->layers().find(L"Walls")->isImplied());
  EXPECT_TRUE(drawing->layers().find(L"doors")->isImplied());
  EXPECT_FALSE(drawing->layers().find(L"doors")->id.isNull());
}

TEST(Drawing, WhatWasRecordedIsUndoneAndDoneAgain) {
  const auto drawing = Sample()
                           .layer("Walls")
                           .entity("LINE", {{5, "1A"}, {100, "AcDbEntity"}, {8, "Walls"}})
                           .entity("LINE", {{5, "1B"}, {100, "AcDbEntity"}, {8, "Walls"}})
                           .open();
  const std::string before = drawing->document().bytes();
  const std::uint32_t first = entityRecord(*drawing, 0);
  const std::uint32_t layer = drawing->layers().entries()[0].record;
  const auto write = [&](std::uint32_t edited, int code, const char* subclass, const char* value) {
    drawing->edit(edited,
                  [&](dxf::Document& document) { ASSERT_TRUE(document.set(edited, code, subclass, value)); });
  };

  Changes changes;
  drawing->record(changes, [&] {
    write(first, 62, "AcDbEntity", "1");
    write(first, 62, "AcDbEntity", "2");
    write(layer, 2, "", "Partitions");
    // What fails on the way is put back, and is no change.
    EXPECT_THROW(drawing->atomically([&] {
      write(entityRecord(*drawing, 1), 62, "AcDbEntity", "3");
      throw std::runtime_error("refused");
    }),
                 std::runtime_error);
  });
  const std::string after = drawing->document().bytes();
  EXPECT_NE(after, before);
  EXPECT_EQ(changes.records().size(), 3U);
  EXPECT_EQ(changes.records().front(), first);

  Changes undone = drawing->undo(std::move(changes));
  EXPECT_EQ(drawing->document().bytes(), before);
  EXPECT_NE(drawing->layers().find(L"Walls"), nullptr);
  EXPECT_FALSE(drawing->document().isEdited());

  Changes again = drawing->undo(std::move(undone));
  EXPECT_EQ(drawing->document().bytes(), after);
  EXPECT_NE(drawing->layers().find(L"Partitions"), nullptr);

  static_cast<void>(drawing->undo(std::move(again)));
  EXPECT_EQ(drawing->document().bytes(), before);
  write(first, 62, "AcDbEntity", "5");
}

TEST(Drawing, WhatWasEditedBeforeAnExceptionIsRecorded) {
  const auto drawing = Sample().entity("LINE", {{5, "1A"}, {100, "AcDbEntity"}, {8, "0"}}).open();
  const std::string before = drawing->document().bytes();
  const std::uint32_t line = entityRecord(*drawing);
  Changes changes;
  EXPECT_THROW(drawing->record(changes,
                               [&] {
                                 drawing->edit(line, [&](dxf::Document& document) {
                                   ASSERT_TRUE(document.set(line, 62, "AcDbEntity", "1"));
                                 });
                                 throw std::runtime_error("cancelled");
                               }),
               std::runtime_error);
  drawing->edit(0, [](dxf::Document& document) { document.insert(0, 1, 999, "later"); });
  EXPECT_EQ(changes.records(), std::vector<std::uint32_t>{line}) << "what comes after it is not recorded";
  drawing->edit(0, [](dxf::Document& document) { document.erase(0, 1); });
  EXPECT_TRUE(drawing->undo(std::move(changes)).records() == std::vector<std::uint32_t>{line});
  EXPECT_EQ(drawing->document().bytes(), before);
}

TEST(Drawing, ALayerThatWasOnlyNamedGivesWayToARecordOfThatName) {
  const auto drawing = Sample().layer("Walls").entity("LINE", {{8, "Doors"}}).open();
  const std::uint32_t walls = drawing->layers().find(L"Walls")->record;
  drawing->edit(walls, [&](dxf::Document& document) { document.set(walls, 2, dxf::anySubclass, "doors"); });
  EXPECT_EQ(Names{L"doors"}, namesOf(drawing->layers()));
}

TEST(Drawing, NothingIsWrittenForALayerThatIsOnlyNamed) {
  const Sample sample = Sample().entity("LINE", {{8, "Doors"}});
  EXPECT_EQ(sample.bytes(), sample.open()->document().bytes());
}

TEST(Drawing, ADrawingWithoutTablesHasEmptyOnesButForTheLayersOfItsEntities) {
  const auto drawing = Sample().entity("LINE", {{8, "Walls"}}).open();
  EXPECT_EQ((Names{L"Walls"}), namesOf(drawing->layers()));
  EXPECT_TRUE(Sample().open()->layers().entries().empty());
  EXPECT_TRUE(drawing->blocks().entries().empty());
  EXPECT_TRUE(drawing->layouts().empty());
}

TEST(Drawing, ABlockIsItsRecordAndItsDefinition) {
  const auto drawing = Sample()
                           .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "Door"}})
                           .tableRecord("BLOCK_RECORD", {{5, "11"}, {2, "Chair"}})
                           .block({{5, "20"}, {330, "11"}, {2, "CHAIR"}})
                           .block({{5, "21"}, {2, "DOOR"}})
                           .open();
  EXPECT_EQ((Names{L"Door", L"Chair"}), namesOf(drawing->blocks()));
  const TableEntry& door = *drawing->blocks().find(L"door");
  EXPECT_EQ(0x10U, drawing->handleOf(door.record));
  EXPECT_EQ(0x21U, drawing->handleOf(door.definition));
  EXPECT_EQ(drawing->objectByHandle(0x10), door.id);
}

TEST(Drawing, OfTwoBlocksWithOneNameEachKeepsItsOwnDefinition) {
  const auto drawing = Sample()
                           .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "Door"}})
                           .tableRecord("BLOCK_RECORD", {{5, "11"}, {2, "Door"}})
                           .block({{5, "20"}, {330, "11"}, {2, "Door"}})
                           .block({{5, "21"}, {330, "10"}, {2, "Door"}})
                           .open();
  EXPECT_EQ(0x21U, drawing->handleOf(drawing->blocks().entries()[0].definition));
  EXPECT_EQ(0x20U, drawing->handleOf(drawing->blocks().entries()[1].definition));
}

TEST(Drawing, ABlockWithoutARecordStandsForItself) {
  const auto drawing = Sample()
                           .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "Door"}})
                           .block({{5, "20"}, {330, "10"}, {2, "Chair"}})
                           .block({{5, "21"}, {2, "Door"}})
                           .block({{5, "22"}, {2, "Door"}})
                           .open();
  EXPECT_EQ((Names{L"Door", L"Chair", L"Door"}), namesOf(drawing->blocks()));
  EXPECT_EQ(0x21U, drawing->handleOf(drawing->blocks().entries()[0].definition));
  EXPECT_EQ(drawing->objectByHandle(0x20), drawing->blocks().entries()[1].id);
  EXPECT_EQ(drawing->objectByHandle(0x22), drawing->blocks().entries()[2].id);
}

TEST(Drawing, LayoutsNameTheBlocksOfTheirEntities) {
  const auto drawing = Sample()
                           .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "*Model_Space"}})
                           .object("LAYOUT", {{100, "AcDbLayout"}, {1, "Model"}, {330, "10"}})
                           .object("LAYOUT", {{100, "AcDbLayout"}, {1, "Lost"}, {330, "99"}})
                           .object("LAYOUT", {{100, "AcDbLayout"}, {1, "Again"}, {330, "10"}})
                           .open();
  ASSERT_EQ(3U, drawing->layouts().size());
  EXPECT_EQ(L"Lost", drawing->layouts()[1].name);
  EXPECT_EQ(dxf::none, drawing->layouts()[1].block);
  EXPECT_EQ(L"Model", drawing->layoutOf(drawing->blocks().entries()[0])->name);
}

TEST(Drawing, ATableFollowsWhenARecordIsRenamed) {
  // given
  const auto drawing = Sample().layer("Old").entity("LINE", {{8, "New"}}).open();
  const VkDbObjectId id = drawing->layers().find(L"Old")->id;
  const std::uint32_t layer = drawing->layers().find(L"Old")->record;
  // when
  drawing->edit(layer, [&](dxf::Document& document) { document.set(layer, 2, dxf::anySubclass, "New"); });
  // then
  EXPECT_EQ(nullptr, drawing->layers().find(L"Old"));
  EXPECT_EQ(id, drawing->layers().find(L"New")->id);
  EXPECT_EQ(id, Entity(*drawing, entityRecord(*drawing)).layer()->id);
}

// --- handles ---

TEST(Drawing, ARecordIsFoundByItsHandle) {
  const auto drawing = Sample().entity("LINE", {{5, "1a"}}).object("XRECORD", {{5, " 1B"}}).open();
  EXPECT_EQ(drawing->entities()[0], drawing->entityByHandle(0x1A));
  EXPECT_EQ(drawing->entities()[0], drawing->objectByHandle(0x1A));
  EXPECT_FALSE(drawing->objectByHandle(0x1B).isNull());
  EXPECT_TRUE(drawing->entityByHandle(0x1B).isNull());
  EXPECT_TRUE(drawing->objectByHandle(0x1C).isNull());
  EXPECT_TRUE(drawing->objectByHandle(0).isNull());
}

TEST(Drawing, OfTwoRecordsWithOneHandleTheFirstIsFoundAndBothStay) {
  const auto drawing = Sample().entity("LINE", {{5, "1A"}}).entity("ARC", {{5, "1A"}}).open();
  EXPECT_EQ(drawing->entities()[0], drawing->entityByHandle(0x1A));
  EXPECT_EQ((Types{"LINE", "ARC"}), typesOf(*drawing));
  EXPECT_EQ(0x1AU, Entity(*drawing, entityRecord(*drawing, 1)).handle());
}

TEST(Drawing, WhatHasNoHandleGetsOneThatNobodyElseHas) {
  // given
  const Sample sample = Sample()
                            .layer("0")
                            .layer("Walls", {{5, "2"}})
                            .block({{2, "DOOR"}}, record("LINE", {}))
                            .entity("LINE", {{5, "1F"}})
                            .entity("LINE", {{5, "not a handle"}})
                            .entity("LINE", {{5, "0"}})
                            .entity("LINE", {{5, "FFFFFFFFFFFFFFFFF"}})
                            .entity("INSERT", {{66, "1"}})
                            .entity("ATTRIB")
                            .entity("SEQEND");
  const auto drawing = sample.open();
  // then
  std::set<std::uint64_t> handles;
  for (const VkDbObjectId id : drawing->entities()) {
    const std::uint64_t handle = drawing->handleOf(resolve(id)->record);
    EXPECT_NE(0U, handle);
    EXPECT_TRUE(handles.insert(handle).second);
    EXPECT_EQ(id, drawing->entityByHandle(handle));
  }
  EXPECT_EQ(6U, handles.size());
  EXPECT_NE(0U, drawing->handleOf(drawing->layers().entries()[0].record));
  EXPECT_NE(0U, drawing->handleOf(drawing->blocks().entries()[0].record));
  const RecordRange attributes = drawing->members(entityRecord(*drawing, 5));
  EXPECT_NE(0U, drawing->handleOf(attributes.first));
  EXPECT_EQ(0U, drawing->handleOf(attributes.first + 1)) << "the end of a sequence";
  EXPECT_EQ(sample.bytes(), drawing->document().bytes()) << "never written";
}

TEST(Drawing, HugeHandlesAreHandlesLikeOthers) {
  const auto drawing =
      Sample().entity("LINE", {{5, "FFFFFFFFFFFFFFFF"}}).entity("LINE").entity("LINE").open();
  EXPECT_EQ(drawing->entities()[0], drawing->entityByHandle(0xFFFF'FFFF'FFFF'FFFF));
  const std::uint64_t second = drawing->handleOf(entityRecord(*drawing, 1));
  const std::uint64_t third = drawing->handleOf(entityRecord(*drawing, 2));
  EXPECT_NE(0U, second);
  EXPECT_NE(0U, third);
  EXPECT_NE(second, third);
}

TEST(Drawing, AssignedHandlesStepOverThoseThatAreTaken) {
  const auto drawing = Sample()
                           .entity("LINE", {{5, "FFFFFFFFFFFF"}})
                           .entity("LINE")
                           .entity("LINE", {{5, "1000000000000"}})
                           .open();
  EXPECT_EQ(0x1000000000001U, drawing->handleOf(entityRecord(*drawing, 1)));
}

// --- objects ---

TEST(Drawing, ARecordHasOneIdForEver) {
  const auto drawing = Sample().object("XRECORD", {{5, "1B"}}).open();
  EXPECT_EQ(drawing->objectByHandle(0x1B), drawing->idOf(1));
}

TEST(Drawing, FramesAreNotObjects) {
  const auto drawing = Sample().version("AC1032").layer("0").entity("LINE").open();
  std::size_t objects = 0;
  for (std::uint32_t index = 0; index < drawing->document().recordCount(); ++index) {
    const std::string_view type = drawing->document().type(index);
    const bool isObject = !drawing->idOf(index).isNull();
    EXPECT_EQ(type == "TABLE" || type == "LAYER" || type == "LINE", isObject) << type;
    if (isObject) ++objects;
  }
  EXPECT_EQ(3U, objects);
}

TEST(Drawing, ADrawingGivesBackEveryObjectThatItMade) {
  const std::size_t before = ObjectTable::ofProcess().size();
  {
    const auto drawing = Sample().layer("0").entity("LINE").object("XRECORD", {}).open();
    EXPECT_EQ(before + 1, ObjectTable::ofProcess().size()) << "objects that nobody asked for are not made";
    EXPECT_EQ(1U, drawing->entities().size());
    EXPECT_EQ(before + 2, ObjectTable::ofProcess().size());
    EXPECT_EQ(drawing->entities().data(), drawing->entities().data()) << "they are made once";
  }
  EXPECT_EQ(before, ObjectTable::ofProcess().size());
}

TEST(Drawing, AnIdResolvesToItsDrawingAndRecordUntilItIsClosed) {
  const auto other = Sample().entity("ARC").open();
  auto drawing = Sample().entity("LINE").open();
  const VkDbObjectId id = drawing->entities()[0];
  ASSERT_TRUE(resolve(id));
  EXPECT_EQ(drawing.get(), resolve(id)->drawing);
  EXPECT_EQ("LINE", drawing->document().type(resolve(id)->record));

  drawing.reset();
  EXPECT_FALSE(resolve(id));
  EXPECT_FALSE(resolve(VkDbObjectId::kNull));
  EXPECT_TRUE(resolve(other->entities()[0]));
}

TEST(Drawing, AnErasedEntityStaysInTheListAndInTheDocument) {
  const Sample sample = Sample().entity("LINE").entity("ARC");
  const auto drawing = sample.open();
  drawing->setErased(entityRecord(*drawing), true);
  EXPECT_TRUE(drawing->isErased(entityRecord(*drawing)));
  EXPECT_FALSE(drawing->isErased(entityRecord(*drawing, 1)));
  EXPECT_EQ((Types{"LINE", "ARC"}), typesOf(*drawing));
  EXPECT_EQ(sample.bytes(), drawing->document().bytes());
}

TEST(Drawing, WhatIsNotAnObjectCannotBeErased) {
  const auto drawing = Sample().entity("LINE").open();
  drawing->setErased(0, true);
  EXPECT_FALSE(drawing->isErased(0));
}

// --- reading and editing ---

TEST(Drawing, ReadingChangesNothing) {
  // given
  const Sample sample = Sample()
                            .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "*Model_Space"}})
                            .layer("Walls", {{70, "4"}})
                            .block({{5, "20"}, {2, "DOOR"}}, record("LINE", {}))
                            .entity("INSERT", {{2, "DOOR"}, {66, "1"}})
                            .entity("ATTRIB")
                            .entity("SEQEND")
                            .object("LAYOUT", {{1, "Model"}, {330, "10"}});
  const auto drawing = sample.open();
  // when
  for (std::uint32_t index = 0; index < drawing->document().recordCount(); ++index) {
    const VkDbObjectPointer<VkDbObject> object(drawing->idOf(index), VkDb::kForRead);
    test::readEverything(*drawing, index);
  }
  // then
  EXPECT_EQ(0U, drawing->revision());
  EXPECT_FALSE(drawing->document().isEdited());
  EXPECT_EQ(sample.bytes(), drawing->document().bytes());
}

TEST(Drawing, EveryEditCounts) {
  // given
  const auto drawing = Sample().entity("LINE", {{8, "A"}}).open();
  const std::uint32_t line = entityRecord(*drawing);
  // when
  drawing->edit(line, [&](dxf::Document& document) { document.set(line, 8, dxf::anySubclass, "B"); });
  // then
  EXPECT_EQ(1U, drawing->revision());
  EXPECT_TRUE(drawing->document().isEdited(line));
  EXPECT_THROW(drawing->edit(line, [](dxf::Document&) { throw std::invalid_argument("no"); }),
               std::invalid_argument);
  EXPECT_EQ(2U, drawing->revision());
}

TEST(Drawing, ChangesThatFailHalfWayLeaveNothingBehind) {
  const auto drawing = Sample().layer("A").entity("LINE", {{8, "A"}}).entity("LINE", {{8, "A"}}).open();
  const std::uint32_t layer = drawing->layers().find(L"A")->record;
  const std::uint32_t first = test::entityRecord(*drawing, 0);
  const std::uint32_t second = test::entityRecord(*drawing, 1);
  const auto rename = [&](std::uint32_t record, int code, const char* name) {
    drawing->edit(record,
                  [&](dxf::Document& document) { document.set(record, code, dxf::anySubclass, name); });
  };
  rename(second, 8, "B");
  const std::string before = drawing->document().bytes();

  EXPECT_THROW(drawing->atomically([&] {
    rename(first, 8, "C");
    drawing->atomically([&] { rename(second, 8, "D"); });
    rename(layer, 2, "E");
    rename(first, 8, "F");
    throw std::runtime_error("no");
  }),
               std::runtime_error);
  EXPECT_EQ(before, drawing->document().bytes());
  EXPECT_NE(nullptr, drawing->layers().find(L"A")) << "the tables follow";
  EXPECT_EQ(nullptr, drawing->layers().find(L"E"));

  drawing->atomically([&] { rename(first, 8, "C"); });
  EXPECT_EQ(L"C", Entity(*drawing, first).layerName()) << "what succeeds stays";
  EXPECT_THROW(drawing->atomically([] { throw std::runtime_error("no"); }), std::runtime_error);
  EXPECT_EQ(L"C", Entity(*drawing, first).layerName()) << "what was done before, too";
}

TEST(Drawing, TextsAreDecodedAsTheDrawingIsEncoded) {
  const auto modern = Sample().version("AC1032").entity("LINE").open();
  const auto old = Sample().version("AC1015").entity("LINE").open();
  EXPECT_EQ(L"Ø %%c \x2264", modern->decode("\xC3\x98 %%c \\U+2264"));
  EXPECT_EQ(L"Ø %%c \x2264", old->decode("\xD8 %%c \\U+2264"));
}

TEST(Drawing, AFileIsOpenedAndAMissingOneIsAnError) {
  const std::filesystem::path file = std::filesystem::temp_directory_path() / "velt-drawing-test.dxf";
  std::ofstream(file) << Sample().entity("LINE").bytes();
  std::uint64_t done = 0;
  const auto drawing = Drawing::open(file, [&](std::uint64_t bytes, std::uint64_t) { done = bytes; });
  EXPECT_EQ(1U, drawing->entities().size());
  EXPECT_LT(0U, done);
  std::filesystem::remove(file);
  EXPECT_THROW((void)Drawing::open(file), dxf::Error);
  EXPECT_THROW((void)Drawing::parse("nonsense", "sample.dxf"), dxf::Error);
}

// --- damage ---

TEST(Drawing, RecordsOutsideEverySectionAreKeptAndAreNotEntities) {
  const std::string bytes = record("LINE", {}) + Sample().entity("ARC").bytes();
  const auto drawing = Drawing::parse(bytes, "sample.dxf");
  EXPECT_EQ((Types{"ARC"}), typesOf(*drawing));
  EXPECT_EQ(bytes, drawing->document().bytes());
}

TEST(Drawing, RecordsMayStandInWrongPlaces) {
  const std::string bytes = record("SECTION", {{2, "ENTITIES"}}) + record("LAYER", {{2, "Walls"}})
                            + record("BLOCK", {{2, "DOOR"}}) + record("", {{8, "0"}}) + record("ENDBLK", {})
                            + record("TABLE", {{2, "LAYER"}}) + record("SECTION", {{2, "TABLES"}})
                            + record("LAYER", {{2, "Doors"}}) + record("LINE", {{8, "Doors"}})
                            + record("SECTION", {{2, "BLOCKS"}}) + record("ENDBLK", {}) + record("VERTEX", {})
                            + record("SECTION", {}) + record("LINE", {}) + record("EOF", {});
  const auto drawing = Drawing::parse(bytes, "sample.dxf");
  EXPECT_EQ((Names{L"Doors", L"0"}), namesOf(drawing->layers())) << "a record among entities is no layer";
  for (std::uint32_t index = 0; index < drawing->document().recordCount(); ++index) {
    const VkDbObjectId id = drawing->idOf(index);
    if (id.isNull()) continue;
    const VkDbObjectPointer<VkDbObject> object(id, VkDb::kForRead);
    ASSERT_EQ(Velt::eOk, object.openStatus());
    test::readEverything(*drawing, index);
  }
}

TEST(Drawing, EveryPrefixOfADrawingOpensOrIsAnError) {
  const std::string whole = Sample()
                                .version("AC1032")
                                .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "*Model_Space"}})
                                .layer("Walls", {{70, "4"}})
                                .block({{5, "20"}, {330, "10"}, {2, "*Model_Space"}}, record("LINE", {}))
                                .entity("INSERT", {{2, "DOOR"}, {66, "1"}})
                                .entity("ATTRIB")
                                .entity("SEQEND")
                                .object("LAYOUT", {{1, "Model"}, {330, "10"}})
                                .bytes();
  std::size_t opened = 0;
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    try {
      const auto drawing = Drawing::parse(whole.substr(0, length), "sample.dxf");
      ++opened;
      for (const VkDbObjectId id : drawing->entities())
        test::readEverything(*drawing, resolve(id)->record);
    } catch (const dxf::Error&) {}
  }
  EXPECT_LT(0U, opened);
}

TEST(Drawing, LinesThatAreLostDoubledOrSwappedNeverCrashAnything) {
  const std::string whole =
      Sample()
          .version("AC1032")
          .tableRecord("BLOCK_RECORD", {{5, "10"}, {2, "*Model_Space"}})
          .tableRecord("BLOCK_RECORD",
                       {{5, "11"}, {102, "{ACAD_XDICTIONARY"}, {360, "30"}, {102, "}"}, {2, "Door"}})
          .tableRecord("BLOCK_RECORD", {{5, "12"}, {2, "*U1"}, {1001, "AcDbBlockRepBTag"}, {1005, "11"}})
          .tableRecord("LTYPE", {{5, "14"}, {2, "ByLayer"}})
          .tableRecord("STYLE", {{5, "15"}, {2, "Standard"}, {70, "0"}})
          .layer("0", {{5, "16"}})
          .layer("Walls", {{5, "17"}, {70, "4"}, {62, "-3"}, {420, "255"}, {430, "A$B"}})
          .block({{5, "20"}, {330, "10"}, {2, "*Model_Space"}})
          .block({{5, "21"}, {330, "11"}, {2, "Door"}},
                 record("LINE", {{5, "22"}, {8, "Walls"}, {330, "11"}}))
          .entity("INSERT", {{5, "23"},
                             {330, "10"},
                             {102, "{ACAD_XDICTIONARY"},
                             {360, "31"},
                             {102, "}"},
                             {100, "AcDbEntity"},
                             {8, "Walls"},
                             {66, "1"},
                             {2, "*U1"}})
          .entity("ATTRIB", {{5, "24"}, {330, "23"}})
          .entity("SEQEND", {{5, "25"}})
          .entity("POLYLINE", {{5, "26"}, {330, "26"}, {70, "8"}})
          .entity("VERTEX", {{5, "27"}})
          .object("DICTIONARY", {{5, "30"}, {3, "ACAD_ENHANCEDBLOCK"}, {360, "30"}})
          .object("DICTIONARY",
                  {{5, "31"}, {3, "AcDbBlockRepresentation"}, {360, "31"}, {3, "AcDbRepData"}, {360, "32"}})
          .object("ACDB_BLOCKREPRESENTATION_DATA",
                  {{5, "32"}, {100, "AcDbBlockRepresentationData"}, {340, "11"}})
          .object("LAYOUT", {{5, "33"}, {100, "AcDbLayout"}, {1, "Model"}, {330, "10"}})
          .bytes();
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < whole.size();) {
    const std::size_t end = whole.find('\n', at);
    lines.push_back(whole.substr(at, end - at));
    at = end + 1;
  }
  const auto seed = std::random_device()();
  SCOPED_TRACE(seed);
  std::mt19937 random(seed);
  const std::size_t objectsBefore = ObjectTable::ofProcess().size();
  std::size_t opened = 0;
  for (int round = 0; round < 2000; ++round) {
    // given
    std::vector<std::string> damaged = lines;
    for (auto times = random() % 8; times > 0; --times) {
      const std::size_t one = random() % damaged.size() / 2 * 2, other = random() % damaged.size() / 2 * 2;
      const auto pair = damaged.begin() + static_cast<std::ptrdiff_t>(one);
      switch (random() % 4) {
        case 0:
          damaged.erase(pair, pair + 2);
          break;
        case 1:
          damaged[one + 1] = damaged[other + 1];
          break;
        case 2:
          std::swap(damaged[one], damaged[other]);
          std::swap(damaged[one + 1], damaged[other + 1]);
          break;
        default:
          damaged.insert(pair, {damaged[other], damaged[other + 1]});
      }
    }
    std::string bytes;
    for (const std::string& line : damaged)
      bytes += line + "\n";
    // when, then
    try {
      const auto drawing = Drawing::parse(bytes, "sample.dxf");
      ++opened;
      for (std::uint32_t index = 0; index < drawing->document().recordCount(); ++index) {
        test::readEverything(*drawing, index);
        const VkDbObjectPointer<VkDbBlockReference> reference(drawing->idOf(index), VkDb::kForRead);
        if (reference.object() != nullptr) {
          (void)vkdbIsEnhancedBlockRef(reference.object());
        }
        EXPECT_TRUE(drawing->idOf(index).isNull() || resolve(drawing->idOf(index))->record == index);
      }
      EXPECT_EQ(bytes, drawing->document().bytes());
    } catch (const dxf::Error&) {}
  }
  EXPECT_LT(500U, opened);
  EXPECT_EQ(objectsBefore, ObjectTable::ofProcess().size());
}

}  // namespace
}  // namespace velt::database
