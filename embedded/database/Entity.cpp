#include "embedded/database/Entity.h"

#include "embedded/database/Colors.h"
#include "embedded/database/NameFolding.h"

namespace velt::database {
namespace {

constexpr int layerCode = 8;
constexpr int linetypeCode = 6;
constexpr int lineweightCode = 370;
constexpr int inPaperSpaceCode = 67;
constexpr int ownerCode = 330;
constexpr std::int64_t lineweightByLayer = -1;

// Very old drawings begin the name with a dollar sign.
bool isModelSpace(std::wstring_view block) {
  return sameName(block, L"*Model_Space") || sameName(block, L"$Model_Space");
}

// *Paper_Space for the sheet that is shown, *Paper_Space0 and so on for the others.
bool isPaperSpace(std::wstring_view block) {
  constexpr std::wstring_view name = L"*Paper_Space";
  return sameName(block.substr(0, name.size()), name) || sameName(block, L"$Paper_Space");
}

Space spaceOf(const Drawing& drawing, const TableEntry& block) {
  if (isModelSpace(block.name)) return Space::Model;
  return isPaperSpace(block.name) || drawing.layoutOf(block) != nullptr ? Space::Paper : Space::Block;
}

const TableEntry* firstOf(const Table& blocks, std::wstring_view name, std::wstring_view oldName) {
  const TableEntry* const block = blocks.find(name);
  return block != nullptr ? block : blocks.find(oldName);
}

// The head of the sequence to which the record belongs; a record outside of sequences is its own.
std::uint32_t headOf(const Drawing& drawing, std::uint32_t record) {
  const std::uint32_t head = drawing.document().records()[record].sequenceHead;
  return head != dxf::none ? head : record;
}

// The name as it stands in the file, which the lens must outlive.
std::string_view writtenLayer(const Lens& entity) {
  // Some writers put the layer after the marker of the entity's own kind. No kind uses the code for anything else.
  for (const std::string_view subclass : {commonSubclass, dxf::anySubclass}) {
    const std::string_view name =
        dxf::trimmed(entity.value(layerCode, subclass).value_or(std::string_view()));
    if (!name.empty()) return name;
  }
  return "0";
}

bool saysPaperSpace(const Drawing& drawing, std::uint32_t record) {
  return Lens(drawing, record).integer(inPaperSpaceCode, commonSubclass, 0) == 1;
}

}  // namespace

std::wstring Entity::layerName() const {
  return drawing_->decode(writtenLayer(lens()));
}

const TableEntry* Entity::layer() const {
  return drawing_->layers().findWritten(writtenLayer(lens()), drawing_->document());
}

VkCmColor Entity::color() const {
  return entityColor(lens());
}

std::wstring Entity::linetypeName() const {
  return lens().name(linetypeCode, commonSubclass, L"ByLayer");
}

std::int64_t Entity::lineweight() const {
  return lens().integer(lineweightCode, commonSubclass, lineweightByLayer);
}

const TableEntry* Entity::owner() const {
  const Table& blocks = drawing_->blocks();
  const std::uint32_t head = headOf(*drawing_, record_);
  const dxf::Record& place = drawing_->document().records()[head];
  if (place.section == dxf::Section::Blocks) return blocks.ofRecord(place.container);

  const auto named = drawing_->recordByHandle(Lens(*drawing_, head).handle(ownerCode, commonSubclass));
  const TableEntry* const block = named ? blocks.ofRecord(*named) : nullptr;
  if (block != nullptr && spaceOf(*drawing_, *block) != Space::Block) return block;
  return saysPaperSpace(*drawing_, head) ? firstOf(blocks, L"*Paper_Space", L"$Paper_Space")
                                         : firstOf(blocks, L"*Model_Space", L"$Model_Space");
}

Space Entity::space() const {
  const std::uint32_t head = headOf(*drawing_, record_);
  if (const TableEntry* block = owner()) return spaceOf(*drawing_, *block);
  if (drawing_->document().records()[head].section == dxf::Section::Blocks) return Space::Block;
  return saysPaperSpace(*drawing_, head) ? Space::Paper : Space::Model;
}

std::wstring Entity::layoutName() const {
  const Space where = space();
  if (where == Space::Block) return {};
  const TableEntry* const block = owner();
  const Layout* const layout = block != nullptr ? drawing_->layoutOf(*block) : nullptr;
  if (layout != nullptr) return layout->name;
  return where == Space::Model ? L"Model" : L"";
}

}  // namespace velt::database
