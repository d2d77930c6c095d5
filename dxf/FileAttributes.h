#pragma once

// What belongs to a file beside its content: owner, group, permissions, access control lists, extended attributes.

#include <string>
#include <vector>

#include "dxf/FilePlace.h"

namespace velt::dxf {

// Gives the new file what the old one has, both open. The new one must be readable and writable by its owner only, so
// that nobody gets at it in between.
//
// Set-user, set-group and sticky bits are dropped, and so are capabilities and signatures of the content, which hold
// for the old content only.
// What cannot be kept and does not open the file to anybody else is told: each as a sentence without a full stop. What
// would open it, the group or an access control list, fails as FilePlace does.
[[nodiscard]] std::vector<std::string> keepAttributes(const FilePlace& place, int oldFile, int newFile);

}  // namespace velt::dxf
