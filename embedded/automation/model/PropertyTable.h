#pragma once

// What a class of automation objects offers: one table, one row per property.
//
// Everything that an object answers about its properties is read from these rows: type information, names, values,
// categories, editability, choices, elements, weights. So a class is a file with a table, and nothing else knows it.
// Tables are constant data and live as long as the process; the getters and setters that they name run on the caller's
// thread and report what they cannot do by throwing Refusal.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/automation/model/Categories.h"
#include "embedded/automation/model/Reasons.h"
#include "embedded/automation/model/Subject.h"
#include "embedded/automation/model/UserTypes.h"
#include "embedded/automation/model/Value.h"
#include "host/com/Guid.h"

namespace velt::automation {

struct PropertyRow;

// How a property falls into elements. Elements are numbered through: those of the first group, those of the second...
// and an element's cookie is its number.
struct ElementAccess {
  // Of the elements of a group, the same in every group.
  std::span<const wchar_t* const> labels;
  // Shown after the row's own label: "Start" and "X" give "Start X".
  bool labelsFollowRow = false;
  // 0: there is one group only.
  SHORT grouping = 0;
  // Null: there is always one.
  std::size_t (*groups)(const Subject&, const PropertyRow&) = nullptr;
  // Only elements that exist are asked for. Writing needs a row that can be written.
  double (*get)(const Subject&, const PropertyRow&, std::size_t element);
  void (*put)(const Subject&, const PropertyRow&, std::size_t element, double) = nullptr;
};

// Which numbers a stored value may be given.
enum class Limit : std::uint8_t { None, Positive, NotNegative, NotZero };

enum class AccessKind : std::uint8_t {
  // Read and written by functions of the class.
  Computed,
  // A stored pair of group code and value, as are the following.
  Real,
  // Stored in degrees, offered in radians.
  Degrees,
  // The same, offered from 0 up to a full turn.
  Direction,
  Integer,
  // The bit `mask` of a stored integer.
  Bit,
  Text,
  // Stored in world coordinates, expanded into X, Y and Z.
  WorldPoint,
  // Stored in the entity's own plane, offered in world coordinates, expanded.
  ObjectPoint,
  // A variable of the entity's dimension style, which the entity may override.
  StyleVariable,
};

// How a property is read and written. Whether it may be written is told by the row's writability.
struct Access {
  AccessKind kind = AccessKind::Computed;
  // Group code of a stored value.
  int code = 0;
  // The subclass marker after which it stands.
  const char* subclass = "";
  // The value that counts when the drawing stores none.
  double otherwise = 0;
  std::int32_t mask = 0;
  Limit limit = Limit::None;
  Value (*get)(const Subject&, const PropertyRow&) = nullptr;
  // Null: nobody knows how, and the row is read-only.
  void (*put)(const Subject&, const PropertyRow&, const Value&) = nullptr;
  // Null: not expanded.
  const ElementAccess* elements = nullptr;
  // The version of the first format that can hold it; empty: all can.
  const char* since = "";
  // A put changes neither place nor size of the entity, so that hatches and dimensions that follow it stay right.
  bool keepsShape = false;
  // The names that the row offers, until the next call; for Choices::OfClass.
  const std::vector<std::wstring>& (*names)(const Subject&) = nullptr;
  // Whether what is read after a put is what was put; null: as its type suggests (see Sameness.h).
  bool (*isSame)(const Value& put, const Value& got) = nullptr;

  // The same with one thing different, for rows of a table.

