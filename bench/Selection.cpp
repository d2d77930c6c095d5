#include "bench/Selection.h"

#include <span>
#include <stdexcept>
#include <string>
#include <utility>

namespace velt::bench {

namespace {

std::string narrow(const CStdStr<wchar_t>& text) {
  return {text.str().begin(), text.str().end()};
}

}  // namespace

Selection::Selection(std::string drawing)
    : drawing_(database::Drawing::parse(std::move(drawing), "benchmark")) {
  const std::span<const VkDbObjectId> ids = drawing_->entities();
  data_.resize(ids.size());
  entries_.setPhysicalLength(static_cast<std::uint32_t>(ids.size()));
  for (std::size_t i = 0; i < ids.size(); ++i) {
    data_[i].oldId = ids[i].asOldId();
    entries_.append(&data_[i]);
  }
}

Selection::~Selection() {
  tearDown();
}

void Selection::setUp() {
  CStdStr<wchar_t> errorText;
  bool mixedClasses = false;
  if (!InitializePropData(entries_, errorText, mixedClasses)) {
    throw std::runtime_error("InitializePropData: " + narrow(errorText));
  }
}

void Selection::tearDown() {
  UnInitializePropData(entries_);
}

void Selection::query(TqVector<PROPINFO>& rows) {
  CStdStr<wchar_t> errorText;
  bool mergeFlag = false;
  bool typeFlag = false;
  if (!GetPropertiesInfo(entries_, rows, errorText, mergeFlag, typeFlag)) {
    throw std::runtime_error("GetPropertiesInfo: " + narrow(errorText));
  }
}

}  // namespace velt::bench
