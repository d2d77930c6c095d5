#include "propdata/VeltPropData.h"

PropertyListCache* getTqPROPINFOCache() {
  static PropertyListCache cache;
  return &cache;
}
