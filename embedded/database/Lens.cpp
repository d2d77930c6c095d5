#include "embedded/database/Lens.h"

#include "dxf/Numbers.h"
#include "embedded/database/RecordShapes.h"

namespace velt::database {

// Looked up by nearly every call of a query, so what these functions hand to each other fits into registers.

namespace {

constexpr std::size_t nowhere = RecordShapes::nowhere;

}  // namespace

inline std::size_t Lens::indexOf(int code, std::string_view subclass) const {
  return drawing_->shapes().find(record_, view_, code, subclass);
}

std::optional<std::size_t> Lens::find(int code, std::string_view subclass) const {
  const std::size_t index = indexOf(code, subclass);
  return index != nowhere ? std::optional(index) : std::nullopt;
}

std::optional<std::string_view> Lens::value(int code, std::string_view subclass) const {
  const std::size_t index = indexOf(code, subclass);
  return index != nowhere ? std::optional(view_.value(index)) : std::nullopt;
}

bool Lens::has(int code, std::string_view subclass) const {
  return indexOf(code, subclass) != nowhere;
}

double Lens::real(int code, std::string_view subclass, double otherwise) const {
  const std::size_t index = indexOf(code, subclass);
  double number = otherwise;
  return index != nowhere && dxf::readReal(view_.value(index), number) ? number : otherwise;
}

std::int64_t Lens::integer(int code, std::string_view subclass, std::int64_t otherwise) const {
  const std::size_t index = indexOf(code, subclass);
  return index != nowhere ? dxf::parseInteger<std::int64_t>(view_.value(index)).value_or(otherwise)
                          : otherwise;
}

std::uint64_t Lens::handle(int code, std::string_view subclass, std::uint64_t otherwise) const {
  const std::size_t index = indexOf(code, subclass);
  return index != nowhere ? dxf::parseHandle(view_.value(index)).value_or(otherwise) : otherwise;
}

std::wstring Lens::text(int code, std::string_view subclass, std::wstring_view otherwise) const {
  const auto text = value(code, subclass);
  return text ? drawing_->decode(*text) : std::wstring(otherwise);
}

std::wstring Lens::name(int code, std::string_view subclass, std::wstring_view otherwise) const {
  const auto text = value(code, subclass);
  return text && !dxf::trimmed(*text).empty() ? drawing_->decode(dxf::trimmed(*text))
                                              : std::wstring(otherwise);
}

bool Lens::readPoint(int code, std::string_view subclass, double& x, double& y, double& z) const {
  const auto pairs = drawing_->shapes().pointPairs(record_, view_, code, subclass);
  return pairs && view_.readPoint(*pairs, x, y, z);
}

std::vector<double> Lens::reals(int code, std::string_view subclass) const {
  std::vector<double> found;
  view_.visit(subclass, [&](std::size_t index) {
    if (view_.code(index) == code) found.push_back(dxf::parseReal(view_.value(index)).value_or(0.0));
    return true;
  });
  return found;
}

std::vector<Point> Lens::points(int code, std::string_view subclass) const {
  std::vector<Point> found;
  view_.visit(subclass, [&](std::size_t index) {
    const int here = view_.code(index);
    const auto number = [&] { return dxf::parseReal(view_.value(index)).value_or(0.0); };
    if (here == code) found.push_back({number(), 0.0, 0.0});
    if (here == code + 10 && !found.empty()) found.back()[1] = number();
    if (here == code + 20 && !found.empty()) found.back()[2] = number();
    return true;
  });
  return found;
}

std::vector<std::wstring> Lens::texts(int code, std::string_view subclass) const {
  std::vector<std::wstring> found;
  view_.visit(subclass, [&](std::size_t index) {
    if (view_.code(index) == code) found.push_back(drawing_->decode(view_.value(index)));
    return true;
  });
  return found;
}

}  // namespace velt::database
