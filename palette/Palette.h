#pragma once

// The palette library: what every palette over the property layer needs. In any host:
//
//   Selection selection(ids);
//   for (const Category& category : byCategory(selection.query()))
//     for (const Row& row : category.rows) show(row.label(), row.text());
//   const Row layer = selection.row("Layer");
//   tell(selection.write(layer, layer.parse("Walls")).summary());
//
// Ownership. A Selection owns the automation objects of its entities, the rows of its last query and their values. A
// Row is a view of one of them: it must not be used after the selection asks again, or ends. A Value owns what it
// holds, and must end before the host does.
//
// Entities are named by their id, or by their index in the selection, from 0.
//
// Texts are UTF-8. Numbers are those of the records: lengths in drawing units, angles in radians; texts have them in the
// formats of a NumberStyle, which is decimal lengths and degrees unless it says otherwise.
//
// Failures are exceptions: Error, whose message is that of the layer or the host when they gave one, and
// std::bad_alloc. A function that fails has changed nothing, unless its comment says so.
//
// Long work. Where the host lets users cancel (the embedded host does: embedded/platform/Watch.h), whatever asks it may
// throw Cancelled, an Error of its own kind. Writes do not throw it: they answer what became of each entity.
//
// Threads. All calls come from one thread, the palette's, as with the layer.
//
// For anything else call the layer itself: its functions take Row::record() and Selection::entries().

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "holders/VariantHolder.h"
#include "palette/Export.h"
#include "propdata/VeltPropData.h"

namespace velt::palette {

class VELT_PALETTE_EXPORT Error : public std::runtime_error {
 public:
  explicit Error(const std::string& message);
  ~Error() override;
};

// The user has cancelled the operation.
class VELT_PALETTE_EXPORT Cancelled : public Error {
 public:
  using Error::Error;
  ~Cancelled() override;
};

// ---------------------------------------------------------------------------------------------------------
// Values
// ---------------------------------------------------------------------------------------------------------

// What a value is to a program that knows nothing of COM: nothing, yes or no, a number, a text. Objects are their text
// (see Row::text). Nothing also stands for values of kinds that no palette shows, such as arrays.
using PlainValue = std::variant<std::monostate, bool, std::int64_t, std::uint64_t, double, std::string>;

// Whether both are the same value. Numbers are compared by value, whatever their type, and reals exactly.
VELT_PALETTE_EXPORT bool isSame(const PlainValue& a, const PlainValue& b);

// The number that the value is; nothing for any other value. Whole numbers of more than 53 bits are rounded.
VELT_PALETTE_EXPORT std::optional<double> numberOf(const PlainValue& value);

// A value of a property. Owns what it holds; can be moved, not copied.
class VELT_PALETTE_EXPORT Value {
 public:
  // Nothing.
  Value() = default;
  // Takes over what the holder holds.
  explicit Value(holders::VariantHolder held);

  // Throws Error for bytes that are not UTF-8, and for the character NUL.
  static Value ofText(std::string_view text);
  static Value ofReal(double number);
  static Value ofInteger(std::int32_t number);
  static Value ofFlag(bool isYes);

  PlainValue plain() const;
  // Owned by this value.
  const VARIANT& variant() const { return held_.get(); }

 private:
  holders::VariantHolder held_;
};

// The numbers are those of the variables LUNITS and AUNITS.
enum class LengthFormat {
  scientific = 1,
  decimal = 2,
  // Feet and decimal inches, feet and fractions of inches: 1'-3.50", 1'-3 1/2". The drawing's unit is an inch.
  engineering = 3,
  architectural = 4,
  // Whole numbers and fractions: 15 1/2.
  fractional = 5
};
enum class AngleFormat {
  degrees = 0,
  degreesMinutesSeconds = 1,
  grads = 2,
  radians = 3,
  // Directions from north or south: N 45° E.
  surveyor = 4
};

// How numbers are written, and which of several readings of a text is meant. A palette takes it from the drawing, so that
// people meet the units in which they draw.
struct VELT_PALETTE_EXPORT NumberStyle {
  // The number of a drawing variable; nothing for one that the drawing does not have.
  using Variable = std::function<std::optional<double>(std::string_view name)>;
  // Asks for LUNITS, LUPREC, AUNITS, AUPREC, ANGBASE (in degrees), ANGDIR, DIMZIN and UNITMODE. What is missing, or is none of the numbers
  // that mean something, is as in NumberStyle().
  static NumberStyle ofVariables(const Variable& variable);

