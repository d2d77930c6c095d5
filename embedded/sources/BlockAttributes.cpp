#include "embedded/sources/BlockAttributes.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "embedded/automation/model/Editor.h"
#include "embedded/automation/model/Guard.h"
#include "embedded/automation/model/Refusal.h"
#include "embedded/database/EnhancedBlocks.h"
#include "embedded/database/LastAsked.h"
#include "embedded/database/Lens.h"
#include "embedded/database/RecordEditor.h"
#include "embedded/sources/EntityProperty.h"

namespace velt::sources {
namespace {

using database::Drawing;
using database::Lens;
using database::TableEntry;

constexpr PROPCAT attributesCategory = 101;
constexpr const wchar_t* attributesHeading = L"Attributes";

constexpr std::string_view textSubclass = "AcDbText";
constexpr std::string_view attributeSubclass = "AcDbAttribute";
constexpr std::string_view definitionSubclass = "AcDbAttributeDefinition";
constexpr int textCode = 1;
constexpr int tagCode = 2;
constexpr int promptCode = 3;
constexpr int flagsCode = 70;
constexpr std::int64_t constantFlag = 2;

struct Attribute {
  // The tag, numbered from its second time on.
  std::wstring name;
  std::wstring tag;
  std::uint32_t record = 0;
  bool isReadOnly = false;
};

struct Attributes {
  std::vector<Attribute> list;
  // Properties are asked in order: the search goes on where the last one ended.
  std::size_t next = 0;

  [[nodiscard]] const Attribute* find(const std::wstring& name) {
    for (std::size_t tried = 0; tried < list.size(); ++tried) {
      const Attribute& attribute = list[next];
      if (attribute.name == name) return &attribute;
      next = (next + 1) % list.size();
    }
    return nullptr;
  }
};

Attributes readAttributes(const Drawing& drawing, std::uint32_t reference) {
  const database::RecordRange members = drawing.members(reference);
  Attributes attributes;
  std::unordered_map<std::wstring, unsigned> times;
  for (std::uint32_t record = members.first; record < members.first + members.count; ++record) {
    const Lens lens(drawing, record);
    if (lens.type() != "ATTRIB" || drawing.isErased(record)) continue;
    std::wstring tag = lens.name(tagCode, attributeSubclass);
    if (tag.empty()) continue;
    const unsigned time = ++times[tag];
    const bool isConstant = (lens.integer(flagsCode, attributeSubclass, 0) & constantFlag) != 0;
    attributes.list.push_back({.name = time == 1 ? tag : tag + L" (" + std::to_wstring(time) + L")",
                               .tag = std::move(tag),
                               .record = record,
                               .isReadOnly = isConstant || lens.view().embeddedObject().has_value()});
  }
  return attributes;
}

Attributes& attributesOf(const AskedEntity& reference) {
  thread_local database::LastAsked<Attributes> last;
  const Drawing& drawing = *reference.object.drawing;
  return last.of(reference.id, drawing, [&] { return readAttributes(drawing, reference.object.record); });
}

class AttributeProperty final : public EntityProperty {
 public:
  using EntityProperty::EntityProperty;

 protected:
  bool has(const AskedEntity& reference) const override { return find(reference) != nullptr; }

  VARIANT read(const AskedEntity& reference) const override {
    return textVariant(textOf(*reference.object.drawing, find(reference)->record));
  }

  void write(const AskedEntity& reference, const VARIANT& value) const override {
    const std::wstring text = textIn(value);
    Drawing& drawing = *reference.object.drawing;
    const Attribute attribute = *find(reference);
    if (attribute.isReadOnly) throw automation::Refusal(E_ACCESSDENIED, L"The attribute is constant.");
    requireUnlockedLayer(drawing, attribute.record);
    if (text == textOf(drawing, attribute.record)) return;
    automation::requireLine(drawing, text);
    if (!database::RecordEditor(drawing, attribute.record).setText(textCode, textSubclass, text))
      throw automation::Refusal(E_FAIL, L"The attribute has no place for a text.");
  }

