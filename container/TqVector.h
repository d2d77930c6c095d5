#pragma once

// TqVector: the array type of every list of the property layer.
//
// A vector is one pointer to a reference-counted data block. Copies share the block; a non-const access to a vector
// whose block is shared first gives it a clone of its own. So lists are passed and stored by value at the cost of a
// pointer and an atomic increment. An empty vector points to the host's shared empty block, which is counted like any
// other (so a non-const begin() of an empty vector clones, too).
//
// Threads: vectors that share a block may be copied and destroyed on different threads; elements and single vector
// objects are not protected.
//
// Failures are reported to the crash recorder by a status, and never thrown:
//   24  an index outside the logical length, which is then used as it is
//    2  last() of an empty vector, which answers a new element that nobody frees (without memory, always the same one)
//    6  no memory: the vector stays as it was, so push_back adds nothing and copyBeforeWrite() answers false

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <new>
#include <utility>

#include "container/TqHeapOp.h"
#include "container/TqPolicies.h"
#include "host/platform/VectorBlock.h"

struct TqVectorData : TqVectorBlock, TqHeapOp {};

template <class T, class Allocator = TqDefaultMemAllocator<T>, class RefCounter = TqRefCounter,
          class GrowPolicy = TqVectorDefaultGrowPolicy>
class TqVector {
 public:
  using value_type = T;
  using size_type = std::uint32_t;
  using iterator = T*;
  using const_iterator = const T*;

  TqVector() : block_(gpEmptyVectorData) { RefCounter::addReference(block_->refCount); }
  TqVector(const TqVector& other) : block_(other.block_) { RefCounter::addReference(block_->refCount); }
  TqVector(TqVector&& other) noexcept : TqVector() { std::swap(block_, other.block_); }
  ~TqVector() { release(block_); }

  TqVector& operator=(const TqVector& other) {
    // Mostly both are empty, and then counting the empty block up and down would cost more.
    if (block_ == other.block_) return *this;
    TqVector copy(other);
    std::swap(block_, copy.block_);
    return *this;
  }
  TqVector& operator=(TqVector&& other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }

  size_type length() const { return block_->logicalLength; }
  size_type logicalLength() const { return block_->logicalLength; }
  size_type size() const { return block_->logicalLength; }
  size_type physicalLength() const { return block_->physicalLength; }
  bool isEmpty() const { return block_->logicalLength == 0; }
  bool empty() const { return isEmpty(); }
  bool isValidIndex(int index) const { return index >= 0 && static_cast<size_type>(index) < length(); }

  const_iterator begin() const { return elements(); }
  const_iterator end() const { return elements() + length(); }
  iterator begin() {
    copyBeforeWrite();
    return elements();
  }
  iterator end() {
    copyBeforeWrite();
    return elements() + length();
  }

  const T& at(int index) const {
    reportUnlessValid(index);
    return *addressOf(index);
  }
  T& at(int index) {
    copyBeforeWrite();
    reportUnlessValid(index);
    return *addressOf(index);
  }
  const T& operator[](size_type index) const { return at(static_cast<int>(index)); }
  T& operator[](size_type index) { return at(static_cast<int>(index)); }

  const_iterator iteratorAt(int index) const { return &at(index); }
  iterator iteratorAt(int index) { return &at(index); }

  const T& last() const { return isEmpty() ? lastOfNothing() : elements()[length() - 1]; }
  T& last() {
    if (isEmpty()) return lastOfNothing();
    copyBeforeWrite();
    return elements()[length() - 1];
  }

  void push_back(const T& element) { append(element); }
  TqVector& append(const T& element) {
    if (holds(element)) {
      const T copy(element);
      appendForeign(copy);
    } else {
      appendForeign(element);
    }
    return *this;
  }
  TqVector& append(const TqVector& other) {
    const size_type before = length();
    const size_type added = other.length();
    if (added == 0 || !setLogicalLength(before + added)) return *this;
    const T* const source = &other == this ? elements() : other.elements();
    TqElementConstructor<T>::assign(elements() + before, source, added);
    return *this;
  }

  // The same, but elements that nobody shares are moved: afterwards other holds what their places held before.
  TqVector& append(TqVector&& other) {
    if (&other == this || other.isShared()) return append(static_cast<const TqVector&>(other));
    const size_type before = length();
    const size_type added = other.length();
    if (added == 0 || !setLogicalLength(before + added)) return *this;
    std::move(other.elements(), other.elements() + added, elements() + before);
    return *this;
  }

  void clear() { setLogicalLength(0); }

