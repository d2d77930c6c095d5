#pragma once

// CStdStr: the string of every name, message and out-parameter text.
//
// The characters are a standard string, held in a block that copies share, so copying a string allocates nothing:
// property records are copied freely between the cache, the lists and the merge. A change gives this string a block of
// its own and never touches those of others.
//
// Threads: strings that share a block may be on different threads; one string object is for one thread at a time.
// Failure: what makes a text throws std::bad_alloc without memory; copying, moving and comparing never throw.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "host/platform/Interlocked.h"
#include "text/Format.h"

template <class CharT>
class CStdStr {
 public:
  CStdStr() = default;
  CStdStr(const CharT* text)
      : CStdStr(text != nullptr ? std::basic_string<CharT>(text) : std::basic_string<CharT>()) {}
  CStdStr(std::basic_string<CharT> text) : block_(text.empty() ? nullptr : new Block{1, std::move(text)}) {}
  CStdStr(const CStdStr& other) : block_(other.block_) {
    if (block_ != nullptr) tqInterlockedIncrement(&block_->refCount);
  }
  CStdStr(CStdStr&& other) noexcept : block_(std::exchange(other.block_, nullptr)) {}
  ~CStdStr() { release(); }

  CStdStr& operator=(const CStdStr& other) {
    if (block_ != other.block_) {
      CStdStr copy(other);
      std::swap(block_, copy.block_);
    }
    return *this;
  }
  CStdStr& operator=(CStdStr&& other) noexcept {
    std::swap(block_, other.block_);
    return *this;
  }

  const CharT* c_str() const { return str().c_str(); }
  const std::basic_string<CharT>& str() const { return block_ != nullptr ? block_->text : emptyText(); }
  std::size_t length() const { return str().size(); }
  bool empty() const { return block_ == nullptr; }

  // Negative, 0 or positive, by the values of the characters; upper and lower case differ. Null is the empty string.
  int Compare(const CharT* other) const {
    return str().compare(other != nullptr ? other : emptyText().c_str());
  }

  // Replaces the text by the format with its placeholders filled in (see text/Format.h). The format may be
  // this string's own text.
  template <class... Arguments>
  void Format(const CharT* format, const Arguments&... arguments) {
    *this = CStdStr(velt::text::formatted<CharT>(format, arguments...));
  }

  // True when both have the same block, and so are equal without a look at the characters.
  bool sharesWith(const CStdStr& other) const { return block_ == other.block_; }

  friend bool operator==(const CStdStr& a, const CStdStr& b) { return a.sharesWith(b) || a.str() == b.str(); }
  friend auto operator<=>(const CStdStr& a, const CStdStr& b) { return a.str() <=> b.str(); }

 private:
  struct Block {
    std::int32_t refCount;
    std::basic_string<CharT> text;
  };

  static const std::basic_string<CharT>& emptyText() {
    static const std::basic_string<CharT> empty;
    return empty;
  }

  void release() {
    if (block_ != nullptr && tqInterlockedDecrement(&block_->refCount) == 0) delete block_;
  }

  // Null is the empty string.
  Block* block_ = nullptr;
};
