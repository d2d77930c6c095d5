// Over whole drawings: the project's own and those of others.

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "embedded/database/Entity.h"
#include "embedded/platform/Ledger.h"
#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"
#include "tests/support/WholeDrawings.h"

namespace velt::database {
namespace {

using tests::forEachDrawing;
using tests::WholeDrawing;
using Counts = std::map<std::string, int>;

// What a file holds, read line by line and without the code under test.
struct RawFacts {
  Counts entities;
  // In lower case.
  std::set<std::string> layerNames;
  int tableLayers = 0;
};

std::string lowerCase(std::string text) {
  for (char& character : text) {
    if (character >= 'A' && character <= 'Z') character = static_cast<char>(character + ('a' - 'A'));
  }
  return text;
}

RawFacts readRaw(const std::string& bytes) {
  RawFacts facts;
  std::istringstream file(bytes);
  std::string code, value, section, record;
  const std::set<std::string> frames{"SECTION", "ENDSEC", "EOF",    "BLOCK",
                                     "ENDBLK",  "VERTEX", "ATTRIB", "SEQEND"};
  while (std::getline(file, code) && std::getline(file, value)) {
    const auto last = value.find_last_not_of(" \r");
    value.erase(last == std::string::npos ? 0 : last + 1);
    const int number = std::atoi(code.c_str());
    if (number == 0) {
      if (value == "ENDSEC") section.clear();
      record = value;
      const bool holdsEntities = section == "BLOCKS" || section == "ENTITIES";
      if (holdsEntities && !frames.contains(record)) ++facts.entities[record];
      if (section == "TABLES" && record == "LAYER") ++facts.tableLayers;
    } else if (number == 2 && record == "SECTION" && section.empty()) {
      section = value;
    } else if (number == 2 && section == "TABLES" && record == "LAYER") {
      facts.layerNames.insert(lowerCase(value));
    }
  }
  return facts;
}

std::unique_ptr<Drawing> opened(const WholeDrawing& whole) {
  return Drawing::parse(whole.bytes, whole.name);
}

TEST(WholeDrawings, HaveTheEntitiesAndLayersThatStandInTheFile) {
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    const RawFacts facts = readRaw(whole.bytes);
    Counts counts;
    for (const VkDbObjectId id : drawing->entities())
      ++counts[std::string(Entity(*resolve(id)).dxfName())];
    EXPECT_EQ(facts.entities, counts);
    const auto layers = drawing->layers().entries();
    EXPECT_EQ(facts.tableLayers, std::count_if(layers.begin(), layers.end(),
                                               [](const TableEntry& layer) { return !layer.isImplied(); }));
  });
}

TEST(WholeDrawings, GiveAnIdToEveryObjectThatOpensAndCloses) {
  const auto before = platform::Ledger::snapshot();
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    std::set<long> ids;
    for (std::uint32_t record = 0; record < drawing->document().recordCount(); ++record) {
      const VkDbObjectId id = drawing->idOf(record);
      if (id.isNull()) continue;
      ASSERT_TRUE(ids.insert(id.asOldId()).second);
      VkDbObject* object = nullptr;
      ASSERT_EQ(Velt::eOk, vkdbOpenVkDbObject(object, id, VkDb::kForRead));
      EXPECT_EQ(id, object->objectId());
      EXPECT_EQ(Velt::eOk, object->close());
    }
    for (const VkDbObjectId id : drawing->entities()) {
      VkDbEntity* entity = nullptr;
      ASSERT_EQ(Velt::eOk, vkdbOpenVkDbEntity(entity, id, VkDb::kForRead));
      EXPECT_TRUE(entity->isKindOf(VkDbEntity::desc()));
      EXPECT_EQ(Velt::eOk, entity->close());
    }
    EXPECT_LE(drawing->entities().size(), ids.size());
  });
  EXPECT_EQ("balanced",
            platform::Ledger::print(platform::Ledger::difference(before, platform::Ledger::snapshot())));
}

TEST(WholeDrawings, TellTheLayerOfAnEntityAndWhetherTheTableHasIt) {
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    const RawFacts facts = readRaw(whole.bytes);
    for (const VkDbObjectId id : drawing->entities()) {
      const Entity entity(*resolve(id));
      const auto raw = std::string(dxf::trimmed(entity.lens().value(8, dxf::anySubclass).value_or("0")));
      ASSERT_NE(entity.layer(), nullptr) << entity.dxfName() << " " << entity.handle() << " " << raw;
      EXPECT_EQ(facts.layerNames.contains(lowerCase(raw)), !entity.layer()->isImplied())
          << entity.dxfName() << " " << entity.handle() << " " << raw;
    }
  });
}

TEST(WholeDrawings, PlaceEveryEntityInTheBlockThatHasIt) {
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    for (const VkDbObjectId id : drawing->entities()) {
      const Entity entity(*resolve(id));
      const TableEntry* const owner = entity.owner();
      const bool isOnPaper = entity.lens().integer(67, commonSubclass, 0) == 1;
      if (owner == nullptr) {
        EXPECT_EQ(nullptr, drawing->blocks().find(isOnPaper ? L"*Paper_Space" : L"*Model_Space"))
            << entity.dxfName() << " " << entity.handle();
        continue;
      }
      const std::uint64_t said = entity.lens().handle(330, commonSubclass);
      if (said != 0) {
        EXPECT_EQ(said, drawing->handleOf(owner->record)) << entity.dxfName() << " " << entity.handle();
      }
      EXPECT_EQ(isOnPaper, entity.space() == Space::Paper) << entity.dxfName() << " " << entity.handle();
    }
  });
}

TEST(WholeDrawings, AreNotChangedByReading) {
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    for (const VkDbObjectId id : drawing->entities()) {
      test::readEverything(*drawing, resolve(id)->record);
    }
    EXPECT_EQ(0U, drawing->revision());
    EXPECT_TRUE(whole.bytes == drawing->document().bytes());
  });
}

TEST(WholeDrawings, TellTheDefinitionsOfTheirDynamicBlocks) {
  std::map<std::string, int> references;
  forEachDrawing([&](const WholeDrawing& whole) {
    const auto drawing = opened(whole);
    for (const VkDbObjectId id : drawing->entities()) {
      const VkDbObjectPointer<VkDbBlockReference> reference(id, VkDb::kForRead);
      if (reference.openStatus() != Velt::eOk) continue;
      const auto block = resolve(vkdbGetEnhancedBlkOriginalBtrId(reference.object()));
      if (!block) continue;
      EXPECT_TRUE(vkdbIsEnhancedBlockRef(reference.object()));
      EXPECT_NE(reference->blockTableRecord(), drawing->idOf(block->record));
      const TableEntry& definition = *drawing->blocks().ofRecord(block->record);
      const std::wstring& name = definition.name;
      ++references[whole.name + ": " + std::string(name.begin(), name.end())];
    }
  });
  EXPECT_EQ(6, references["floor-plan.dxf: DOOR"]);
}

}  // namespace
}  // namespace velt::database