  // Decimal places of lengths and areas, and of every other number with a unit. Of fractions, how often one is halved.
  int lengthPlaces = 4;
  // Decimal places of angles. Of degrees, minutes and seconds 0 shows degrees, 1 and 2 minutes, 3 and 4 seconds, and
  // more the places of seconds.
  int anglePlaces = 0;
  LengthFormat lengthFormat = LengthFormat::decimal;
  AngleFormat angleFormat = AngleFormat::degrees;
  // Where directions begin, in degrees counterclockwise from the x axis, and whether they count clockwise.
  double angleBase = 0;
  bool isClockwise = false;
  // All digits, as plain numbers and degrees in whatever format.
  bool isPrecise = false;
  // Decimal numbers: 0.5 rather than .5, and 2.5000 rather than 2.5.
  bool hasLeadingZeros = true;
  bool hasTrailingZeros = true;
  // In feet and inches: 0'-6" rather than 6", and 1'-0" rather than 1'.
  bool hasZeroFeet = false;
  bool hasZeroInches = true;
  // As one types it: 5'6-1/2", 15-1/2 and N45d30'E in place of 5'-6 1/2", 15 1/2 and N 45°30' E.
  bool isAsTyped = false;
};

// ---------------------------------------------------------------------------------------------------------
// Rows
// ---------------------------------------------------------------------------------------------------------

// What a row shows in place of a value when the entities have different ones.
inline constexpr const char* variesText = "*VARIES*";

// One value of a fixed set.
struct Choice {
  std::string label;
  // What is written for it, where it is a number.
  std::optional<std::int32_t> integer{};
  std::optional<double> real{};
};

// Whether a row may be edited, and if not, why.
enum class Editability {
  editable,
  // The class offers no way to write the property.
  neverWritable,
  // It can be written, but not on these entities as they are.
  notNow
};

// What the numbers of a row count.
enum class Unit {
  // Nothing, as a factor, a number of things or the number of a choice; also of values that are no numbers.
  none,
  // Drawing units, and their squares.
  length,
  area,
  // Radians, in whatever form people read them.
  angle,
  // Of line weights, of which the negative ones stand for by layer and the like.
  hundredthOfMillimetre
};

// One entity's part in a dynamic row, without pointers.
struct DynamicSource {
  VkDbObjectId entity;
  bool hasProperty = false;

  friend bool operator==(const DynamicSource&, const DynamicSource&) = default;
};

// One field of a row's record, under the record's own name for it. A pointer to an automation object is given as the id
// of its entity (null for none), any other pointer as whether there is one.
struct Field {
  using Data = std::variant<PlainValue, VkDbObjectId, std::vector<std::string>, std::vector<std::int64_t>,
                            std::vector<double>, std::vector<DynamicSource>>;
  const char* name;
  Data data;
};

// A property of the selection. A view, as cheap as a pointer.
class VELT_PALETTE_EXPORT Row {
 public:
  // The record must outlive the row.
  explicit Row(const PROPINFO& record) : record_(&record) {}

  // The name that a palette shows, on one line.
  std::string label() const;
  // The name by which programs know the property.
  std::string name() const;
  // Empty where the host gives none.
  std::string help() const;
  std::int32_t categoryId() const { return record_->categoryId; }
  std::string categoryName() const;
  PropertyKind::Code kind() const { return static_cast<PropertyKind::Code>(record_->customType); }
  // Its numbers are angles, in radians.
  bool isAngle() const;
  // Of its numbers, as plain() gives and valueOf() takes them.
  Unit unit() const;

