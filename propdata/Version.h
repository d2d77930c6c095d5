#pragma once

// The version of the library that these headers belong to. Everything else that names a version reads it here: the build,
// the packages, --version. The first number is that of the soname: it grows when programs have to be built again.

#define VELT_PROPDATA_VERSION_MAJOR 0
#define VELT_PROPDATA_VERSION_MINOR 1
#define VELT_PROPDATA_VERSION_PATCH 0

// To be compared: #if VELT_PROPDATA_VERSION >= VELT_PROPDATA_VERSION_OF(0, 2, 0)
#define VELT_PROPDATA_VERSION_OF(major, minor, patch) ((major)*10000 + (minor)*100 + (patch))
#define VELT_PROPDATA_VERSION                                                        \
  VELT_PROPDATA_VERSION_OF(VELT_PROPDATA_VERSION_MAJOR, VELT_PROPDATA_VERSION_MINOR, \
                           VELT_PROPDATA_VERSION_PATCH)
