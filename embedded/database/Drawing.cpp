#include "embedded/database/Drawing.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/database/Entity.h"
#include "embedded/database/HandleMap.h"
#include "embedded/database/NameFolding.h"
#include "embedded/database/ObjectTable.h"
#include "embedded/database/RecordShapes.h"
#include "embedded/platform/Watch.h"

namespace velt::database {
namespace {

// What a record is to the database.
enum class Role : std::uint8_t {
  // Opens or closes a section, or stands in a section that is not understood.
  Nothing,
  Entity,
  // Part of a sequence, also of one whose head is missing.
  Member,
  Block,
  TableRecord,
  Object,
};

[[nodiscard]] bool isOneOf(std::string_view type, std::initializer_list<std::string_view> names) {
  return std::find(names.begin(), names.end(), type) != names.end();
}

Role roleOf(const dxf::Record& record, std::string_view type) {
  if (type.empty() || isOneOf(type, {"SECTION", "ENDSEC", "EOF", "ENDTAB"})) return Role::Nothing;
  switch (record.section) {
    case dxf::Section::Tables:
      return type == "TABLE" ? Role::Object : Role::TableRecord;
    case dxf::Section::Blocks:
    case dxf::Section::Entities:
      if (type == "BLOCK") return Role::Block;
      if (type == "ENDBLK") return Role::Object;
      return isOneOf(type, {"VERTEX", "ATTRIB", "SEQEND"}) ? Role::Member : Role::Entity;
    case dxf::Section::Objects:
      return Role::Object;
    case dxf::Section::Outside:
    case dxf::Section::Header:
    case dxf::Section::Classes:
    case dxf::Section::Other:
      break;
  }
  return Role::Nothing;
}

// New handles follow the highest one of the file. Handles above this do not count for that, so that there is always
// a next one.
constexpr std::uint64_t highestCountedHandle = std::uint64_t{1} << 48;

constexpr std::array impliedLinetypes{L"ByBlock", L"ByLayer", L"Continuous"};
// The flag (70) of a STYLE that loads a file of shapes.
constexpr std::int64_t loadsShapes = 1;
constexpr std::string_view layoutSubclass = "AcDbLayout";

// Tells the progress to the watches of this thread too.
dxf::Progress watched(const dxf::Progress& progress) {
  return [&progress](std::uint64_t done, std::uint64_t total) {
    if (progress) progress(done, total);
    platform::watchedBytes(done, total);
  };
}

}  // namespace

class Drawing::Contents {
 public:
  Contents(Drawing& drawing, dxf::Document read) : document(std::move(read)), drawing_(drawing) {}
  ~Contents();
  Contents(const Contents&) = delete;
  Contents& operator=(const Contents&) = delete;

  void load();
  // Makes the tables, from the records as they are now.
  void makeTables();
  [[nodiscard]] VkDbObjectId idOf(std::uint32_t record);
  [[nodiscard]] const std::vector<VkDbObjectId>& allEntities();

  dxf::Document document;
  RecordShapes shapes{document.recordCount()};
  // Indexed by record.
  std::vector<Role> roles;
  // The objects' places in the object table, indexed by record; none while a record has no object.
  std::vector<std::uint32_t> slots;
  HandleMap handles;
  // Sorted by record.
  std::vector<std::pair<std::uint32_t, std::uint64_t>> assignedHandles;
  Table layers, linetypes, textStyles, dimStyles, blocks, appIds;
  std::vector<Layout> layouts;
  // Indexed by block: the index of the first layout that names it, or none.
  std::vector<std::uint32_t> layoutOfBlock;
  std::uint64_t revision = 0;
  bool breaksAssociations = false;
  // Records that were edited within atomically(), as they were before. Null outside of it.
  std::vector<dxf::Document::Backup>* kept = nullptr;
  // Where record() keeps what records were before. Null outside of it.
  Changes* recording = nullptr;

  // Adds a record to `kept`, before its first edit.
  void keep(std::uint32_t record);
  [[nodiscard]] bool namesSomething(std::uint32_t record) const;
  void restore(std::vector<dxf::Document::Backup>& backups);

