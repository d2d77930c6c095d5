#include "recorder/replay/TextReplacement.h"

#include <random>

#include "recorder/Values.h"

namespace velt::recorder {

namespace {

constexpr std::wstring_view place = L"%ls";

bool isText(const json& value) {
  return value.is_object() && value.size() == 1
         && (value.value("text", json()).is_string() || value.value("units", json()).is_array());
}

}  // namespace

TextReplacement::TextReplacement(std::uint64_t seed, std::function<bool(const std::wstring&)> isKnown)
    : seed_(seed), isKnown_(std::move(isKnown)), kept_{L""} {}

void TextReplacement::learn(const json& line) {
  const json name = line.value("call", json());
  if (name == "LoadLibraryExW" || name == "loadResourceDll") kept_.insert(textFrom(line.at("in").at("name")));
  if (name != "LoadStringW") return;
  const std::wstring text = textFrom(line.at("out").at("string"));
  kept_.insert(text);
  if (const auto at = text.find(place); at != std::wstring::npos)
    formats_.emplace_back(text.substr(0, at), text.substr(at + place.size()));
}

void TextReplacement::replaceIn(json& line) {
  visit(line);
}

void TextReplacement::visit(json& value) {
  if (isText(value)) {
    const std::wstring text = replaced(textFrom(value));
    value = textJson(text.data(), text.size());
  } else if (value.is_structured()) {
    for (json& inside : value)
      visit(inside);
  }
}

std::wstring TextReplacement::replaced(const std::wstring& text) {
  if (kept_.contains(text) || isKnown_(text)) return text;
  for (const auto& [before, after] : formats_) {
    if (text.size() > before.size() + after.size() && text.starts_with(before) && text.ends_with(after))
      return before + replaced(text.substr(before.size(), text.size() - before.size() - after.size()))
             + after;
  }
  auto [found, isNew] = replacements_.try_emplace(text);
  if (isNew) found->second = madeUpFor(text);
  return found->second;
}

std::wstring TextReplacement::madeUpFor(const std::wstring& text) {
  // Letters are enough for all but many short texts; those take from more characters each time.
  constexpr int triesWithLetters = 20;
  constexpr std::uint32_t firstOfMany = 0x4E00;
  constexpr std::uint32_t many = 0x5000;
  std::mt19937_64 random(seed_ ^ std::hash<std::wstring>()(text));
  std::wstring made(text.size(), L'x');
  for (int tries = 0;; ++tries) {
    for (wchar_t& character : made) {
      character = tries < triesWithLetters ? static_cast<wchar_t>(L'a' + random() % 26)
                                           : static_cast<wchar_t>(firstOfMany + random() % many);
    }
    if (!kept_.contains(made) && !isKnown_(made) && used_.insert(made).second) return made;
  }
}

}  // namespace velt::recorder
