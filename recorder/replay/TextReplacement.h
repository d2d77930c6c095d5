#pragma once

// Replaces the texts of a recording by others of the same length, so that it can be sent without what a drawing says. The
// same text becomes the same one everywhere, and different ones stay different: the layer does on the result what it did
// on the recording.
//
// What stays: empty texts, the texts of resource libraries and their names, and the words that the layer knows a property
// or a type by.

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace velt::recorder {

using nlohmann::json;

class TextReplacement {
 public:
  // `isKnown`: whether the layer knows the word. The seed makes the replacements unlike those of another recording.
  TextReplacement(std::uint64_t seed, std::function<bool(const std::wstring&)> isKnown);

  // First all lines, to learn what stays; then each again.
  void learn(const json& line);
  void replaceIn(json& line);

 private:
  std::wstring replaced(const std::wstring& text);
  std::wstring madeUpFor(const std::wstring& text);
  void visit(json& value);

  std::uint64_t seed_;
  std::function<bool(const std::wstring&)> isKnown_;
  std::set<std::wstring> kept_;
  // Messages with a place for a name: what stands before the place, and after it.
  std::vector<std::pair<std::wstring, std::wstring>> formats_;
  std::unordered_map<std::wstring, std::wstring> replacements_;
  std::set<std::wstring> used_;
};

}  // namespace velt::recorder
