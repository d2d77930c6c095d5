#pragma once

// The process-wide table of database objects. An id is the number of a slot and the slot's generation, which changes
// with each object that the slot holds. So an id that outlived its drawing, or was made up, is recognised.
//
// Ownership: the table owns the objects; a drawing makes them with acquire() and ends them with release(). The memory
// of slots is used again and never given back.
// Threads: acquire(), release() and find() may be called on every thread. An object itself belongs to the thread that
// uses its drawing.

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
  [[nodiscard]] static ObjectTable& ofProcess() noexcept { return table_; }

  // A new object for a record of the drawing. Throws std::bad_alloc without memory, or when all slots are in use.
  [[nodiscard]] VkDbImpObject& acquire(Drawing& drawing, const ObjectClass& objectClass,
                                       std::uint32_t record);

  // Makes the object's id stale. The slot is used again once nobody has the object open.
  void release(VkDbImpObject& object);

  // To be called when an object is closed and nobody else has it open.
  void closed(VkDbImpObject& object);

  // Null for the null id, a stale one and one that was made up.
  [[nodiscard]] VkDbImpObject* find(VkDbObjectId id) const {
    const auto value = static_cast<std::uint64_t>(id.asOldId());
    const auto generation = static_cast<std::uint32_t>(value >> generationShift);
    const auto slot = static_cast<std::uint32_t>(value);
    if (generation == 0 || slot >= used_.load(std::memory_order_acquire)) return nullptr;
    VkDbImpObject& part = slotAt(slot).part;
    return part.generation.load(std::memory_order_acquire) == generation ? &part : nullptr;
  }

  // Whether an object that find() answered for this id is still the one: objects are never moved.
  [[nodiscard]] static bool names(VkDbObjectId id, const VkDbImpObject& object) {
    const auto value = static_cast<std::uint64_t>(id.asOldId());
    return object.generation.load(std::memory_order_acquire)
           == static_cast<std::uint32_t>(value >> generationShift);
  }

  [[nodiscard]] VkDbImpObject& at(std::uint32_t slot) const { return slotAt(slot).part; }

  // Null when the object's drawing is closed.
  [[nodiscard]] static VkDbObjectId idOf(const VkDbImpObject& object);
  [[nodiscard]] static VkDbObject* objectOf(VkDbImpObject& object);

  // Slots that are in use now.
  [[nodiscard]] std::size_t size() const;

 private:
  static constexpr unsigned generationShift = 32;
  static constexpr std::size_t objectSize = 2 * sizeof(void*);

  struct Slot {
    VkDbImpObject part;
    alignas(void*) std::array<std::byte, objectSize> object;
  };

  static constexpr std::uint32_t slotsPerChunk = 1U << 16;
  static constexpr std::uint32_t maximumChunks = 1U << 12;
  // One more bit would make old ids, which are signed, negative.
  static constexpr std::uint32_t lastGeneration = 0x7FFF'FFFF;

  constexpr ObjectTable() = default;

  // Made before any constructor runs and never destroyed: objects may be closed until the process ends.
  static constinit ObjectTable table_;

  [[nodiscard]] Slot& slotAt(std::uint32_t slot) const {
    return chunks_[slot / slotsPerChunk].load(std::memory_order_acquire)[slot % slotsPerChunk];
  }
  Slot& takeSlot();
  void makeFree(VkDbImpObject& object);

  mutable std::mutex mutex_;
  // A free slot keeps the number of the next free one in `record`.
  std::uint32_t firstFree_ = dxf::none;
  std::size_t size_ = 0;
  // Slots from this one on have never been used.
  std::atomic<std::uint32_t> used_{0};
  // A chunk is never moved or freed, so find() needs no lock.
  std::array<std::atomic<Slot*>, maximumChunks> chunks_{};
};

}  // namespace velt::database
