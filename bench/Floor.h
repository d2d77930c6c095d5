#pragma once

// The floor under a query: the host calls that the query must make, and nothing else.
//
// The same objects are asked the same things in the same order: every entity whether its writable properties may be
// edited; property by property, the values of the entities and what is needed to compare them; the choices of the
// rows of the result. Then every value is cleared. The loops go over tables that are made beforehand (see
// FloorPlan.h) and store values in memory that was allocated beforehand; no list is made, no string is compared,
// nothing is sorted. The time that a query takes beyond this is the layer's own.
//
// Two things are left out although they are functions of the host: VariantInit, which stores one number, and the
// allocation of the layer's own blocks.

#include <cstdint>
#include <vector>

#include "bench/FloorPlan.h"
#include "bench/Selection.h"
#include "host/com/Variant.h"

namespace velt::bench {

class Floor {
 public:
  // The selection must be set up, must stay as it is, and must outlive the floor.
  explicit Floor(Selection& selection);

  [[nodiscard]] const FloorPlan& plan() const { return plan_; }

  // Makes the calls of one query, including those that clear the values of the result.
  void run();
  // Clears the values that a query never releases: those of the first entity's rows that are not in the result. The
  // next run overwrites them, as a query does.
  void clearLeftovers();

 private:
  struct Entity {
    IUnknown* object;
    IDispatch* dispatch;
    VkDbObjectId id;
    std::uint32_t kind;
    // Where its values begin among those of all entities.
    std::uint32_t firstValue;
    // How many of them are stored so far.
    std::uint32_t records;
  };

  void askEditable();
  void readFirst();
  void search(const FloorPlan::Search& search);
  void listChoices(DISPID dispId);
  void clearValues();

  FloorPlan plan_;
  std::vector<Entity> entities_;
  // Those of all entities.
  std::vector<VARIANT> values_;
  // Those of the first entity, which the result has.
  std::vector<VARIANT> firstValues_;
};

}  // namespace velt::bench
