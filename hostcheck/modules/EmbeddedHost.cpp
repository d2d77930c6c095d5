// The embedded host as velt-host-check loads it: opens a drawing, and gives all of its entities to the check.

#include <cstdio>
#include <exception>
#include <memory>
#include <vector>

#include "embedded/database/Drawing.h"
#include "hostcheck/HostModule.h"

__attribute__((visibility("default"))) long veltOpenForCheck(const char* document, long* oldIds,
                                                             std::size_t capacity, char* message,
                                                             std::size_t messageSize) {
  // Open until the process ends.
  static auto& drawings = *new std::vector<decltype(velt::database::Drawing::open(""))>;
  try {
    drawings.push_back(velt::database::Drawing::open(document));
    long count = 0;
    for (const VkDbObjectId id : drawings.back()->entities()) {
      if (static_cast<std::size_t>(count) < capacity) oldIds[count] = id.asOldId();
      ++count;
    }
    return count;
  } catch (const std::exception& error) {
    std::snprintf(message, messageSize, "%s", error.what());
    return -1;
  }
}
