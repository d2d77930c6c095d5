#include "embedded/automation/leaders/MultileaderRecord.h"

#include "dxf/Numbers.h"

namespace velt::automation {
namespace {

constexpr std::string_view subclass = "AcDbMLeader";

// The texts that open and close parts.
constexpr int contentsOpen = 300;
constexpr int contentsClose = 301;
constexpr int leaderOpen = 302;
constexpr int leaderClose = 303;
constexpr int lineOpen = 304;
constexpr int lineClose = 305;

// 304 is also the wording of the text, so the words count as well.
std::optional<MultileaderPart> partAfter(MultileaderPart now, int code, std::string_view value) {
  if (code == contentsOpen && value == "CONTEXT_DATA{") return MultileaderPart::Contents;
  if (now == MultileaderPart::Contents && code == leaderOpen && value == "LEADER{")
    return MultileaderPart::Leader;
  if (now == MultileaderPart::Leader && code == lineOpen && value == "LEADER_LINE{")
    return MultileaderPart::Line;
  if (value != "}") return std::nullopt;
  if (now == MultileaderPart::Line && code == lineClose) return MultileaderPart::Leader;
  if (now == MultileaderPart::Leader && code == leaderClose) return MultileaderPart::Contents;
  if (now == MultileaderPart::Contents && code == contentsClose) return MultileaderPart::Itself;
  return std::nullopt;
}

}  // namespace

template <class Visitor>
void MultileaderRecord::visit(Visitor&& visitor) const {
  MultileaderPart part = MultileaderPart::Itself;
  lens_.view().visit(subclass, [&](std::size_t index) {
    const auto next = partAfter(part, lens_.view().code(index), dxf::trimmed(lens_.view().value(index)));
    if (next) part = *next;
    return visitor(part, index);
  });
}

std::optional<std::string_view> MultileaderRecord::value(MultileaderPart wanted, int code) const {
  std::optional<std::string_view> found;
  visit([&](MultileaderPart part, std::size_t index) {
    if (part == wanted && lens_.view().code(index) == code) found = lens_.view().value(index);
    return !found;
  });
  return found;
}

double MultileaderRecord::real(MultileaderPart part, int code, double otherwise) const {
  const auto text = value(part, code);
  return text ? dxf::parseReal(*text).value_or(otherwise) : otherwise;
}

std::int64_t MultileaderRecord::integer(MultileaderPart part, int code, std::int64_t otherwise) const {
  const auto text = value(part, code);
  return text ? dxf::parseInteger<std::int64_t>(*text).value_or(otherwise) : otherwise;
}

std::uint64_t MultileaderRecord::handle(MultileaderPart part, int code) const {
  const auto text = value(part, code);
  return text ? dxf::parseHandle(*text).value_or(0) : 0;
}

std::wstring MultileaderRecord::text(MultileaderPart part, int code) const {
  const auto text = value(part, code);
  return text ? lens_.drawing().decode(*text) : std::wstring();
}

Vector3 MultileaderRecord::point(MultileaderPart part, int code, const Vector3& otherwise) const {
  if (!value(part, code)) return otherwise;
  return {real(part, code, 0), real(part, code + 10, 0), real(part, code + 20, 0)};
}

std::vector<Vector3> MultileaderRecord::vertices() const {
  std::vector<Vector3> found;
  visit([&](MultileaderPart part, std::size_t index) {
    if (part != MultileaderPart::Line) return true;
    const int code = lens_.view().code(index);
    const auto number = [&] { return dxf::parseReal(lens_.view().value(index)).value_or(0.0); };
    if (code == 10) found.push_back({number(), 0, 0});
    if (code == 20 && !found.empty()) found.back().y = number();
    if (code == 30 && !found.empty()) found.back().z = number();
    return true;
  });
  return found;
}

std::size_t MultileaderRecord::count(MultileaderPart wanted) const {
  std::size_t found = 0;
  MultileaderPart before = MultileaderPart::Itself;
  visit([&](MultileaderPart part, std::size_t) {
    if (part == wanted && part > before) ++found;
    before = part;
    return true;
  });
  return found;
}

}  // namespace velt::automation
