#pragma once

// The words with which entities refuse values, for programs that run in this host and tell people.
//
// A put of an element answers with a result alone: its interface has no room for a sentence. While a log is there, it keeps
// the sentence of each entity's last refusal of an element, on this thread.

#include <map>
#include <string>

#include "host/database/VkDbObjectId.h"

namespace velt::automation {

class RefusalLog {
 public:
  // One at a time.
  RefusalLog();
  ~RefusalLog();
  RefusalLog(const RefusalLog&) = delete;
  RefusalLog& operator=(const RefusalLog&) = delete;

  // Empty for an entity that has refused nothing.
  [[nodiscard]] std::wstring of(VkDbObjectId entity) const;

  // Does nothing while there is no log.
  static void note(VkDbObjectId entity, const std::wstring& sentence);

 private:
  std::map<long, std::wstring> sentences_;
};

}  // namespace velt::automation