  // Slots between the old and the new logical length keep whatever they hold. False when memory cannot be had.
  bool setLogicalLength(size_type length) {
    if (length == block_->logicalLength) return true;
    if (length > block_->physicalLength) {
      const size_type grown =
          GrowPolicy::growCount(block_->logicalLength, block_->physicalLength, length, ownGrowCount());
      if (!setPhysicalLength(grown)) return false;
    } else if (!copyBeforeWrite(length)) {
      return false;
    }
    block_->logicalLength = length;
    return true;
  }

  // Keeps the first elements that fit. False when memory cannot be had.
  bool setPhysicalLength(size_type length) {
    if (length == block_->physicalLength) return true;
    if (length == 0) {
      *this = TqVector();
      return true;
    }
    return replaceBlock(newBlock(length, ownGrowCount(), block_->logicalLength, isShared()));
  }

  // Makes the block this vector's own, with min(keep, logical length) elements, when others share it. False
  // when memory cannot be had: the block is then still shared and must not be written.
  bool copyBeforeWrite(size_type keep) {
    if (!isShared()) return true;
    // QUIRK(shared_block_written_without_memory): a block that cannot be cloned stays shared, and who writes through
    // begin(), end(), at() or last() without looking here writes to all who share it; hosts prefer that to a crash.
    return replaceBlock(clone(keep));
  }
  bool copyBeforeWrite() { return copyBeforeWrite(block_->logicalLength); }

 private:
  bool isShared() const { return RefCounter::read(block_->refCount) >= 2; }

  // A vector without a block of its own grows by the default, whatever stands in the block that all such vectors share.
  size_type ownGrowCount() const {
    return block_ == gpEmptyVectorData ? GrowPolicy::defaultGrowCount : block_->growCount;
  }

  T* elements() const { return static_cast<T*>(block_->elements); }

  // Callers get this address for any index, also outside the array, where pointer arithmetic would be undefined.
  T* addressOf(int index) const {
    return reinterpret_cast<T*>(reinterpret_cast<std::uintptr_t>(block_->elements)
                                + static_cast<std::uintptr_t>(static_cast<std::intptr_t>(index)) * sizeof(T));
  }

  bool holds(const T& element) const {
    const std::less<const T*> before;
    return !before(&element, elements()) && before(&element, elements() + block_->physicalLength);
  }

  void appendForeign(const T& element) {
    const size_type at = length();
    if (setLogicalLength(at + 1)) elements()[at] = element;
  }

  void reportUnlessValid(int index) const {
    // QUIRK(index_not_clamped): a wrong index is reported and then used as it is.
    if (!isValidIndex(index)) velt::errors::reportToCrashRecorder(Velt::eInvalidIndex);
  }

  static T& lastOfNothing() {
    // QUIRK(last_of_empty): callers hold a reference for as long as they like, so the element is never freed.
    velt::errors::reportToCrashRecorder(Velt::eNoElement);
    if (T* const made = new (std::nothrow) T()) return *made;
    velt::errors::reportToCrashRecorder(Velt::eOutOfMemory);
    static T standIn;
    return standIn = T();
  }

  TqVectorBlock* clone(size_type keep) const {
    // QUIRK(clone_of_empty_holds_16): a clone of a block without slots gets 16.
    constexpr size_type slotsOfAnEmptyClone = 16;
    const size_type physical = block_->physicalLength != 0 ? block_->physicalLength : slotsOfAnEmptyClone;
    return newBlock(physical, ownGrowCount(), keep, true);
  }

  // A block with min(keep, logical length, physical) of this vector's elements, or null (status 6 is reported).
  // Elements that others share are copied, all others are moved.
  TqVectorBlock* newBlock(size_type physical, size_type growCount, size_type keep, bool shared) const {
    T* const cells = Allocator::alloc(physical);
    if (cells == nullptr) return nullptr;
    TqVectorData* const made = new TqVectorData;
    if (made == nullptr) {
      Allocator::dealloc(cells);
      velt::errors::reportToCrashRecorder(Velt::eOutOfMemory);
      return nullptr;
    }
    const size_type kept = std::min({keep, block_->logicalLength, physical});
    if (shared) {
      TqElementConstructor<T>::assign(cells, elements(), kept);
    } else {
      std::move(elements(), elements() + kept, cells);
    }
    static_cast<TqVectorBlock&>(*made) = {1, kept, physical, growCount, cells};
    return made;
  }

  bool replaceBlock(TqVectorBlock* made) {
    // QUIRK(unchanged_without_memory): the vector keeps what it holds, so an append adds nothing and clear() of a
    // shared vector removes nothing; only the crash recorder is told.
    if (made == nullptr) return false;
    release(std::exchange(block_, made));
    return true;
  }

  static void release(TqVectorBlock* block) {
    if (!RefCounter::releaseIsLast(block->refCount)) return;
    Allocator::dealloc(static_cast<T*>(block->elements));
    delete static_cast<TqVectorData*>(block);
  }

  // Never null.
  TqVectorBlock* block_;
};
