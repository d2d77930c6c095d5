// Drawings to measure on, as DXF text.
#pragma once

#include <cstdint>
#include <string>

namespace velt::bench {

enum class Content {
  EqualLines,  ///< lines that differ in nothing but their handles: every value of every entity is read and compared
  Lines,  ///< lines of various places, layers and colours, as in a drawing
  Mixed,  ///< one entity of each class by turns, beginning with a line, likewise various
};

/// The entities stand in model space, and nothing else does. The same text for the same arguments.
[[nodiscard]] std::string drawingOf(Content content, std::uint32_t entities);

/// Two polylines in model space.
[[nodiscard]] std::string drawingOfPolylines(std::uint32_t vertices);

/// References to one dynamic block, by way of two anonymous ones, each with so many attributes; or the same to two
/// ordinary ones.
[[nodiscard]] std::string drawingOfReferences(std::uint32_t references, std::uint32_t attributes,
                                              bool isDynamic);

}  // namespace velt::bench
