#pragma once

// The process-wide table of database objects. An id is a slot of it and the slot's generation, so an id that outlived
// its drawing, or never came from here, is recognised as such.
//
// Ownership: the table owns the objects; a drawing makes them with acquire() and ends them with release(). Memory of
// slots is used again and never given back.
// Threads: acquire(), release() and find() may be called on every thread. What an object holds belongs to the thread
// that uses its drawing.

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "dxf/Tag.h"
#include "embedded/database/ObjectClass.h"
#include "embedded/database/VkDbImpObject.h"
#include "host/database/VkDbEntity.h"

namespace velt::database {

class ObjectTable {
 public:
  [[nodiscard]] static ObjectTable& ofProcess();

  // An object for a record of the drawing. Throws std::bad_alloc when there is no room for another.
  [[nodiscard]] VkDbImpObject& acquire(Drawing& drawing, const ObjectClass& objectClass,
                                       std::uint32_t record);

  // Makes the object's id stale. The slot is used again as soon as nobody has the object open.
  void release(VkDbImpObject& object);

  // To be called when the last one who had the object open has closed it.
  void closed(VkDbImpObject& object);

  // Null for the null id, a stale one and one that was made up.
  [[nodiscard]] VkDbImpObject* find(VkDbObjectId id) const;

  [[nodiscard]] VkDbImpObject& at(std::uint32_t slot) const { return slotAt(slot).part; }

  // Null when the object's drawing is closed.
  [[nodiscard]] static VkDbObjectId idOf(const VkDbImpObject& object);
  [[nodiscard]] static VkDbObject* objectOf(VkDbImpObject& object);

  // Slots that are in use now.
  [[nodiscard]] std::size_t size() const;

 private:
  static constexpr std::size_t objectSize = 2 * sizeof(void*);

  struct Slot {
    VkDbImpObject part;
    alignas(void*) std::array<std::byte, objectSize> object;
  };

  static constexpr std::uint32_t slotsPerChunk = 1U << 16;
  static constexpr std::uint32_t maximumChunks = 1U << 12;
  // Old ids are signed: one more bit would make them negative.
  static constexpr std::uint32_t lastGeneration = 0x7FFF'FFFF;

  ObjectTable() = default;

  [[nodiscard]] Slot& slotAt(std::uint32_t slot) const {
    return chunks_[slot / slotsPerChunk].load(std::memory_order_acquire)[slot % slotsPerChunk];
  }
  Slot& takeSlot();
  void makeFree(VkDbImpObject& object);

  mutable std::mutex mutex_;
  // Each free slot names the next one in `record`.
  std::uint32_t firstFree_ = dxf::none;
  std::size_t size_ = 0;
  // Slots from here on were never touched.
  std::atomic<std::uint32_t> used_{0};
  // A chunk stays where it is, so that find() needs no lock.
  std::array<std::atomic<Slot*>, maximumChunks> chunks_{};
};

}  // namespace velt::database