  // The entities have different values. The row's own value is then the first entity's.
  bool isVarying() const { return record_->isVaries; }
  // It comes from a property source and not from the type information.
  bool isDynamic() const { return record_->dispId == dynamicPropertyDispId; }
  bool hasChoices() const { return record_->hasChoices; }
  std::vector<Choice> choices() const;

  Editability editability() const;
  bool isEditable() const { return record_->isEditable; }

  // The value as a palette shows it, on one line: a choice by its label, a length or an angle in its format, a color by
  // its name, yes or no; variesText for a varying row. A number that is not 0 is not shown as 0.
  std::string text(const NumberStyle& style = {}) const;
  // Another value as this row would show it.
  std::string textOf(const Value& value, const NumberStyle& style = {}) const;
  // The value itself, of a varying row the first entity's.
  PlainValue plain() const;

  // Whether parse() can make a value of any text at all.
  bool takesText() const;
  // The value that a text means to this row: a choice by its label, in upper or lower case, or by its number; a number;
  // a length or an angle in any of the forms that text() makes in this style, or with its unit; yes or no; a text. Colors
  // stay texts, which the property itself understands. Throws an Error that says what is accepted.
  Value parse(std::string_view text, const NumberStyle& style = {}) const;

  // The value of a program's data, such as JSON, as this row takes it: in the type of the row, angles in radians. A text
  // is taken as it is where the row holds texts, and else as parse() takes it. Throws an Error that says what is accepted.
  Value valueOf(const PlainValue& data) const;

  // Every field of the record, in its order.
  std::vector<Field> fields() const;
  const PROPINFO& record() const { return *record_; }

 private:
  const PROPINFO* record_;
};

struct Category {
  std::int32_t id = 0;
  // Empty where the host gives none.
  std::string name{};
  std::vector<Row> rows{};
};

// Where a category stands among others: General first and Misc last, the other predefined ones by their number, and then
// those that an application or a plug-in has made up, which share one place.
VELT_PALETTE_EXPORT int placeOfCategory(std::int32_t id);

// The rows by category, each of which keeps the order of its rows. Categories stand by their place and, where that is
// the same, as their first rows stood; so they do not change their order when another entity is selected.
VELT_PALETTE_EXPORT std::vector<Category> byCategory(std::span<const Row> rows);

// The rows with that label or, when there are none, with that name. Upper and lower case do not differ.
VELT_PALETTE_EXPORT std::vector<Row> rowsNamed(std::span<const Row> rows, std::string_view name);

// ---------------------------------------------------------------------------------------------------------
// Writing
// ---------------------------------------------------------------------------------------------------------

// What became of one entity in a write.
enum class Fate {
  changed,
  // It already had the value.
  unchanged,
  // It is on a locked layer, and stays as it is.
  locked,
  // It, or its layer, cannot be opened.
  skipped,
  // The host refused the value, or took it and left the entity as it was.
  refused,
  // The write ended before it.
  notReached
};
inline constexpr std::array allFates = {Fate::changed, Fate::unchanged, Fate::locked,
                                        Fate::skipped, Fate::refused,   Fate::notReached};
VELT_PALETTE_EXPORT std::string_view nameOf(Fate fate);

// How a new value follows from the one that an entity has.
enum class Relation { plus, minus, times, dividedBy, replaced };

struct WriteOptions {
  // Goes on after an entity refuses the value.
  bool keepGoing = false;
  // Called now and then with how many entities are done, and how many there are; the write ends when it answers false.
  // Not called for dynamic rows, which are written in one call.
  std::function<bool(std::size_t done, std::size_t total)> progress{};
  // Of writeText(): how the palette shows the values.
  NumberStyle style{};
};

struct VELT_PALETTE_EXPORT Report {
  // One for each entity.
  std::vector<Fate> fates{};
  // By the index of each entity that refused; in the host's words, where it gave some. The layer asks for none, so the
  // value is put to an entity that refused once more, with room for them. One that takes it then counts as changed.
  std::map<std::size_t, std::string> reasons{};
  // What the layer said of the last refusal; may be empty.
  std::string message{};
  // The user has cancelled the write, or its progress has ended it. Entities that were changed before stay so.
  bool isCancelled = false;
  // Of writeText(): how many of the unchanged show the text although their number is another one, of more digits.
  std::size_t rounded = 0;

