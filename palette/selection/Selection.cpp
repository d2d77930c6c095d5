#include "palette/Palette.h"

#include <fmt/format.h>

#include <utility>

#include "palette/text/Utf8.h"
#include "tool/EntitySelection.h"
#include "tool/Failure.h"

namespace velt::tool {

namespace {

std::string messageOr(const CStdStr<wchar_t>& errorText, std::string_view otherwise) {
  return errorText.empty() ? std::string(otherwise) : toUtf8(errorText.str());
}

}  // namespace

Palette::Palette(const std::vector<VkDbObjectId>& entities) : entries_(entities.size()) {
  if (!selection_.setPhysicalLength(static_cast<std::uint32_t>(entities.size()))) throw std::bad_alloc();
  for (std::size_t i = 0; i < entities.size(); ++i) {
    entries_[i].oldId = entities[i].asOldId();
    selection_.push_back(&entries_[i]);
  }
  CStdStr<wchar_t> errorText;
  bool mixedClasses = false;
  if (!InitializePropData(selection_, errorText, mixedClasses)) {
    tearDown();
    throw Failure(
        fmt::format("the selection cannot be set up: {}", messageOr(errorText, "no reason was given")));
  }
}

Palette::~Palette() {
  for (PROPINFO& row : rows_)
    VariantClear(&row.value);
  tearDown();
}

void Palette::tearDown() {
  UnInitializePropData(selection_);
}

const TqVector<PROPINFO>& Palette::query() {
  if (selection_.isEmpty()) return rows_;
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  if (!GetPropertiesInfo(selection_, rows_, errorText, mergeFlag, typeFlag)) {
    throw Failure(
        fmt::format("the properties cannot be read: {}", messageOr(errorText, "no reason was given")));
  }
  SortByWeight(rows_);
  return rows_;
}

}  // namespace velt::tool
