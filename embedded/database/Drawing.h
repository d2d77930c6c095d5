#pragma once

// One open drawing: the document, and the database objects that stand for its records.
//
// Ownership: a drawing owns its document and its objects. Ids name objects across the whole process; when the drawing
// is closed they become stale and resolve to nothing. Objects that are still open then answer as if they had no
// values, and can still be closed.
// Invariants: reading changes nothing in the document; edits go through edit(), and revision() counts them. A file
// whose structure is damaged (tables or handles missing, handles repeated or not numbers, wrong owners) is taken as
// it is: every record stays, and what cannot be found does not exist. Records are named by their index in
// document().records(); every function that takes one requires a valid index.
// Threads: a drawing belongs to one thread at a time: to the palette's when a palette shows it. Reading counts as use,
// since objects are made when they are first asked for. Another thread may use another drawing at
// the same time, to load or save it for example.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dxf/Document.h"
#include "dxf/FileReplacement.h"
#include "embedded/database/Changes.h"
#include "embedded/database/Table.h"
#include "host/database/VkDbObjectId.h"

namespace velt::database {

class RecordShapes;

// Consecutive records of the document.
struct RecordRange {
  std::uint32_t first = 0;
  std::uint32_t count = 0;
};

// A sheet of paper, or model space, with the block that holds its entities.
struct Layout {
  std::wstring name;
  std::uint32_t record = dxf::none;
  // Index in blocks().entries().
  std::uint32_t block = dxf::none;
};

class Drawing {
 public:
  // Throws dxf::Error when the file cannot be read, and platform::Cancelled when a watch cancels.
  [[nodiscard]] static std::unique_ptr<Drawing> open(const std::filesystem::path& file,
                                                     const dxf::Progress& progress = {});
  // `displayName` stands for the file in messages.
  [[nodiscard]] static std::unique_ptr<Drawing> parse(std::string bytes, std::string displayName,
                                                      const dxf::Progress& progress = {});
  ~Drawing();
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  [[nodiscard]] const dxf::Document& document() const;
  [[nodiscard]] dxf::RecordView view(std::uint32_t record) const { return document().view(record); }
  // Where properties stand in the records, for lenses.
  [[nodiscard]] RecordShapes& shapes() const;
  // A text of the document as wide characters. Codes within it (%%c, ^J) stay as they are: see dxf/TextCodes.h.
  [[nodiscard]] std::wstring decode(std::string_view text) const { return document().decode(text); }

  // --- entities -----------------------------------------------------------------------------------------------------

  // Every entity, in file order: those of model space and of the layouts, and those inside block definitions. A
  // sequence (POLYLINE with its VERTEXes, INSERT with its ATTRIBs) is one entity, its head. Erased entities are
  // included.
  [[nodiscard]] std::span<const VkDbObjectId> entities() const;
  // The members of the sequence that the record heads, without its SEQEND; none for any other record.
  [[nodiscard]] RecordRange members(std::uint32_t head) const;

  // --- tables -------------------------------------------------------------------------------------------------------

  // Those that entities named when the drawing was read are there, with implied entries for those that the table lacks.
  [[nodiscard]] const Table& layers() const;
  // ByBlock, ByLayer and Continuous are always there: implied entries stand for those that the file lacks.
  [[nodiscard]] const Table& linetypes() const;
  // Without the nameless ones, which only load a file of shapes.
  [[nodiscard]] const Table& textStyles() const;
  [[nodiscard]] const Table& dimStyles() const;
  // Those of model space and of the layouts included.
  [[nodiscard]] const Table& blocks() const;
  [[nodiscard]] const Table& appIds() const;

  // In file order; none in old drawings, whose layouts have no names.
  [[nodiscard]] std::span<const Layout> layouts() const;
  // The layout whose entities a block of this drawing holds; null for every other block.
  [[nodiscard]] const Layout* layoutOf(const TableEntry& block) const;

  // --- objects ------------------------------------------------------------------------------------------------------

  // Null for a record that is not an object, such as the head of a section.
  [[nodiscard]] VkDbObjectId idOf(std::uint32_t record) const;
  // The handle in the file. Entities, attributes, blocks and table records that lack one have one here that no other
  // record has and that is never written; all other records without one have 0.
  [[nodiscard]] std::uint64_t handleOf(std::uint32_t record) const;
  // The first, when several have the handle.
  [[nodiscard]] std::optional<std::uint32_t> recordByHandle(std::uint64_t handle) const;
  [[nodiscard]] VkDbObjectId objectByHandle(std::uint64_t handle) const;
  // Null also when the object with that handle is not an entity.
  [[nodiscard]] VkDbObjectId entityByHandle(std::uint64_t handle) const;

  [[nodiscard]] bool isErased(std::uint32_t record) const;
  // Erases an object, so that it is opened only on demand, or brings it back. The document keeps its record either way.
  void setErased(std::uint32_t record, bool erased);

  // --- editing ------------------------------------------------------------------------------------------------------

  // (Functions are passed by reference here, std::cref(change), where they are called by the hundred thousand.)
  //
  // Runs `change`, which edits this one record. When it changes the name in a table record, the tables here change too;
  // handles, owners and kinds stay what they were when the drawing was read. Exceptions of `change` are passed on.
  void edit(std::uint32_t record, const std::function<void(dxf::Document&)>& change);
  // Runs `changes`, which may edit any records. When it throws, all records are put back to what they were, and the
  // exception is passed on. Inside of another such call, the outer one does both.
  void atomically(const std::function<void()>& changes);
  // Runs `edits` and adds to `changes` what each record that they edit held before, so that undo() can put it back. When
  // `edits` throws, what was edited until then is in `changes`, and the exception is passed on. Not inside of another
  // call of it.
  void record(Changes& changes, const std::function<void()>& edits);
  // Makes the records what they were before the changes, and answers what they were until now, so that this can be undone
  // in turn. Nothing else may have edited those records in between.
  [[nodiscard]] Changes undo(Changes changes);
  // Grows with every edit, also with one that failed.
  [[nodiscard]] std::uint64_t revision() const;
  // Whether hatches give up following an entity when its shape is changed. Unless they do, which is how it begins, whoever
  // changes shapes is to refuse that.
  void setBreaksAssociations(bool breaks);
  [[nodiscard]] bool breaksAssociations() const;

  // --- saving -------------------------------------------------------------------------------------------------------

  // Replaces the file by the drawing as it is now, or makes it; see dxf::save for what is refused. Throws
  // platform::Cancelled when a watch cancels before the file is replaced.
  void save(const std::filesystem::path& file, const dxf::SaveOptions& options = {});

 private:
  class Contents;
  explicit Drawing(dxf::Document document);
  std::unique_ptr<Contents> contents_;
};

// A database object as a record of its drawing.
struct ObjectRef {
  Drawing* drawing;
  std::uint32_t record;
};

// The object that an id names; nothing for the null id, for a stale one, for one that was made up, and for a layer
// without a record.
[[nodiscard]] std::optional<ObjectRef> resolve(VkDbObjectId id);

}  // namespace velt::database
