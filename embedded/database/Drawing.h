#pragma once

// One open drawing: the document, and the database objects that stand for its records.
//
// Ownership: a drawing owns its document and its objects. Ids name objects across the whole process; they become stale
// when the drawing is closed, and then resolve to nothing. Objects that are still open then may be closed afterwards,
// and answer as if they had nothing in between.
// Invariants: reading changes nothing in the document; edits go through edit(), and revision() counts them. Whatever is
// wrong with the structure of a file (missing tables, wrong owners, handles that are missing, double or no numbers) is
// lived with: each record stays, and what cannot be found is not there.
// Records are named by their index in document().records(); every function that takes one requires that it is there.
// Threads: a drawing belongs to one thread at a time, reading included, since the objects of records that are no
// entities are made when they are first asked for. Different drawings may be used by different threads at once.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "dxf/Document.h"
#include "embedded/database/Table.h"
#include "host/database/VkDbObjectId.h"

namespace velt::database {

// Consecutive records of the document.
struct RecordRange {
  std::uint32_t first = 0;
  std::uint32_t count = 0;
};

// A sheet of paper, or model space, with the block that its entities stand in.
struct Layout {
  std::wstring name;
  std::uint32_t record = dxf::none;
  // Index in blocks().entries().
  std::uint32_t block = dxf::none;
};

class Drawing {
 public:
  // Throws dxf::Error when the file cannot be read.
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
  // A text of the document as wide characters. Codes of the wording (%%c, ^J) stay as they are.
  [[nodiscard]] std::wstring decode(std::string_view text) const { return document().decode(text); }

  // --- entities -----------------------------------------------------------------------------------------------------

  // Every entity, in file order: those of model space and of the layouts, and those inside block definitions. A
  // sequence (POLYLINE with its VERTEXes, INSERT with its ATTRIBs) is one entity, its head. An erased one stays in the
  // list.
  [[nodiscard]] std::span<const VkDbObjectId> entities() const;
  // The members of the sequence that the record heads, without its SEQEND; none for any other record.
  [[nodiscard]] RecordRange members(std::uint32_t head) const;

  // --- tables -------------------------------------------------------------------------------------------------------

  [[nodiscard]] const Table& layers() const;
  [[nodiscard]] const Table& linetypes()
      // ByBlock, ByLayer and Continuous are implied where they are missing.
      const;
  [[nodiscard]] const Table& textStyles()
      // Without the nameless ones, which only load a file of shapes.
      const;
  [[nodiscard]] const Table& dimStyles() const;
  // Model space and the layouts included.
  [[nodiscard]] const Table& blocks() const;
  [[nodiscard]] const Table& appIds() const;

  // In file order; none in drawings from before layouts had names.
  [[nodiscard]] std::span<const Layout> layouts() const;
  // That of a block of this drawing; null for blocks that are no sheet and not model space.
  [[nodiscard]] const Layout* layoutOf(const TableEntry& block) const;

  // --- objects ------------------------------------------------------------------------------------------------------

  // Null for a record that is no object, as the head of a section.
  [[nodiscard]] VkDbObjectId idOf(std::uint32_t record) const;
  // As in the file. Entities, attributes, blocks and table records without one get one here, which nobody else has and
  // which is never written; other records without one have 0.
  [[nodiscard]] std::uint64_t handleOf(std::uint32_t record) const;
  // Of several with the same handle the first.
  [[nodiscard]] std::optional<std::uint32_t> recordByHandle(std::uint64_t handle) const;
  [[nodiscard]] VkDbObjectId objectByHandle(std::uint64_t handle) const;
  // Null also when the object of that handle is no entity.
  [[nodiscard]] VkDbObjectId entityByHandle(std::uint64_t handle) const;

  [[nodiscard]] bool isErased(std::uint32_t record) const;
  // Hides an object from those who open objects, or shows it again. The document keeps its record either way.
  void setErased(std::uint32_t record, bool erased);

  // --- editing ------------------------------------------------------------------------------------------------------

  // Runs `change`, which edits this one record. Tables follow when the name in a table record changes; handles, owners
  // and kinds stay what they were when the drawing was read. Passes exceptions of `change` on.
  void edit(std::uint32_t record, const std::function<void(dxf::Document&)>& change);
  // Runs `changes`, which may edit any records: when it throws, all of them hold again what they held before, and the
  // exception is passed on. Within another such call it is a part of that one.
  void atomically(const std::function<void()>& changes);
  // Grows with every edit, one that failed included.
  [[nodiscard]] std::uint64_t revision() const;

 private:
  class Contents;
  explicit Drawing(dxf::Document document);
  std::unique_ptr<Contents> contents_;
};

struct ObjectRef {
  Drawing* drawing;
  std::uint32_t record;
};

// What an id stands for; nothing for the null id, for a stale one and for one that was made up.
[[nodiscard]] std::optional<ObjectRef> resolve(VkDbObjectId id);

}  // namespace velt::database
