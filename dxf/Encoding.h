#pragma once

// From the bytes of a drawing's texts to UTF-32, and back.

#include <memory>
#include <string>
#include <string_view>

#include "dxf/CodePage.h"

namespace velt::dxf {

// How a drawing's texts are written: in UTF-8 since version AC1021 of the format, in a code page before. Copies are
// cheap and share the page.
//
// Threads: all members may be called from several threads.
class Encoding {
 public:
  [[nodiscard]] static Encoding utf8() { return {nullptr, "UTF-8"}; }
  // The code page that a drawing names in $DWGCODEPAGE ("ANSI_1252", "dos850", "big5", ...), in upper or lower case. An
  // unknown name, the empty one included, means ANSI_1252.
  [[nodiscard]] static Encoding ofCodePage(std::string_view drawingCodePage);
  // From the values of $ACADVER and $DWGCODEPAGE, each empty when the drawing lacks it.
  [[nodiscard]] static Encoding ofDrawing(std::string_view version, std::string_view drawingCodePage);

  // "UTF-8", "CP1252", ...
  [[nodiscard]] const std::string& name() const noexcept { return name_; }
  [[nodiscard]] bool isUtf8() const noexcept { return page_ == nullptr; }

  // For showing: \U+XXXX and \M+nXXXX become their characters, bytes that are not a character become U+FFFD. So
  // encode() of the result need not give the bytes back: write only texts that were changed.
  [[nodiscard]] std::wstring decode(std::string_view bytes) const;

  // What a drawing in this encoding writes for the text. decode() gives the same text back where canHold() is true.
  // A character that the page lacks becomes \U+XXXX, one above U+FFFF two of them (a surrogate pair). A backslash after
  // which the text would read as such an escape becomes one itself. Control characters, which no value can hold, become
  // a caret and a letter (a line end is ^J).
  [[nodiscard]] std::string encode(std::wstring_view text) const;
  // What encode() writes for the character at that place of the text.
  [[nodiscard]] std::string encodeAt(std::wstring_view text, std::size_t place) const;

  // Whether every reader finds the character again: escapes are made for characters up to U+FFFF, and not all readers
  // put the two halves of a pair together.
  [[nodiscard]] bool canHold(wchar_t character) const;

 private:
  Encoding(std::shared_ptr<const CodePage> page, std::string name)
      : page_(std::move(page)), name_(std::move(name)) {}

  void append(std::wstring_view text, std::size_t place, std::string& bytes) const;

  // Null for UTF-8.
  std::shared_ptr<const CodePage> page_;
  std::string name_;
};

}  // namespace velt::dxf
