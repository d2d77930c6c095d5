#include "host/database/VkCmColor.h"

#include <cwchar>
#include <utility>

namespace {

constexpr std::uint32_t methodMask = 0xFF000000;
constexpr std::uint32_t byLayerMethod = 0xC0000000;
// Not a color that a drawing can hold, so none is equal to a color that was never set.
constexpr std::uint32_t noColor = 0;

// Null for the empty name, which most colors have.
wchar_t* copyName(const wchar_t* name) {
  if (name == nullptr || *name == L'\0') return nullptr;
  const std::size_t size = std::wcslen(name) + 1;
  return std::wmemcpy(new wchar_t[size], name, size);
}

const wchar_t* shown(const wchar_t* name) {
  return name != nullptr ? name : L"";
}

}  // namespace

VkCmColor::VkCmColor() : value_(noColor), colorName_(nullptr), bookName_(nullptr) {}

VkCmColor::VkCmColor(const VkCmColor& other) : VkCmColor() {
  value_ = other.value_;
  setNames(other.colorName_, other.bookName_);
}

VkCmColor& VkCmColor::operator=(const VkCmColor& other) {
  if (this != &other) {
    setNames(other.colorName_, other.bookName_);
    value_ = other.value_;
  }
  return *this;
}

VkCmColor::~VkCmColor() {
  delete[] colorName_;
  delete[] bookName_;
}

bool VkCmColor::operator==(const VkCmColor& other) const {
  return value_ == other.value_ && std::wcscmp(colorName(), other.colorName()) == 0
         && std::wcscmp(bookName(), other.bookName()) == 0;
}

bool VkCmColor::operator!=(const VkCmColor& other) const {
  return !(*this == other);
}

bool VkCmColor::isByLayer() const {
  return (value_ & methodMask) == byLayerMethod;
}

void VkCmColor::setColor(std::uint32_t value) {
  value_ = value;
}

std::uint32_t VkCmColor::color() const {
  return value_;
}

void VkCmColor::setNames(const wchar_t* colorName, const wchar_t* bookName) {
  // Copied before the old ones are deleted: a caller may pass the names of this very color, and memory may run out.
  wchar_t* newColorName = copyName(colorName);
  wchar_t* newBookName = nullptr;
  try {
    newBookName = copyName(bookName);
  } catch (...) {
    delete[] newColorName;
    throw;
  }
  delete[] std::exchange(colorName_, newColorName);
  delete[] std::exchange(bookName_, newBookName);
}

const wchar_t* VkCmColor::colorName() const {
  return shown(colorName_);
}

const wchar_t* VkCmColor::bookName() const {
  return shown(bookName_);
}
