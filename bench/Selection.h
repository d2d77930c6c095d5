#pragma once

// A selection of everything in the model space of a drawing.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

namespace velt::bench {

class Selection {
 public:
  // Reads the drawing, which is given as DXF text. The automation objects are made by setUp().
  explicit Selection(std::string drawing);

  // setUp throws palette::Error when the layer fails.
  void setUp() { selection_.emplace(ids_); }
  void tearDown() { selection_.reset(); }

  // The layer's query and nothing else: its rows as they come, whose values are the caller's to clear. Throws
  // std::runtime_error when the layer fails.
  void query(TqVector<PROPINFO>& rows);

  // Makes the automation objects forget what they keep of earlier calls, as if the selection had just been made.
  void forget();

  // After setUp().
  [[nodiscard]] TqVector<VeltPropData*>& entries() { return selection_.value().entries(); }
  [[nodiscard]] const database::Drawing& drawing() const { return *drawing_; }
  [[nodiscard]] palette::Selection& palette() { return selection_.value(); }

 private:
  std::unique_ptr<database::Drawing> drawing_;
  std::vector<VkDbObjectId> ids_;
  std::optional<palette::Selection> selection_;
};

// Of the rows of a query.
void clearValues(TqVector<PROPINFO>& rows);

}  // namespace velt::bench
