#pragma once

// Lists that must not lose an element: where memory runs out, these end the operation, while the vector itself carries
// on. The vector has told the crash recorder then.

#include <algorithm>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

#include "container/TqVector.h"
#include "errors/Guard.h"

namespace velt::propdata {

template <class T>
void mustAppend(TqVector<T>& list, const T& element) {
  const auto before = list.length();
  list.append(element);
  if (list.length() == before) throw errors::ReportedShortage();
}

template <class T>
void mustAppendAll(TqVector<T>& list, TqVector<T>&& elements) {
  const auto after = list.length() + elements.length();
  list.append(std::move(elements));
  if (list.length() != after) throw errors::ReportedShortage();
}

// Empties a list. A shared one needs a block of its own for that; without memory for it the list lets go of the shared
// one, so that nobody takes the rows of an earlier operation for those of this one.
template <class T>
void mustClear(TqVector<T>& list) {
  list.clear();
  if (list.isEmpty()) return;
  list = TqVector<T>();
  throw errors::ReportedShortage();
}

// Makes room for so many elements in all; by halves, because a vector grows by no more than it is asked for.
template <class T>
void reserve(TqVector<T>& list, std::uint32_t elements) {
  const std::uint32_t physical = list.physicalLength();
  if (elements <= physical) return;
  if (!list.setPhysicalLength(std::max(elements, physical + physical / 2))) throw errors::ReportedShortage();
}

// Appends one by one to a list that may become long. A long one would be moved for every eight elements; with this it is
// moved a few times only, and in the end it has as many slots all the same, which callers see. Without memory for fewer
// slots it keeps the larger block.
template <class T>
class Appender {
 public:
  explicit Appender(TqVector<T>& list) : list_(list), slots_(list.physicalLength()) {}
  Appender(const Appender&) = delete;
  Appender& operator=(const Appender&) = delete;
  ~Appender() { list_.setPhysicalLength(slots_); }

  void append(const T& element) {
    constexpr std::uint32_t few = 64;
    const std::uint32_t length = list_.length();
    if (length == slots_) {
      slots_ += TqVectorDefaultGrowPolicy::defaultGrowCount;
      const std::uint32_t wanted = length < few ? slots_ : 2 * length;
      if (slots_ > list_.physicalLength() && !list_.setPhysicalLength(wanted))
        throw errors::ReportedShortage();
    }
    mustAppend(list_, element);
  }

 private:
  TqVector<T>& list_;
  // What the list would have by now.
  std::uint32_t slots_;
};

// The elements to write to. Not begin() and end(), each of which gives a shared list a block of its own: with memory
// short, one may succeed after the other failed, and the two then point into different blocks.
template <class T>
std::span<T> writable(TqVector<T>& list) {
  if (!list.copyBeforeWrite()) throw errors::ReportedShortage();
  return {list.begin(), list.length()};
}

// A list with as many slots as one that got its elements one by one, which callers may see, but moved only once.
template <class T>
TqVector<T> appendedOneByOne(std::vector<T> elements) {
  constexpr std::size_t step = TqVectorDefaultGrowPolicy::defaultGrowCount;
  TqVector<T> list;
  if (elements.empty()) return list;
  const std::size_t slots = (elements.size() + step - 1) / step * step;
  if (!list.setPhysicalLength(static_cast<std::uint32_t>(slots))) throw errors::ReportedShortage();
  if (!list.setLogicalLength(static_cast<std::uint32_t>(elements.size()))) throw errors::ReportedShortage();
  std::move(elements.begin(), elements.end(), writable(list).begin());
  return list;
}

}  // namespace velt::propdata
