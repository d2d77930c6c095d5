#pragma once

// Draws the entities of one block.

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

#include "samples/builder/Parts.h"
#include "samples/builder/Shapes.h"

namespace velt::samples {

// Takes the entities of one block definition, model space included. It belongs to its DrawingBuilder.
// Every call returns the handle of the entity that it made.
class BlockBuilder {
 public:
  BlockBuilder(Parts& parts, Block& block) : parts_(parts), block_(block), out_(block.entities) {}
  BlockBuilder(const BlockBuilder&) = delete;
  BlockBuilder& operator=(const BlockBuilder&) = delete;

  Handle line(const Point& from, const Point& to, const EntityStyle& style = {});
  Handle point(const Point& at, const EntityStyle& style = {});
  Handle circle(const Point& centre, double radius, const EntityStyle& style = {});
  // Counterclockwise, in degrees.
  Handle arc(const Point& centre, double radius, double startAngle, double endAngle,
             const EntityStyle& style = {});
  // `major` reaches from the centre to the end of the longer axis; `ratio` is at most 1; whole without the angles,
  // which are parameters in degrees.
  Handle ellipse(const Point& centre, const Point& major, double ratio, const EntityStyle& style = {},
                 double startAngle = 0.0, double endAngle = 360.0);
  Handle polyline(const Outline& outline, const PolylineStyle& shape = {}, const EntityStyle& style = {});
  Handle text(const Point& at, std::string_view wording, const TextStyle& shape = {},
              const EntityStyle& style = {});
  // The wording may hold formatting codes; a long one is cut into chunks as drawings do.
  Handle mtext(const Point& at, std::string_view wording, const MTextStyle& shape = {},
               const EntityStyle& style = {});
  Handle insert(std::string_view block, const Placement& placement, const EntityStyle& style = {});
  // What an insert of this block should bring a value for.
  Handle attributeDefinition(const Attribute& attribute, std::string_view prompt,
                             const EntityStyle& style = {});
  Handle solidHatch(std::span<const Outline> boundary, const EntityStyle& style = {});
  Handle patternHatch(std::span<const Outline> boundary, const HatchPattern& pattern,
                      const EntityStyle& style = {});
  Handle gradientHatch(std::span<const Outline> boundary, const HatchGradient& gradient,
                       const EntityStyle& style = {});
  // Makes this block, an anonymous one, one of the shapes that a dynamic block takes.
  void isMadeOf(const BlockBuilder& definition);
  // Anything else: the pairs after the common ones of every entity, subclass markers included. Owned by the block, or
  // by the entity with the given handle (a vertex by its polyline).
  Handle raw(std::string_view type, const Pairs& pairs, const EntityStyle& style = {},
             std::optional<Handle> owner = std::nullopt);
  // Of its table record, for those that refer to the block by it.
  [[nodiscard]] Handle handle() const { return block_.record; }

 private:
  Handle begin(std::string_view type, const EntityStyle& style, std::optional<Handle> owner = std::nullopt);
  void end(const EntityStyle& style);
  void writeAttribute(const Attribute& attribute, const EntityStyle& style, Handle owner);
  Handle beginHatch(std::span<const Outline> boundary, std::string_view pattern, bool isSolid,
                    const EntityStyle& style);
  void endHatch(const EntityStyle& style);

  Parts& parts_;
  Block& block_;
  dxf::PairWriter& out_;
};

}  // namespace velt::samples
