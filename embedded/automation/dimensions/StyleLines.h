#pragma once

// How dimension lines and center marks are drawn. For the puts see StyleName.h.

#include <cstdint>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// Stored as what is left out.
bool getDimLineInside(const Subject& subject);
void putDimLineInside(const Subject& subject, const bool& isInside);

// The sign of the size. No mark has no size; a new one has that of the style, else the usual one.
std::int32_t getCenterType(const Subject& subject);
void putCenterType(const Subject& subject, const std::int32_t& type);
double getCenterMarkSize(const Subject& subject);
void putCenterMarkSize(const Subject& subject, const double& size);

}  // namespace velt::automation
