#pragma once

// What a class of automation objects offers: one table, one row per property.
//
// Everything that an object answers about its properties is read from these rows: type information, names, values,
// categories, editability, choices, elements, weights. So a class is a file with a table, and nothing else knows it.
// Tables are constant data and live as long as the process; the getters and setters they name run on the caller's
// thread and report what they cannot do by throwing Refusal.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "embedded/automation/model/Categories.h"
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
  // Shown behind the row's own label: "Start" and "X" give "Start X".
  bool labelsFollowRow;
  // 0: there is one group only.
  SHORT grouping;
  std::size_t (*groups)(const Subject&, const PropertyRow&);
  // Only elements that exist are asked for. Writing needs a row that can be written.
  double (*get)(const Subject&, const PropertyRow&, std::size_t element);
  void (*put)(const Subject&, const PropertyRow&, std::size_t element, double);
};

// Which numbers a stored value may be given.
enum class Limit : std::uint8_t { None, Positive, NotNegative, NotZero };

enum class AccessKind : std::uint8_t {
  // By functions of the class.
  Computed,
  // One stored pair, as are the following.
  Real,
  // Stored in degrees, offered in radians.
  Degrees,
  // The same, offered from 0 up to a full turn.
  Direction,
  Integer,
  // Of a stored integer: `mask`.
  Bit,
  Text,
  // Stored in world coordinates, expanded into X, Y and Z.
  WorldPoint,
  // Stored in the entity's own plane, offered in world coordinates, expanded.
  ObjectPoint,
  // Of the entity's dimension style, or overridden by the entity.
  StyleVariable,
};

// How a property is read and written.
struct Access {
  AccessKind kind;
  // Group code of a stored value.
  int code;
  // The subclass marker that it stands behind.
  const char* subclass;
  // What a stored value is when it is not there.
  double otherwise;
  std::int32_t mask;
  Limit limit;
  Value (*get)(const Subject&, const PropertyRow&);
  // Null: read-only.
  void (*put)(const Subject&, const PropertyRow&, const Value&);
  // Null: not expanded.
  const ElementAccess* elements;
  // The version of the first format that can hold it; empty: all can.
  const char* since = "";

  bool keepsShape =
      // Of a class's own row: whoever follows the entity's place and size need not know.
      false;

  // What stands in the way of a put to this entity, as a sentence, or null for nothing; null: never anything. Of a row
  // that can be written to some entities of a class only.
  const wchar_t* (*obstacle)(const Subject&, const PropertyRow&) = nullptr;
  // Palettes are told of the obstacle by the answer whether the row is editable there. A merge drops a row for which
  // the answers of the selected entities differ, so this is for obstacles that like entities share.
  bool obstacleShows = true;

  // The same with one thing different, for rows of a table.

  [[nodiscard]] constexpr Access readOnly() const {
    Access same = *this;
    same.put = nullptr;
    return same;
  }
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
  [[nodiscard]] constexpr Access keepingShape() const {
    Access same = *this;
    same.keepsShape = true;
    return same;
  }
  [[nodiscard]] constexpr Access unless(const wchar_t* (*hindered)(const Subject&,
                                                                   const PropertyRow&)) const {
    Access same = *this;
    same.obstacle = hindered;
    return same;
  }
  // Only the put tells.
  [[nodiscard]] constexpr Access refusedWhere(const wchar_t* (*hindered)(const Subject&,
                                                                         const PropertyRow&)) const {
    Access same = unless(hindered);
    same.obstacleShows = false;
    return same;
  }
};

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
};

// As bits of a row's flags.
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
  DISPID
  // Never 0, which a writer takes for "no such name", nor -23, by which palettes mark other rows.
  dispId;
  const wchar_t* name;
  const wchar_t* label;
  ValueType type;
  CategoryId category;
  Access access;
  Choices choices;
  std::int32_t weight;
  // For a row that is read-only, or is for some entities, also why.
  const wchar_t* help;
  std::uint8_t flags = 0;
  Variants shownFor = everyVariant;

  [[nodiscard]] constexpr bool isWritable() const { return access.put != nullptr; }
};

struct AutomationClass {
  CLSID clsid;
  // Of its type: "VeltLine".
  const wchar_t* name;
  // What people call such an entity.
  const wchar_t* label;
  // The records that it stands for; empty: any.
  std::string_view dxfName;
  const wchar_t* help;
  const std::span<const PropertyRow>*
      // The rows that it shares with others; they come first. Null: none.
      general;
  // Its own.
  std::span<const PropertyRow> rows;
  // Which of its variants an object is, 0 to 7; null when there is only one. A property list that was harvested from
  // one object serves all others of the same class and variant, so whether a row is shown may depend on nothing else.
  std::int32_t (*variant)(const Subject&) = nullptr;
  // Rows that it shares with related classes; they stand between the general ones and its own.
  std::span<const std::span<const PropertyRow>* const> families = {};
  // Picks the class's records among those of the name; null for all that no other class picks.
  bool (*standsFor)(const database::Drawing&, std::uint32_t record) = nullptr;

  // An object of the class can be bound to that record.
  [[nodiscard]] bool takes(const database::Drawing& drawing, std::uint32_t record) const {
    if (dxfName.empty()) return true;
    return drawing.view(record).type() == dxfName && (standsFor == nullptr || standsFor(drawing, record));
  }
};

}  // namespace velt::automation