  [[nodiscard]] constexpr Access limited(Limit to) const {
    Access same = *this;
    same.limit = to;
    return same;
  }
  [[nodiscard]] constexpr Access positive() const { return limited(Limit::Positive); }
  [[nodiscard]] constexpr Access notNegative() const { return limited(Limit::NotNegative); }
  [[nodiscard]] constexpr Access notZero() const { return limited(Limit::NotZero); }
  [[nodiscard]] constexpr Access from(const char* version) const {
    Access same = *this;
    same.since = version;
    return same;
  }
  [[nodiscard]] constexpr Access comparedBy(bool (*comparison)(const Value& put, const Value& got)) const {
    Access same = *this;
    same.isSame = comparison;
    return same;
  }
  [[nodiscard]] constexpr Access offering(const std::vector<std::wstring>& (*some)(const Subject&)) const {
    Access same = *this;
    same.names = some;
    return same;
  }
  [[nodiscard]] constexpr Access keepingShape() const {
    Access same = *this;
    same.keepsShape = true;
    return same;
  }
};

// What stands in the way of changing a property of some entities of a class.
struct Obstacle {
  // Which entities, as the help tells it after "Read-only where".
  const wchar_t* where;
  // The reason that holds for this entity; null: none does.
  const Reason* (*reasonFor)(const Subject&);
};

// Whether a property may be changed, and if not, why.
struct Writability {
  // The reason that holds for every entity; null: none does.
  const Reason* never = nullptr;
  // Null: nothing stands in the way but what holds for all rows (see Editor.h).
  const Obstacle* obstacle = nullptr;
  // Palettes are told of the obstacle by the answer whether the row is editable there.
  bool obstacleShows = false;
};

// What the column of that name holds.

inline constexpr Writability writable = {};
constexpr Writability readOnly(const Reason& why) {
  return {.never = &why};
}
// A merge drops a row for which the answers of the selected entities differ, so this is for obstacles that like entities
// share.
constexpr Writability readOnlyWhere(const Obstacle& obstacle) {
  return {.obstacle = &obstacle, .obstacleShows = true};
}
// Only the put tells.
constexpr Writability refusedWhere(const Obstacle& obstacle) {
  return {.obstacle = &obstacle};
}

// Where the predefined values of a property come from.
enum class Choices : std::uint8_t {
  None,
  // The members of the row's type.
  Enumeration,
  // The drawing's own table at the moment of the call, as are the following.
  Layers,
  Linetypes,
  TextStyles,
  DimStyles,
  // ByLayer, ByBlock and the named colors.
  Colors,
  // The known gradient patterns.
  Gradients,
  // Names that the class tells: see Access::names.
  OfClass,
};

// Bits of a row's flags.
enum RowFlag : std::uint8_t {
  // Type information marks it hidden.
  rowHidden = 1,
  // Type information marks it non-browsable.
  rowNonBrowsable = 2,
};

// Bits for the variants of a class (see AutomationClass::variant): the row is shown for these only.
using Variants = std::uint8_t;
inline constexpr Variants everyVariant = 0xFF;
constexpr Variants variant(std::int32_t number) {
  return static_cast<Variants>(1U << static_cast<unsigned>(number));
}

struct PropertyRow {
  // Never 0, which a writer takes for "no such name", nor -23, by which palettes mark other rows.
  DISPID dispId;
  const wchar_t* name;
  const wchar_t* label;
  ValueType type;
  CategoryId category;
  Access access;
  Writability writability;
  Choices choices;
  std::int32_t weight;
  // What the property is. Why it cannot be changed is told by its writability (see HelpText.h).
  const wchar_t* help;
  Variants shownFor = everyVariant;
  std::uint8_t flags = 0;

  // Whether the property of some entities at least can be changed.
  [[nodiscard]] constexpr bool isWritable() const { return writability.never == nullptr; }
};

struct AutomationClass {
  CLSID clsid;
  // In type information: "VeltLine".
  const wchar_t* name;
  // What people call such an entity.
  const wchar_t* label;
  // The type of the records that it stands for; empty: any.
  std::string_view dxfName;
  // Picks the class's records among those of the type; null for all that no other class picks.
  bool (*standsFor)(const database::Drawing&, std::uint32_t record) = nullptr;
  const wchar_t* help;
  // The rows that it shares with others; they come first. Null: none.
  const std::span<const PropertyRow>* general = nullptr;
  // Rows that it shares with related classes; they stand between the general ones and its own.
  std::span<const std::span<const PropertyRow>* const> families = {};
  // The rows of its own.
  std::span<const PropertyRow> rows = {};
  // Which of its variants an object is, 0 to 7; null when there is only one. A property list that was harvested from
  // one object serves all others of the same class and variant, so whether a row is shown may depend on nothing else.
  std::int32_t (*variant)(const Subject&) = nullptr;

  // An object of the class can be bound to that record.
  [[nodiscard]] bool takes(const database::Drawing& drawing, std::uint32_t record) const {
    if (dxfName.empty()) return true;
    return drawing.view(record).type() == dxfName && (standsFor == nullptr || standsFor(drawing, record));
  }
};

}  // namespace velt::automation
