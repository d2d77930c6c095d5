#pragma once

// The merge of a multi-selection as a programmer on Qt would write it, in three ways: which properties do all objects have,
// and which have the same value in all of them?
//
// What they leave out is what the layer has to do besides: asking whether each row can be edited, by which rules it is
// edited, what a point consists of, and in which order rows stand. They are a yardstick, not a replacement.

#include <memory>
#include <vector>

#include <QObject>

namespace velt::bench {

using Objects = std::vector<std::unique_ptr<QObject>>;

// Lines that differ in nothing.
[[nodiscard]] Objects lineObjects(std::size_t count);
// Of each of them.
[[nodiscard]] std::size_t propertiesOf(const Objects& objects);

// Each gives how many rows the merge has whose value is the same in all objects.

// By the properties' indexes, which are the same in all objects of a class. Requires objects of one class.
[[nodiscard]] std::size_t mergeByIndex(const Objects& objects);
// Finds each property of each object in a hash of rows.
[[nodiscard]] std::size_t mergeByHash(const Objects& objects);
// Asks each object for the properties that the first one has, by their names.
[[nodiscard]] std::size_t mergeByName(const Objects& objects);

}  // namespace velt::bench
