#pragma once

// A color: a 32-bit value whose top byte tells the method (0xC0 by layer, 0xC1 by block, 0xC2 true color
// with red, green and blue in the lower bytes, 0xC3 index in the lowest byte), and the names of a color
// book, which may be empty. Two colors are equal when the value and both names are.

#include <cstdint>

class VkCmColor {
 public:
  VkCmColor();  // index 0 by method "none": unequal to every color of a layer
  VkCmColor(const VkCmColor& other);
  VkCmColor& operator=(const VkCmColor& other);
  ~VkCmColor();

  bool operator==(const VkCmColor& other) const;
  bool operator!=(const VkCmColor& other) const;

  bool isByLayer() const;
  void setColor(std::uint32_t value);
  std::uint32_t color() const;
  void setNames(const wchar_t* colorName, const wchar_t* bookName);  // null counts as empty
  const wchar_t* colorName() const;
  const wchar_t* bookName() const;

 private:
  std::uint32_t value_;
  wchar_t* colorName_;
  wchar_t* bookName_;
};
