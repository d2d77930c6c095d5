#pragma once

// A selection of everything in the model space of a drawing.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "propdata/VeltPropData.h"

namespace velt::bench {

class Selection {
 public:
  // Reads the drawing, which is given as DXF text. The automation objects are made by setUp().
  explicit Selection(std::string drawing);
  ~Selection();
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  // InitializePropData and UnInitializePropData. setUp throws std::runtime_error when the layer fails.
  void setUp();
  void tearDown();

  // The rows of the selection; their values are the caller's to clear. Throws std::runtime_error when the layer fails.
  void query(TqVector<PROPINFO>& rows);

  [[nodiscard]] TqVector<VeltPropData*>& entries() { return entries_; }
  [[nodiscard]] const std::vector<VeltPropData>& data() const { return data_; }

 private:
  std::unique_ptr<database::Drawing> drawing_;
  std::vector<VeltPropData> data_;
  TqVector<VeltPropData*> entries_;
};

}  // namespace velt::bench