 private:
  void assignHandles(std::span<const std::uint32_t> records, std::uint64_t highest);
  void makeImpliedLayers();
  void makeLayers();
  void makeBlocks();
  void makeLayouts();
  void make(std::uint32_t record, const ObjectClass& objectClass);
  [[nodiscard]] std::vector<TableEntry> entriesOf(std::string_view type);
  [[nodiscard]] std::optional<std::uint32_t> referenced(std::uint32_t from, int code,
                                                        std::string_view subclass) const;
  [[nodiscard]] std::wstring name(std::uint32_t record, int code, std::string_view subclass) const;

  Drawing& drawing_;
  // Empty until somebody asks for them.
  std::vector<VkDbObjectId> entities_;
  std::vector<std::uint32_t> tableRecords_;
  std::vector<std::uint32_t> blockRecords_;
  std::vector<std::uint32_t> layoutRecords_;
  // The layers that entities named without a record when the drawing was read, with their places in the object table.
  std::vector<std::pair<std::wstring, std::uint32_t>> impliedLayers_;
};

Drawing::Contents::~Contents() {
  ObjectTable& objects = ObjectTable::ofProcess();
  for (const std::uint32_t slot : slots) {
    if (slot != dxf::none) objects.release(objects.at(slot));
  }
  for (const auto& [name, slot] : impliedLayers_)
    objects.release(objects.at(slot));
}

void Drawing::Contents::load() {
  const auto count = static_cast<std::uint32_t>(document.recordCount());
  roles.reserve(count);
  slots.assign(count, dxf::none);
  handles.reserve(count);

  std::vector<std::uint32_t> withoutHandle;
  std::uint64_t highest = 0;
  for (std::uint32_t record = 0; record < count; ++record) {
    platform::watchedLoading();
    const dxf::RecordView view = document.view(record);
    const std::string_view type = view.type();
    const Role role = roleOf(document.records()[record], type);
    roles.push_back(role);
    if (role == Role::Nothing) continue;

    const std::uint64_t handle = dxf::parseHandle(view.handle()).value_or(0);
    handles.add(handle, record);
    if (handle < highestCountedHandle) highest = std::max(highest, handle);
    const bool needsHandle = role != Role::Object && (role != Role::Member || type == "ATTRIB");
    if (handle == 0 && needsHandle) withoutHandle.push_back(record);

    if (role == Role::TableRecord) tableRecords_.push_back(record);
    if (role == Role::Block) blockRecords_.push_back(record);
    if (role == Role::Object && type == "LAYOUT") layoutRecords_.push_back(record);
  }
  assignHandles(withoutHandle, highest);
  makeTables();

  makeImpliedLayers();
}

// Made when somebody asks: whoever only looks up a handle or the tables needs no object for each entity.
const std::vector<VkDbObjectId>& Drawing::Contents::allEntities() {
  if (entities_.empty()) {
    std::vector<VkDbObjectId> made;
    made.reserve(static_cast<std::size_t>(std::count(roles.begin(), roles.end(), Role::Entity)));
    for (std::uint32_t record = 0; record < roles.size(); ++record) {
      if (roles[record] == Role::Entity) made.push_back(idOf(record));
    }
    entities_ = std::move(made);
  }
  return entities_;
}

// Programs that write only entities leave the table out, and others list only some layers. Whoever reads such a drawing
// takes the layers for granted: without them no entity could be written, because nobody knows whether it is locked.
void Drawing::Contents::makeImpliedLayers() {
  std::unordered_set<std::wstring> spellings, missing;
  for (std::uint32_t record = 0; record < roles.size(); ++record) {
    platform::watchedLoading();
    if (roles[record] != Role::Entity) continue;
    const auto [name, isNew] = spellings.insert(Entity(drawing_, record).layerName());
    if (!isNew || layers.find(*name) != nullptr || !missing.insert(foldName(*name)).second) continue;
    VkDbImpObject& layer = ObjectTable::ofProcess().acquire(drawing_, classOfLayers(), dxf::none);
    impliedLayers_.emplace_back(*name, layer.slot);
  }
  if (!missing.empty()) makeLayers();
}

void Drawing::Contents::makeLayers() {
  std::vector<TableEntry> all = entriesOf("LAYER");
  const Table recorded(all);
  for (const auto& [name, slot] : impliedLayers_) {
    if (recorded.find(name) != nullptr) continue;
    all.push_back({.name = name, .id = ObjectTable::idOf(ObjectTable::ofProcess().at(slot))});
  }
  layers = Table(std::move(all));
}

void Drawing::Contents::assignHandles(std::span<const std::uint32_t> records, std::uint64_t highest) {
  assignedHandles.reserve(records.size());
  std::uint64_t handle = highest;
  for (const std::uint32_t record : records) {
    do {
      ++handle;
    } while (!handles.add(handle, record));
    assignedHandles.emplace_back(record, handle);
  }
}

VkDbObjectId Drawing::Contents::idOf(std::uint32_t record) {
  const Role role = roles[record];
  if (role == Role::Nothing) return VkDbObjectId::kNull;
  if (slots[record] == dxf::none) {
    make(record, classOf(document.view(record), role == Role::Entity || role == Role::Member));
  }
  return ObjectTable::idOf(ObjectTable::ofProcess().at(slots[record]));
}

void Drawing::Contents::make(std::uint32_t record, const ObjectClass& objectClass) {
  if (slots[record] == dxf::none) {
    slots[record] = ObjectTable::ofProcess().acquire(drawing_, objectClass, record).slot;
  }
}

std::optional<std::uint32_t> Drawing::Contents::referenced(std::uint32_t from, int code,
                                                           std::string_view subclass) const {
  const auto text = document.view(from).text(code, subclass);
  return text ? handles.find(dxf::parseHandle(*text).value_or(0)) : std::nullopt;
}

std::wstring Drawing::Contents::name(std::uint32_t record, int code, std::string_view subclass) const {
  return document.decode(dxf::trimmed(document.view(record).text(code, subclass).value_or("")));
}

void Drawing::Contents::makeTables() {
  makeLayers();
  dimStyles = Table(entriesOf("DIMSTYLE"));
  appIds = Table(entriesOf("APPID"));

  std::vector<TableEntry> styles = entriesOf("STYLE");
  std::erase_if(styles, [this](const TableEntry& style) {
    return (document.view(style.record).integer(70, dxf::anySubclass).value_or(0) & loadsShapes) != 0;
  });
  textStyles = Table(std::move(styles));

  std::vector<TableEntry> all = entriesOf("LTYPE");
  std::vector<TableEntry> implied;
  for (const wchar_t* name : impliedLinetypes) {
    if (std::none_of(all.begin(), all.end(), [&](const auto& it) { return sameName(it.name, name); })) {
      implied.push_back({.name = name});
    }
  }
  all.insert(all.begin(), std::make_move_iterator(implied.begin()), std::make_move_iterator(implied.end()));
  linetypes = Table(std::move(all));

  makeBlocks();
  makeLayouts();
}

std::vector<TableEntry> Drawing::Contents::entriesOf(std::string_view type) {
  std::vector<TableEntry> entries;
  for (const std::uint32_t record : tableRecords_) {
    if (document.type(record) != type) continue;
    TableEntry entry{.name = name(record, 2, dxf::anySubclass), .record = record, .id = idOf(record)};
    if (!entry.name.empty()) entries.push_back(std::move(entry));
  }
  return entries;
}

// A block has a BLOCK_RECORD in the tables, to which others refer, and a BLOCK, which is followed by its entities. Old
// drawings have the BLOCK only, which then stands for both.
void Drawing::Contents::makeBlocks() {
  std::vector<TableEntry> all = entriesOf("BLOCK_RECORD");
  std::unordered_map<std::uint32_t, std::size_t> byRecord;
  std::unordered_map<std::wstring, std::size_t> byName;
  for (std::size_t index = 0; index < all.size(); ++index) {
    byRecord.emplace(all[index].record, index);
    byName.emplace(foldName(all[index].name), index);
  }
  for (const std::uint32_t block : blockRecords_) {
    std::wstring blockName = name(block, 2, dxf::anySubclass);
    TableEntry* own = nullptr;
    if (const auto named = byName.find(foldName(blockName)); named != byName.end()) own = &all[named->second];
    // The owner tells which it is when several records have the same name.
    const auto owner = byRecord.find(referenced(block, 330, "").value_or(dxf::none));
    if (owner != byRecord.end() && sameName(all[owner->second].name, blockName)) own = &all[owner->second];

    if (own != nullptr && own->definition == dxf::none) {
      own->definition = block;
    } else if (!blockName.empty()) {
      make(block, classOfBlocks());
      all.push_back({std::move(blockName), block, block, idOf(block)});
    }
  }
  blocks = Table(std::move(all));
}

void Drawing::Contents::makeLayouts() {
  layouts.clear();
  layoutOfBlock.assign(blocks.entries().size(), dxf::none);
  for (const std::uint32_t record : layoutRecords_) {
    Layout layout{.name = name(record, 1, layoutSubclass), .record = record};
    const auto owner = referenced(record, 330, layoutSubclass);
    if (const TableEntry* block = owner ? blocks.ofRecord(*owner) : nullptr) {
      layout.block = blocks.indexOf(*block);
      std::uint32_t& first = layoutOfBlock[layout.block];
      if (first == dxf::none) first = static_cast<std::uint32_t>(layouts.size());
    }
    layouts.push_back(std::move(layout));
  }
}

void Drawing::Contents::keep(std::uint32_t record) {
  if (recording != nullptr) recording->keep(document, record);
  if (kept == nullptr) return;
  const auto isOfRecord = [record](const dxf::Document::Backup& it) { return it.record() == record; };
  // Backwards, because mostly it is the record that was edited last.
  if (std::none_of(kept->rbegin(), kept->rend(), isOfRecord)) kept->push_back(document.backup(record));
}

bool Drawing::Contents::namesSomething(std::uint32_t record) const {
  const Role role = roles[record];
  return role == Role::TableRecord || role == Role::Block
         || (role == Role::Object && document.type(record) == "LAYOUT");
}

void Drawing::Contents::restore(std::vector<dxf::Document::Backup>& backups) {
  ++revision;
  bool namesChanged = false;
  for (dxf::Document::Backup& backup : backups) {
    namesChanged = namesChanged || namesSomething(backup.record());
    document.restore(std::move(backup));
  }
  if (namesChanged) makeTables();
}

Drawing::Drawing(dxf::Document document) : contents_(std::make_unique<Contents>(*this, std::move(document))) {
  contents_->load();
}

Drawing::~Drawing() = default;

std::unique_ptr<Drawing> Drawing::open(const std::filesystem::path& file, const dxf::Progress& progress) {
  return std::unique_ptr<Drawing>(new Drawing(dxf::Document::open(file, watched(progress))));
}

std::unique_ptr<Drawing> Drawing::parse(std::string bytes, std::string displayName,
                                        const dxf::Progress& progress) {
  return std::unique_ptr<Drawing>(
      new Drawing(dxf::Document::parse(std::move(bytes), std::move(displayName), watched(progress))));
}

const dxf::Document& Drawing::document() const {
  return contents_->document;
}
RecordShapes& Drawing::shapes() const {
  return contents_->shapes;
}

std::span<const VkDbObjectId> Drawing::entities() const {
  return contents_->allEntities();
}

RecordRange Drawing::members(std::uint32_t head) const {
  const std::span<const dxf::Record> records = document().records();
  std::uint32_t count = 0;
  for (std::size_t member = std::size_t{head} + 1; member < records.size(); ++member, ++count) {
    const auto record = static_cast<std::uint32_t>(member);
    if (records[member].sequenceHead != head || document().type(record) == "SEQEND") break;
  }
  return {head + 1, count};
}

const Table& Drawing::layers() const {
  return contents_->layers;
}

const Table& Drawing::linetypes() const {
  return contents_->linetypes;
}

const Table& Drawing::textStyles() const {
  return contents_->textStyles;
}

const Table& Drawing::dimStyles() const {
  return contents_->dimStyles;
}

const Table& Drawing::blocks() const {
  return contents_->blocks;
}

const Table& Drawing::appIds() const {
  return contents_->appIds;
}

std::span<const Layout> Drawing::layouts() const {
  return contents_->layouts;
}

const Layout* Drawing::layoutOf(const TableEntry& block) const {
  const std::uint32_t layout = contents_->layoutOfBlock[blocks().indexOf(block)];
  return layout != dxf::none ? &contents_->layouts[layout] : nullptr;
}

VkDbObjectId Drawing::idOf(std::uint32_t record) const {
  return contents_->idOf(record);
}

std::uint64_t Drawing::handleOf(std::uint32_t record) const {
  if (const std::uint64_t handle = dxf::parseHandle(view(record).handle()).value_or(0)) return handle;
  const auto& assigned = contents_->assignedHandles;
  const auto found = std::lower_bound(assigned.begin(), assigned.end(), std::pair{record, std::uint64_t{0}});
  return found != assigned.end() && found->first == record ? found->second : 0;
}

std::optional<std::uint32_t> Drawing::recordByHandle(std::uint64_t handle) const {
  return contents_->handles.find(handle);
}

VkDbObjectId Drawing::objectByHandle(std::uint64_t handle) const {
  const auto record = recordByHandle(handle);
  return record ? idOf(*record) : VkDbObjectId::kNull;
}

VkDbObjectId Drawing::entityByHandle(std::uint64_t handle) const {
  const auto record = recordByHandle(handle);
  return record && contents_->roles[*record] == Role::Entity ? idOf(*record) : VkDbObjectId::kNull;
}

bool Drawing::isErased(std::uint32_t record) const {
  const std::uint32_t slot = contents_->slots[record];
  return slot != dxf::none && ObjectTable::ofProcess().at(slot).isErased;
}

void Drawing::setErased(std::uint32_t record, bool erased) {
  if (idOf(record).isNull()) return;
  ObjectTable::ofProcess().at(contents_->slots[record]).isErased = erased;
}

void Drawing::edit(std::uint32_t record, const std::function<void(dxf::Document&)>& change) {
  contents_->keep(record);
  ++contents_->revision;
  change(contents_->document);
  if (contents_->namesSomething(record)) contents_->makeTables();
}

void Drawing::atomically(const std::function<void()>& changes) {
  if (contents_->kept != nullptr) {
    changes();
    return;
  }
  std::vector<dxf::Document::Backup> backups;
  contents_->kept = &backups;
  try {
    changes();
    contents_->kept = nullptr;
  } catch (...) {
    contents_->kept = nullptr;
    if (!backups.empty()) contents_->restore(backups);
    throw;
  }
}

void Drawing::record(Changes& changes, const std::function<void()>& edits) {
  contents_->recording = &changes;
  try {
    edits();
    contents_->recording = nullptr;
  } catch (...) {
    contents_->recording = nullptr;
    throw;
  }
}

Changes Drawing::undo(Changes changes) {
  Changes untilNow;
  for (const dxf::Document::Backup& backup : changes.backups_)
    untilNow.keep(contents_->document, backup.record());
  contents_->restore(changes.backups_);
  return untilNow;
}

std::uint64_t Drawing::revision() const {
  return contents_->revision;
}

void Drawing::setBreaksAssociations(bool breaks) {
  contents_->breaksAssociations = breaks;
}

bool Drawing::breaksAssociations() const {
  return contents_->breaksAssociations;
}

void Drawing::save(const std::filesystem::path& file, const dxf::SaveOptions& options) {
  dxf::SaveOptions all = options;
  all.progress = watched(options.progress);
  dxf::save(contents_->document, file, all);
}

std::optional<ObjectRef> resolve(VkDbObjectId id) {
  const VkDbImpObject* const object = ObjectTable::ofProcess().find(id);
  if (object == nullptr || object->record == dxf::none) return std::nullopt;
  return ObjectRef{object->drawing, object->record};
}

}  // namespace velt::database
