#pragma once

// The floor under a query: the host calls that the query must make, and nothing else.
//
// The same objects are asked the same things in the same order: first every entity whether its writable properties may
// be edited, then property by property the values of the entities and what comparing them takes, then the choices of
// the rows of the result, then every value is cleared. The loops walk over tables that are worked out beforehand (see
// FloorPlan.h) and store values in memory that is there already; no list is made, no string is compared, nothing is
// sorted. What a query takes above this is the layer's own.
//
// Left out although they are functions of the host: VariantInit, which makes no decision and stores one number, and the
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

  // The calls of one query, the clearing of the result's values included.
  void run();
  // Values that a query never releases: those of the first entity's rows that are in no result. A run forgets those of
  // the run before, as a query does.
  void clearLeftovers();

 private:
  struct Entity {
    IUnknown* object;
    IDispatch* dispatch;
    VkDbObjectId id;
    std::uint32_t kind;
    std::uint32_t firstValue;  // of all records of all entities
    std::uint32_t records;     // so far
  };

  void askEditable();
  void readFirst();
  void search(const FloorPlan::Search& search);
  void listChoices(DISPID dispId);
  void clearValues();

  FloorPlan plan_;
  std::vector<Entity> entities_;
  std::vector<VARIANT> values_;       // of all entities
  std::vector<VARIANT> firstValues_;  // of the first entity, as the result has them
};

}  // namespace velt::bench
