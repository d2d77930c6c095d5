#include <cassert>

#include "errors/Guard.h"
#include "propdata/VeltPropData.h"
#include "propdata/selection/Cores.h"

namespace velt::propdata {

PropertyListCache& propertyListCache() {
  static PropertyListCache cache;
  return cache;
}

}  // namespace velt::propdata

PropertyListCache* getTqPROPINFOCache() {
  assert(velt::errors::isPaletteThread());
  return &velt::propdata::propertyListCache();
}