  std::size_t count(Fate fate) const;
  // "9 changed, 2 locked": the fates that occur, with their numbers.
  std::string summary() const;
};

// ---------------------------------------------------------------------------------------------------------
// Explanation
// ---------------------------------------------------------------------------------------------------------

// Entities with the same value of a row.
struct ValueGroup {
  PlainValue value{};
  // As the row would show it.
  std::string text{};
  std::vector<std::size_t> entities{};
};

// Why a selection has no row of a name.
struct Absence {
  enum class Cause {
    // There is one.
    none,

    // --- of one entity, and of a selection when it holds for all of its entities

    // The properties of the entity cannot be read at all; the message says why.
    unreadable,
    // The class has it, and says in its type information that it is not for people.
    hidden,
    // The class has it, and the object answers that it is not to be shown.
    notShown,
    // The class has something of that name that gives no value: a method, or a property that can only be written.
    notReadable,
    // A property source has it, and answers that it is disabled for the entity.
    disabled,
    // No such property is known, but a property source of the entity failed or is missing, and it may be one of its.
    sourceFailed,
    // There is no such property.
    unknown,

    // --- of a selection

    // Some have it and others do not.
    notCommon,
    // All have it as a dynamic property, but several entities have dynamic rows only when they are references to one
    // dynamic block.
    dynamicWithheld,
    // It is one of the elements that come in groups, such as vertices, which are shown of a single entity only.
    oneAtATime,
    // All have it, but not as the same property.
    different
  };
  // In what two entities' properties of one name can differ so that they are not the same property.
  enum class Part { category, name, label, editability, choices, isElement, elementCount, type };

  Cause cause = Cause::none;
  // notCommon: those without it. different: those whose property is not that of the first entity. For a cause of single
  // entities: those of which it holds.
  std::vector<std::size_t> entities{};
  // notCommon: what stands against the row in the first of `entities`.
  Cause ofEntity = Cause::none;
  // different: in what the property of the first of `entities` differs from that of the first entity of all.
  std::vector<Part> parts{};
  // In the words of the host, where there are some.
  std::string message{};
};

// ---------------------------------------------------------------------------------------------------------
// Selection
// ---------------------------------------------------------------------------------------------------------

// Selected entities, from set-up to teardown. Must end before the drawing does.
class VELT_PALETTE_EXPORT Selection {
 public:
  // Makes the automation objects of the entities. When one cannot be made, throws Error and releases the others.
  explicit Selection(std::span<const VkDbObjectId> entities);
  Selection(Selection&& other) noexcept;
  Selection& operator=(Selection&& other) noexcept;
  ~Selection();

  std::size_t size() const { return entries_.size(); }
  VkDbObjectId entity(std::size_t index) const;

  // Asks for the properties that all entities have, in display order; none for an empty selection. Rows of an earlier
  // query are no longer valid, and their values are given back. Throws Error, and there are no rows then.
  const std::vector<Row>& query();
  // The properties of one entity, as if it alone were selected, so with the dynamic rows that are only its own. For
  // reading: values(), write() and the functions that explain take rows of query().
  const std::vector<Row>& queryAlone(std::size_t entity);
  // Those of the last query.
  const std::vector<Row>& rows() const { return rows_; }
  // The row of that label or name. Throws Error when there is none, or more than one.
  Row row(std::string_view name) const;

