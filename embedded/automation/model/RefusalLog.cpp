#include "embedded/automation/model/RefusalLog.h"

#include <cassert>

namespace velt::automation {
namespace {

thread_local std::map<long, std::wstring>* sentences = nullptr;

}  // namespace

RefusalLog::RefusalLog() {
  assert(sentences == nullptr);
  sentences = &sentences_;
}

RefusalLog::~RefusalLog() {
  sentences = nullptr;
}

std::wstring RefusalLog::of(VkDbObjectId entity) const {
  const auto found = sentences_.find(entity.asOldId());
  return found == sentences_.end() ? std::wstring() : found->second;
}

void RefusalLog::note(VkDbObjectId entity, const std::wstring& sentence) {
  if (sentences != nullptr) (*sentences)[entity.asOldId()] = sentence;
}

}  // namespace velt::automation
