#include "embedded/database/NameFolding.h"

#include <locale.h>
#include <wctype.h>

#include <algorithm>

namespace velt::database {
namespace {

// The C library's tables of characters. Null when the machine lacks them: then only ASCII is folded.
locale_t unicode() {
  static const locale_t locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
  return locale;
}

constexpr wchar_t dottedCapitalI = 0x130;
constexpr wchar_t dotlessSmallI = 0x131;

}  // namespace

wchar_t foldCharacter(wchar_t character) {
  if (character < 0x80) {
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character + (L'a' - L'A'))
                                                  : character;
  }
  if (character == dottedCapitalI || character == dotlessSmallI || unicode() == nullptr) return character;
  // Through the capital, so that all characters with a common capital become one: both small sigmas, and the micro sign
  // and mu.
  const wint_t capital = towupper_l(static_cast<wint_t>(character), unicode());
  return static_cast<wchar_t>(towlower_l(capital, unicode()));
}

std::wstring foldName(std::wstring_view name) {
  std::wstring folded(name);
  std::transform(folded.begin(), folded.end(), folded.begin(), foldCharacter);
  return folded;
}

bool sameName(std::wstring_view one, std::wstring_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](wchar_t a, wchar_t b) { return foldCharacter(a) == foldCharacter(b); });
}

}  // namespace velt::database
