#pragma once

// A header of a CAD program that has its own spelling of a color. It was there before the layer was.

#include <cstdint>

namespace drawing {

class Color {
 public:
  Color();
  Color(const Color& other);
  Color& operator=(const Color& other);
  ~Color();

  bool operator==(const Color& other) const;
  bool operator!=(const Color& other) const;

  bool isByLayer() const;
  void setColor(std::uint32_t value);
  std::uint32_t color() const;
  void setNames(const wchar_t* colorName, const wchar_t* bookName);

 private:
  std::uint32_t value_;
  wchar_t* colorName_;
  wchar_t* bookName_;
};

}  // namespace drawing
