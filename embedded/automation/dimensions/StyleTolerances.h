#pragma once

// How tolerances are shown, and what they are. For the puts see StyleName.h.

#include <cstdint>

#include "embedded/automation/model/Subject.h"

namespace velt::automation {

// A member of types::tolerance, from several variables: equal limits are symmetrical, and a frame alone is basic.
std::int32_t getTolerance(const Subject& subject);
void putTolerance(const Subject& subject, const std::int32_t& tolerance);

// While the tolerance is symmetrical they are one number, and a put of either writes both.
double getLowerLimit(const Subject& subject);
double getUpperLimit(const Subject& subject);
void putLowerLimit(const Subject& subject, const double& limit);
void putUpperLimit(const Subject& subject, const double& limit);

}  // namespace velt::automation