 private:
  static std::wstring textOf(const Drawing& drawing, std::uint32_t record) {
    return Lens(drawing, record).text(textCode, textSubclass);
  }
  const Attribute* find(const AskedEntity& reference) const {
    return attributesOf(reference).find(description().name);
  }
};

// --- prompts ----------------------------------------------------------------------------------------------------------

using Prompts = std::unordered_map<std::wstring, std::wstring>;

// Those of the tags that have none yet.
void addPrompts(const Drawing& drawing, const TableEntry* block, Prompts& prompts) {
  if (block == nullptr || block->definition == dxf::none) return;
  const dxf::PairRange members = drawing.document().membersOf(block->definition);
  for (std::size_t member = members.first; member < members.first + members.count; ++member) {
    const Lens definition(drawing, static_cast<std::uint32_t>(member));
    if (definition.type() != "ATTDEF") continue;
    prompts.try_emplace(definition.name(tagCode, definitionSubclass),
                        definition.text(promptCode, definitionSubclass));
  }
}

// The prompts of the blocks of one drawing. A block is read once, however many references it has.
class PromptsOfBlocks {
 public:
  const Prompts& of(const Drawing& drawing, std::uint32_t reference) {
    static const Prompts none;
    const TableEntry* const block = database::referredBlock(drawing, reference);
    if (block == nullptr) return none;
    if (drawing_ != &drawing || revision_ != drawing.revision()) {
      blocks_.clear();
      drawing_ = &drawing;
      revision_ = drawing.revision();
    }
    // By the id, which no block of another drawing ever has: a new drawing may stand where a closed one stood.
    const auto [known, isNew] = blocks_.try_emplace(block->id.asOldId());
    if (isNew) {
      addPrompts(drawing, block, known->second);
      addPrompts(drawing, database::originalBlock(drawing, reference), known->second);
    }
    return known->second;
  }

 private:
  const Drawing* drawing_ = nullptr;
  std::uint64_t revision_ = 0;
  std::unordered_map<long, Prompts> blocks_;
};

// --- the source -------------------------------------------------------------------------------------------------------

IDynamicProperty2* propertyFor(const Attribute& attribute, const Prompts& prompts) {
  // Never destroyed: rows keep pointers to the properties.
  static PropertyPool<AttributeProperty>& pool = *new PropertyPool<AttributeProperty>;
  const auto found = prompts.find(attribute.tag);
  const std::wstring prompt = found != prompts.end() ? found->second : std::wstring();
  std::wstring key = attribute.name;
  key += L'\0';
  key += prompt;
  key += attribute.isReadOnly ? L'\1' : L'\2';
  return &pool.find(key, [&] {
    return com::makeObject<AttributeProperty>(EntityProperty::Description{.name = attribute.name,
                                                                          .help = prompt,
                                                                          .type = VT_BSTR,
                                                                          .isReadOnly = attribute.isReadOnly,
                                                                          .category = attributesCategory,
                                                                          .heading = attributesHeading});
  });
}

std::vector<IDynamicProperty2*> propertiesOf(const AskedEntity& reference) {
  static thread_local PromptsOfBlocks blocks;
  const Attributes& attributes = attributesOf(reference);
  std::vector<IDynamicProperty2*> properties;
  if (attributes.list.empty()) return properties;
  const Prompts& prompts = blocks.of(*reference.object.drawing, reference.object.record);
  properties.reserve(attributes.list.size());
  for (const Attribute& attribute : attributes.list)
    properties.push_back(propertyFor(attribute, prompts));
  return properties;
}

class BlockAttributes final : public com::ComObject<IPropertySource> {
 public:
  BlockAttributes() : ComObject(platform::Ledger::account("BlockAttributes")) {}

  HRESULT GetProperties(IDispatch* entity, VARIANT* properties) override {
    if (properties == nullptr) return E_POINTER;
    return automation::guarded([&] {
      const std::optional<AskedEntity> reference = entityBehind(entity);
      if (!reference) return E_INVALIDARG;
      return givePropertyArray(propertiesOf(*reference), properties);
    });
  }
};

}  // namespace

IPropertySource* makeBlockAttributes() {
  return com::makeObject<BlockAttributes>();
}

}  // namespace velt::sources
