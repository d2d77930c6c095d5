#pragma once

// The property layer, called as a palette calls it: a selection is set up, asked and torn down.

#include <string>
#include <vector>

#include "propdata/VeltPropData.h"

namespace velt::tool {

// Owns the selection's automation objects and the values of the rows, so rows are valid as long as it lives.
class Palette {
 public:
  // Throws Failure with the layer's message when an automation object cannot be had.
  explicit Palette(const std::vector<VkDbObjectId>& entities);
  Palette(const Palette&) = delete;
  Palette& operator=(const Palette&) = delete;
  ~Palette();

  // The merged rows in display order. Nothing for an empty selection. Throws Failure with the layer's message.
  const TqVector<PROPINFO>& query();

  std::size_t size() const { return entries_.size(); }
  // In the order of the entities.
  VeltPropData& entry(std::size_t index) { return entries_[index]; }

 private:
  void tearDown();

  std::vector<VeltPropData> entries_;
  TqVector<VeltPropData*> selection_;
  TqVector<PROPINFO> rows_;
};

}  // namespace velt::tool
