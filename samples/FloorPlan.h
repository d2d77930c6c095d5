#pragma once

// The project's own sample: the ground floor of a small house.

#include <string>

namespace velt::samples {

// The bytes of the drawing, in millimetres, the same at every call. It holds every class of entity that the automation
// model knows (hatches in all three kinds) and a few that it does not; layers of which one is locked ("Axes"), one off
// ("Electrical") and one frozen ("Construction"); colors, line weights and line types by layer and of the entity's
// own; true colors; block references with attributes, mirrored and unevenly scaled; hyperlinks; texts beyond ASCII.
[[nodiscard]] std::string sampleFloorPlan();

}  // namespace velt::samples
