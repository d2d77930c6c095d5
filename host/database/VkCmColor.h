#pragma once

// VkCmColor: a color. A 32-bit value whose top byte tells how the color is meant, and two names for a color that comes
// from a color book.
//
//   0xC0  by layer: that of the entity's layer     0xC2  true color: 0xC2RRGGBB
//   0xC1  by block: that of the block reference    0xC3  color index, in the lowest byte
//
// Called by: GetPropertiesInfo and IsDifferentByLayerColors, to compare colors. Copies are deep, and nothing fails but
// for memory.
//
// Two colors are equal when the value and both names are.

#include <cstdint>

class VkCmColor {
 public:
  // Not a color yet: unequal to every color that a layer can have.
  VkCmColor();
  VkCmColor(const VkCmColor& other);
  VkCmColor& operator=(const VkCmColor& other);
  ~VkCmColor();

  // By value and names.
  bool operator==(const VkCmColor& other) const;
  bool operator!=(const VkCmColor& other) const;

  // Whether the top byte of the value is 0xC0.
  bool isByLayer() const;
  // The value alone: names are kept.
  void setColor(std::uint32_t value);
  std::uint32_t color() const;
  // Name of the color within its book, and name of the book. Copied; null counts as empty.
  void setNames(const wchar_t* colorName, const wchar_t* bookName);
  // Never null; valid until the names change.
  const wchar_t* colorName() const;
  const wchar_t* bookName() const;

 private:
  std::uint32_t value_;
  wchar_t* colorName_;
  wchar_t* bookName_;
};