  // One entity's own value, whether the row varies or not; nothing when the entity gives none. `row` is one of rows().
  // For all entities values() is faster.
  Value value(const Row& row, std::size_t entity) const;
  std::vector<Value> values(const Row& row) const;
  // Why the entity gives no value for the row, in the words of the host: that it was not computed because it would take
  // too long, for one. Empty when it gives one, and when the host says nothing. Asks the host for the value once more.
  std::string whyNoValue(const Row& row, std::size_t entity) const;

  // Writes the value to every entity and finds out what became of each. `row` is one of rows(), which are not changed:
  // call query() for the new values. When memory runs out, some entities may already have the new value.
  Report write(const Row& row, const Value& value, const WriteOptions& options = {});

  // Writes what the text means to the row, see Row::parse(). Entities that show this very text already stay as they are,
  // so that a cell that is shown rounded and written back unread loses no digits; where that is not wanted, the style is
  // to be precise.
  Report writeText(const Row& row, std::string_view text, const WriteOptions& options = {});
  // Writes to each entity a value that is made from the one it has: twice its radius, five more, the text with another
  // word. `operand` is as people write it: of adding and subtracting a number as the row takes it, of the other two a
  // plain number, of replacing s/PATTERN/NEW/ with an expression as of ECMAScript; g after the last / replaces all
  // occurrences, i takes upper and lower case for the same, and any character may stand for /. Entities that have no such
  // value refuse. Throws an Error that says what is accepted.
  Report writeRelative(const Row& row, Relation relation, std::string_view operand,
                       const WriteOptions& options = {});
  // Writes to each entity a value of its own. Those without one stay as they are and count as unchanged. One for each.
  Report writeEach(const Row& row, std::span<const std::optional<Value>> values,
                   const WriteOptions& options = {});

  // The different values behind a row with the entities of each, in the order in which they first occur.
  std::vector<ValueGroup> valueGroups(const Row& row, const NumberStyle& style = {}) const;
  // Why the last query has no row of that label or name, also when that query failed. Asks the entities one by one.
  Absence whyAbsent(std::string_view name) const;
  // The entities that no write changes because they are on locked layers.
  std::vector<std::size_t> lockedEntities() const;

  // As the layer's functions take them. Whoever adds entries or references gives them back.
  TqVector<VeltPropData*>& entries() { return selection_; }

 private:
  const std::vector<Row>& ask(TqVector<VeltPropData*>& entries);
  void forgetRows();
  void tearDown();

  std::vector<VeltPropData> entries_;
  TqVector<VeltPropData*> selection_;
  TqVector<PROPINFO> records_;
  std::vector<Row> rows_;
};

// False for what cannot be opened.
VELT_PALETTE_EXPORT bool isOnLockedLayer(VkDbObjectId entity);

// ---------------------------------------------------------------------------------------------------------
// Texts
// ---------------------------------------------------------------------------------------------------------

// What is not a character (a lone surrogate, a number above U+10FFFF) becomes U+FFFD, and so does each byte that is not
// UTF-8.
VELT_PALETTE_EXPORT std::string toUtf8(std::wstring_view text);
VELT_PALETTE_EXPORT std::wstring fromUtf8(std::string_view text);

// For one line of a terminal or a cell: line ends, tabs and other control characters become visible signs or blanks.
VELT_PALETTE_EXPORT std::string oneLine(std::wstring_view text);

// The few of the names that are most like the one that was written, best first; none when none is like it.
VELT_PALETTE_EXPORT std::vector<std::string> namesLike(std::string_view written,
                                                       std::span<const std::string> names);

// "; did you mean A or B?" of those names, or, when there are none, what `otherwise` says.
VELT_PALETTE_EXPORT std::string didYouMean(std::string_view written, std::span<const std::string> names,
                                           std::string_view otherwise = {});

// Equal but for upper and lower case of ASCII letters.
VELT_PALETTE_EXPORT bool equalIgnoringCase(std::string_view a, std::string_view b);

}  // namespace velt::palette
