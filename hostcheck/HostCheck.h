#pragma once

// Whether a host keeps what the property layer relies on. It is asked for everything that the layer would ask it for,
// with entities that are given, and each answer is looked at as the layer would use it.
//
// The library leaves the host's symbols undefined, as the layer does, and needs no others than the layer needs: whoever
// can load the layer can load it. Nothing is written to the entities.
//
// Threads: called on the thread that the palette would use. One of the checks starts a thread of its own, and ends it.
// Failure: the check reports; it throws nothing. A host that crashes takes the process with it; whoever sets onTry knows
// where that was.

#include <cstddef>
#include <functional>
#include <map>
#include <span>
#include <string>
#include <vector>

#define VELT_HOSTCHECK_EXPORT __attribute__((visibility("default")))

namespace velt::hostcheck {

// One thing that a host did not keep. Texts are UTF-8.
struct Finding {
  // The check that found it: a short name that stays what it is.
  std::string check;
  // What was asked: "entity 3, property Length". Empty for what belongs to no entity.
  std::string subject;
  // What the layer relies on, and what came instead.
  std::string expected;
  std::string came;
  // What users will see: which rows are missing or wrong, and what is not written.
  std::string suffers;
};

// A check that could not be made, and why: nothing that the host was given calls for it.
struct NotTried {
  std::string check;
  std::string reason;
};

// What a check finds again and again is told so often; of the rest it is told how much there is.
inline constexpr std::size_t findingsPerCheck = 20;

struct Report {
  // In the order in which they were found, findingsPerCheck of each check at most.
  std::vector<Finding> findings;
  // How many more there were, by check.
  std::map<std::string, std::size_t> further;
  // Names of the checks that were made, in the order of the list of checks.
  std::vector<std::string> tried;
  std::vector<NotTried> notTried;
  // Called, when it is set, with the name of a check, or of the method that is called for one, and what is asked, before it
  // is asked.
  std::function<void(const std::string& what, const std::string& subject)> onTry;
};

}  // namespace velt::hostcheck

// The one entry. Fills the report; `oldIds` are ids of entities in the form in which a palette hands over its selection.
extern "C" VELT_HOSTCHECK_EXPORT void veltCheckHost(const long* oldIds, std::size_t count,
                                                    velt::hostcheck::Report* report);

namespace velt::hostcheck {

inline Report checkHost(std::span<const long> oldIds) {
  Report report;
  veltCheckHost(oldIds.data(), oldIds.size(), &report);
  return report;
}

}  // namespace velt::hostcheck
