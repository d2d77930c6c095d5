#pragma once

// A drawing that was built, read again.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "dxf/Document.h"
#include "samples/builder/DrawingBuilder.h"

namespace velt::samples::test {

inline dxf::Document documentOf(const DrawingBuilder& drawing) {
  return dxf::Document::parse(drawing.bytes(), "made.dxf");
}

// The occurrence of the type, counted over the whole document.
inline dxf::RecordView viewOf(const dxf::Document& document, std::string_view type,
                              std::size_t occurrence = 0) {
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    if (document.type(record) == type && occurrence-- == 0) return document.view(record);
  }
  ADD_FAILURE() << "no " << type;
  return document.view(0);
}

inline std::string_view text(const dxf::RecordView& view, int code, std::string_view subclass,
                             std::size_t occurrence = 0) {
  return view.text(code, subclass, occurrence).value_or("nothing");
}

inline std::vector<std::string> values(const dxf::RecordView& view, int code, std::string_view subclass) {
  std::vector<std::string> all;
  for (const std::size_t index : view.findAll(code, subclass))
    all.emplace_back(view.value(index));
  return all;
}

}  // namespace velt::samples::test
