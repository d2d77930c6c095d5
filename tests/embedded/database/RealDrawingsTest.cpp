// What must hold for every real drawing in the folder that VELT_DRAWINGS names.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>

#include "embedded/database/EnhancedBlocks.h"
#include "embedded/database/Entity.h"
#include "embedded/platform/Ledger.h"
#include "host/database/OpenObject.h"
#include "tests/embedded/database/Sample.h"

namespace velt::database {
namespace {

using Counts = std::map<std::string, int>;

std::vector<std::filesystem::path> drawings() {
  std::vector<std::filesystem::path> found;
  const char* const folder = std::getenv("VELT_DRAWINGS");
  if (folder == nullptr || *folder == '\0') return found;
  for (const auto& file : std::filesystem::directory_iterator(folder)) {
    if (file.path().extension() == ".dxf") found.push_back(file.path());
  }
  return found;
}

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

RawFacts readRaw(const std::filesystem::path& path) {
  RawFacts facts;
  std::ifstream file(path, std::ios::binary);
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

class DrawingsOfOthers : public testing::Test {
 protected:
  void SetUp() override {
    if (drawings().empty()) GTEST_SKIP() << "VELT_DRAWINGS names no folder with drawings";
  }
};

TEST_F(DrawingsOfOthers, HaveTheEntitiesAndLayersThatStandInTheFile) {
  for (const auto& path : drawings()) {
    SCOPED_TRACE(path.filename());
    const auto drawing = Drawing::open(path);
    const RawFacts facts = readRaw(path);
    Counts counts;
    for (const VkDbObjectId id : drawing->entities())
      ++counts[std::string(Entity(*resolve(id)).dxfName())];
    EXPECT_EQ(facts.entities, counts);
    EXPECT_FALSE(counts.empty());
    EXPECT_EQ(facts.tableLayers, static_cast<int>(drawing->layers().entries().size()));
  }
}

TEST_F(DrawingsOfOthers, GiveAnIdToEveryObjectThatOpensAndCloses) {
  const auto before = platform::Ledger::snapshot();
  for (const auto& path : drawings()) {
    SCOPED_TRACE(path.filename());
    const auto drawing = Drawing::open(path);
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
  }
  EXPECT_EQ("balanced",
            platform::Ledger::print(platform::Ledger::difference(before, platform::Ledger::snapshot())));
}

TEST_F(DrawingsOfOthers, HaveEveryLayerThatAnEntityNames) {
  for (const auto& path : drawings()) {
    SCOPED_TRACE(path.filename());
    const auto drawing = Drawing::open(path);
    const RawFacts facts = readRaw(path);
    for (const VkDbObjectId id : drawing->entities()) {
      const Entity entity(*resolve(id));
      ASSERT_NE(nullptr, entity.layer()) << entity.dxfName() << " " << entity.handle();
      const auto raw = std::string(dxf::trimmed(entity.lens().value(8, dxf::anySubclass).value_or("0")));
      EXPECT_TRUE(facts.layerNames.contains(lowerCase(raw))) << raw;
    }
  }
}

TEST_F(DrawingsOfOthers, PlaceEveryEntityInABlock) {
  for (const auto& path : drawings()) {
    SCOPED_TRACE(path.filename());
    const auto drawing = Drawing::open(path);
    for (const VkDbObjectId id : drawing->entities()) {
      const Entity entity(*resolve(id));
      const TableEntry* const owner = entity.owner();
      ASSERT_NE(nullptr, owner) << entity.dxfName() << " " << entity.handle();
      const std::uint64_t said = entity.lens().handle(330, commonSubclass);
      if (said != 0) {
        EXPECT_EQ(said, drawing->handleOf(owner->record)) << entity.dxfName() << " " << entity.handle();
      }
      EXPECT_EQ(entity.lens().integer(67, commonSubclass, 0) == 1, entity.space() == Space::Paper)
          << entity.dxfName() << " " << entity.handle();
    }
  }
}

TEST_F(DrawingsOfOthers, AreNotChangedByReading) {
  for (const auto& path : drawings()) {
    SCOPED_TRACE(path.filename());
    const auto drawing = Drawing::open(path);
    for (const VkDbObjectId id : drawing->entities()) {
      test::readEverything(*drawing, resolve(id)->record);
    }
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    EXPECT_EQ(0U, drawing->revision());
    EXPECT_TRUE(bytes == drawing->document().bytes());
  }
}

TEST_F(DrawingsOfOthers, TellTheDefinitionsOfTheirDynamicBlocks) {
  std::map<std::string, int> references;
  for (const auto& path : drawings()) {
    const auto drawing = Drawing::open(path);
    for (const VkDbObjectId id : drawing->entities()) {
      const VkDbObjectPointer<VkDbBlockReference> reference(id, VkDb::kForRead);
      if (reference.openStatus() != Velt::eOk) continue;
      const auto block = resolve(vkdbGetEnhancedBlkOriginalBtrId(reference.object()));
      if (!block) continue;
      EXPECT_TRUE(vkdbIsEnhancedBlockRef(reference.object()));
      EXPECT_NE(reference->blockTableRecord(), drawing->idOf(block->record));
      const TableEntry& definition = *drawing->blocks().ofRecord(block->record);
      EXPECT_TRUE(isEnhancedDefinition(*drawing, definition));
      const std::wstring& name = definition.name;
      ++references[path.filename().string() + ": " + std::string(name.begin(), name.end())];
    }
  }
  EXPECT_FALSE(references.empty());
  // Counted by a script of its own over the files, for those that are there.
  const std::map<std::string, int> counted{{"all_entities_ac1018.dxf: *U17", 2},
                                           {"facade_details_ac1027.dxf: Section Callout", 12}};
  for (const auto& [name, count] : references) {
    const auto known = counted.find(name);
    if (known != counted.end()) {
      EXPECT_EQ(known->second, count) << name;
    }
  }
}

}  // namespace
}  // namespace velt::database
