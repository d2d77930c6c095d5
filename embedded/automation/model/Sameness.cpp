#include "embedded/automation/model/Sameness.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string>
#include <type_traits>
#include <variant>
#include <vector>

#include "dxf/Numbers.h"
#include "embedded/automation/geometry/Angle.h"
#include "embedded/database/NameFolding.h"

namespace velt::automation {
namespace {

bool areSameNumbers(const double* put, const double* got, std::size_t count) {
  double scale = 0;
  for (std::size_t i = 0; i < count; ++i)
    scale = std::max(scale, std::abs(put[i]));
  return std::equal(put, put + count, got, [scale](double a, double b) { return isSameNumber(a, b, scale); });
}

// Of a list or of the one point that a list of three numbers comes as.
std::optional<std::vector<double>> coordinatesIn(const Value& value) {
  if (const auto* point = std::get_if<Vector3>(&value)) return std::vector{point->x, point->y, point->z};
  const auto* numbers = std::get_if<std::vector<double>>(&value);
  return numbers != nullptr ? std::optional(*numbers) : std::nullopt;
}

bool isAngle(const PropertyRow& row) {
  return row.access.kind == AccessKind::Direction || row.type.user == &types::angle;
}

// Tables find their entries whatever the case, and spell them their own way.
bool hasNamesAsChoices(const PropertyRow& row) {
  return row.choices == Choices::Layers || row.choices == Choices::Linetypes
         || row.choices == Choices::TextStyles || row.choices == Choices::DimStyles
         || row.choices == Choices::Gradients || row.choices == Choices::OfClass;
}

std::wstring widened(const std::string& ascii) {
  return {ascii.begin(), ascii.end()};
}

// Empty for values that no sentence has room for.
std::wstring wordsFor(const Value& value) {
  if (const auto* real = std::get_if<double>(&value)) return widened(dxf::formatReal(*real));
  if (const auto* integer = std::get_if<std::int32_t>(&value)) return std::to_wstring(*integer);
  if (const auto* flag = std::get_if<bool>(&value)) return *flag ? L"yes" : L"no";
  if (const auto* text = std::get_if<std::wstring>(&value)) return L"\"" + *text + L"\"";
  return {};
}

}  // namespace

bool isSameNumber(double put, double got, double scale) {
  constexpr double rounding = 1e-9;
  return put == got || std::abs(put - got) <= rounding * std::max({std::abs(put), std::abs(got), scale});
}

bool isSameAngle(const Value& put, const Value& got) {
  const auto& angle = valueAs<double>(put);
  return isSameNumber(std::remainder(angle - valueAs<double>(got), fullTurn), 0,
                      std::max(fullTurn, std::abs(angle)));
}

bool isSameName(const Value& put, const Value& got) {
  return database::sameName(valueAs<std::wstring>(put), valueAs<std::wstring>(got));
}

bool isSameValue(const PropertyRow& row, const Value& put, const Value& got) {
  if (row.access.isSame != nullptr) return row.access.isSame(put, got);
  if (std::holds_alternative<OwnedDispatch>(got)) return true;
  if (const auto coordinates = coordinatesIn(put)) {
    const auto others = coordinatesIn(got);
    return others && coordinates->size() == others->size()
           && areSameNumbers(coordinates->data(), others->data(), others->size());
  }
  if (put.index() != got.index()) return false;
  if (const auto* real = std::get_if<double>(&put)) {
    return isAngle(row) ? isSameAngle(put, got) : isSameNumber(*real, std::get<double>(got));
  }
  if (const auto* text = std::get_if<std::wstring>(&put)) {
    const auto& other = std::get<std::wstring>(got);
    return hasNamesAsChoices(row) ? isSameName(put, got) : *text == other;
  }
  if (const auto* flag = std::get_if<bool>(&put)) return *flag == std::get<bool>(got);
  return std::get<std::int32_t>(put) == std::get<std::int32_t>(got);
}

bool isExactlySame(const Value& put, const Value& got) {
  if (const auto coordinates = coordinatesIn(put)) return coordinates == coordinatesIn(got);
  if (put.index() != got.index()) return false;
  return std::visit(
      [&]<class T>(const T& one) {
        if constexpr (std::is_same_v<T, OwnedDispatch>) {
          return false;
        } else {
          return one == std::get<T>(got);
        }
      },
      put);
}

bool isNumberLeft(const PropertyRow& row, const Value& before, const Value& got) {
  if (row.access.isSame != nullptr || isAngle(row)) return false;
  return (std::holds_alternative<double>(got) || coordinatesIn(got)) && isExactlySame(before, got);
}

Refusal notGivenBack(const Value& got) {
  const std::wstring words = wordsFor(got);
  return {E_FAIL, L"The drawing would give back " + (words.empty() ? L"another value" : words)
                      + L" instead: it cannot hold this value here, or the data of the entity is damaged."};
}

}  // namespace velt::automation
