#pragma once

// Drawings to measure on, as DXF text.

#include <cstdint>
#include <string>

namespace velt::bench {

enum class Content {
  // Lines that differ in nothing but their handles, so every value of every entity is read and compared.
  EqualLines,
  // Lines at different places, on different layers, in different colors, as in a drawing.
  Lines,
  // The same with one entity of each class in turn, beginning with a line.
  Mixed,
};

// Model space holds these entities and no others. The same arguments give the same text.
[[nodiscard]] std::string drawingOf(Content content, std::uint32_t entities);

// Drawings that are large in some way, of `size` entities in model space.
enum class Shape {
  // Lines in a drawing without a HEADER section.
  WithoutHeader,
  // The entities of the gallery, which has every class, over and over.
  EveryClass,
  // Paragraphs of 4,000 characters.
  LongTexts,
  // Lines, each on a layer of its own.
  ManyLayers,
  // References, each to a block of its own.
  ManyBlocks,
  // Lines, each with the data of three applications.
  ExtendedData,
  // One polyline, of so many vertices.
  OnePolyline,
};
[[nodiscard]] std::string drawingOf(Shape shape, std::uint32_t size);

// Two polylines in model space.
[[nodiscard]] std::string drawingOfPolylines(std::uint32_t vertices);

// References to one dynamic block, half of them through each of two anonymous blocks, with that many attributes each;
// or the same references to two ordinary blocks.
[[nodiscard]] std::string drawingOfReferences(std::uint32_t references, std::uint32_t attributes,
                                              bool isDynamic);

}  // namespace velt::bench
