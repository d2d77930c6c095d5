#include "bench/Selection.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "embedded/database/Entity.h"

namespace velt::bench {

namespace {

std::string narrow(const CStdStr<wchar_t>& text) {
  return {text.str().begin(), text.str().end()};
}

}  // namespace

Selection::Selection(std::string drawing)
    : drawing_(database::Drawing::parse(std::move(drawing), "benchmark")) {
  for (const VkDbObjectId id : drawing_->entities()) {
    const auto object = database::resolve(id);
    if (!object || database::Entity(*object).space() != database::Space::Model) continue;
    data_.emplace_back().oldId = id.asOldId();
  }
  entries_.setPhysicalLength(static_cast<std::uint32_t>(data_.size()));
  for (VeltPropData& entry : data_)
    entries_.append(&entry);
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
