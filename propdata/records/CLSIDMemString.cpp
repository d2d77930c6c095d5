#include <cstring>

#include "propdata/VeltPropData.h"

namespace {

std::string keyText(const GUID& clsid, int variant) {
  char buffer[18] = {};
  std::memcpy(buffer, &clsid, sizeof clsid);
  buffer[16] = static_cast<char>(variant);
  // QUIRK(key_cut_at_zero_byte): class ids that agree up to their first zero byte share one cached list, and the
  // variant then does not count. Hosts know it: classes that must not share a list have ids without zero bytes.
  return buffer;
}

}  // namespace

CLSIDMemString::CLSIDMemString(const GUID& clsid, int variant) : CStdStr<char>(keyText(clsid, variant)) {}
