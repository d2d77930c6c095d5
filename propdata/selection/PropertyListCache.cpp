#include "propdata/VeltPropData.h"
#include "propdata/selection/Cores.h"

namespace velt::propdata {

PropertyListCache& propertyListCache() {
  static PropertyListCache cache;
  return cache;
}

}  // namespace velt::propdata

PropertyListCache* getTqPROPINFOCache() {
  return &velt::propdata::propertyListCache();
}
