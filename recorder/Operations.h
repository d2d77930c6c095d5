#pragma once

// What an operation takes and what it leaves, as JSON: written when it is recorded, and again when it is replayed.
//
// The value of a row that is passed in is not looked into: the layer does not either, and it may have been given back.

#include <nlohmann/json.hpp>

#include "propdata/VeltPropData.h"

namespace velt::recorder {

using nlohmann::json;

// Null entries are null; the others have a number each, by which later operations name them.
json selectionJson(const TqVector<VeltPropData*>& selection);
json rowJson(const PROPINFO& row, bool withValue);
json rowsJson(const TqVector<PROPINFO>& rows, bool withValues);
// From a position on.
json idsJson(const VkArray<VkDbObjectId>& ids, int from);
PROPINFO rowFrom(const json& row);
TqVector<PROPINFO> rowsFrom(const json& rows);
void entryFrom(const json& from, VeltPropData& entry);

}  // namespace velt::recorder
