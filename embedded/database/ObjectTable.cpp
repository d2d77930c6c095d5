#include "embedded/database/ObjectTable.h"

#include <new>
#include <type_traits>

namespace velt::database {
namespace {

class PlainObject final : public VkDbObject {
 public:
  explicit PlainObject(VkDbImpObject* part) : VkDbObject(part) {}
};

class EntityObject final : public VkDbEntity {
 public:
  explicit EntityObject(VkDbImpObject* part) : VkDbEntity(part) {}
};

class BlockReferenceObject final : public VkDbBlockReference {
 public:
  explicit BlockReferenceObject(VkDbImpObject* part) : VkDbBlockReference(part) {}
};

class LayerObject final : public VkDbLayerTableRecord {
 public:
  explicit LayerObject(VkDbImpObject* part) : VkDbLayerTableRecord(part) {}
};

// These objects need no destructor, so a slot can be filled anew without ending the one before.
template <class T>
void construct(std::array<std::byte, 2 * sizeof(void*)>& storage, VkDbImpObject& part) {
  static_assert(sizeof(T) == sizeof(storage) && std::is_trivially_destructible_v<T>);
  new (storage.data()) T(&part);
}

}  // namespace

constinit ObjectTable ObjectTable::table_;
static_assert(std::is_trivially_destructible_v<ObjectTable>);

ObjectTable::Slot& ObjectTable::takeSlot() {
  if (firstFree_ != dxf::none) {
    Slot& taken = slotAt(firstFree_);
    firstFree_ = taken.part.record;
    return taken;
  }
  const std::uint32_t slot = used_.load(std::memory_order_relaxed);
  const std::uint32_t chunk = slot / slotsPerChunk;
  if (chunk == maximumChunks) throw std::bad_alloc();
  if (slot % slotsPerChunk == 0) {
    // Not initialised as a whole, so that a small drawing does not touch pages that it does not need.
    void* const memory = ::operator new (std::size_t{slotsPerChunk} * sizeof(Slot));
    chunks_[chunk].store(static_cast<Slot*>(memory), std::memory_order_release);
  }
  Slot& taken = *new (&slotAt(slot)) Slot;
  taken.part.slot = slot;
  used_.store(slot + 1, std::memory_order_release);
  return taken;
}

VkDbImpObject& ObjectTable::acquire(Drawing& drawing, const ObjectClass& objectClass, std::uint32_t record) {
  const std::lock_guard lock(mutex_);
  Slot& slot = takeSlot();
  VkDbImpObject& part = slot.part;
  part.drawing = &drawing;
  part.objectClass = &objectClass;
  part.record = record;
  part.isErased = false;
  switch (objectClass.shape) {
    case Shape::Object:
      construct<PlainObject>(slot.object, part);
      break;
    case Shape::Entity:
      construct<EntityObject>(slot.object, part);
      break;
    case Shape::BlockReference:
      construct<BlockReferenceObject>(slot.object, part);
      break;
    case Shape::Layer:
      construct<LayerObject>(slot.object, part);
      break;
  }
  part.generation.store(part.nextGeneration++, std::memory_order_release);
  ++size_;
  return part;
}

void ObjectTable::release(VkDbImpObject& object) {
  const std::lock_guard lock(mutex_);
  object.generation.store(0, std::memory_order_release);
  object.drawing = nullptr;
  --size_;
  if (object.opens == 0) makeFree(object);
}

void ObjectTable::closed(VkDbImpObject& object) {
  if (object.drawing != nullptr) return;
  const std::lock_guard lock(mutex_);
  makeFree(object);
}

void ObjectTable::makeFree(VkDbImpObject& object) {
  // A slot whose generations are used up is never used again, or an old id could become valid once more.
  if (object.nextGeneration > lastGeneration) return;
  object.record = firstFree_;
  firstFree_ = object.slot;
}

VkDbObjectId ObjectTable::idOf(const VkDbImpObject& object) {
  const std::uint64_t generation = object.generation.load(std::memory_order_acquire);
  VkDbObjectId id;
  if (generation != 0) id.setFromOldId(static_cast<long>((generation << generationShift) | object.slot));
  return id;
}

VkDbObject* ObjectTable::objectOf(VkDbImpObject& object) {
  // Every shape derives from VkDbObject alone, so its VkDbObject begins where the storage begins.
  Slot& slot = ofProcess().slotAt(object.slot);
  return std::launder(reinterpret_cast<VkDbObject*>(slot.object.data()));
}

std::size_t ObjectTable::size() const {
  const std::lock_guard lock(mutex_);
  return size_;
}

}  // namespace velt::database
