#pragma once

// Drawings to measure on, as DXF text.

#include <cstdint>
#include <string>

namespace velt::bench {

enum class Content {
  // Lines that differ in nothing but their handles: every value of every entity is read and compared.
  EqualLines,
  // Lines of various places, layers and colors, as in a drawing.
  Lines,
  // One entity of each class by turns, beginning with a line, likewise various.
  Mixed,
};

// The entities stand in model space, and nothing else does. The same text for the same arguments.
[[nodiscard]] std::string drawingOf(Content content, std::uint32_t entities);

// Two polylines in model space.
[[nodiscard]] std::string drawingOfPolylines(std::uint32_t vertices);

// References to one dynamic block, by way of two anonymous ones, each with so many attributes; or the same to two
// ordinary ones.
[[nodiscard]] std::string drawingOfReferences(std::uint32_t references, std::uint32_t attributes,
                                              bool isDynamic);

}  // namespace velt::bench
