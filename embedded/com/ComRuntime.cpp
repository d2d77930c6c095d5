#include "host/com/ComRuntime.h"

#include <atomic>

#include "embedded/com/Blocks.h"
#include "embedded/com/Runtime.h"

using velt::com::TaskMemoryPrefix;

namespace {

constexpr LANGID englishUnitedStates = 0x0409;

constinit thread_local int initializations = 0;
constinit std::atomic<LANGID> userLanguage{englishUnitedStates};
constinit std::atomic<LCID> userLocale{englishUnitedStates};

// Not inline, so that CoTaskMemFree itself calls nothing. The prefix of memory that was freed before tells nothing of its
// size, so that the heap is asked: a second free is recognised among blocks of the same size.
[[gnu::noinline]] void freeThoroughly(TaskMemoryPrefix* prefix) {
  velt::platform::taskMemoryAccount.giveBack();
  velt::platform::deallocate(prefix);
}

}  // namespace

HRESULT CoInitialize(void* reserved) {
  if (reserved != nullptr) return E_INVALIDARG;
  return ++initializations == 1 ? S_OK : S_FALSE;
}

void CoUninitialize() {
  if (initializations > 0) --initializations;
}

void* CoTaskMemAlloc(std::size_t bytes) {
  return velt::com::makeTaskMemory(bytes);
}

void CoTaskMemFree(void* block) {
  if (block == nullptr) return;
  auto* const prefix = static_cast<TaskMemoryPrefix*>(block) - 1;
  if (!velt::platform::deallocateAtOnce(prefix, prefix->bytes)) return freeThoroughly(prefix);
  velt::platform::taskMemoryAccount.giveBack();
}

LANGID GetUserDefaultLangID() {
  return userLanguage.load(std::memory_order_relaxed);
}

LCID GetUserDefaultLCID() {
  return userLocale.load(std::memory_order_relaxed);
}

namespace velt::com {

int initializeCount() noexcept {
  return initializations;
}

void setUserLanguage(LANGID language, LCID locale) noexcept {
  userLanguage.store(language, std::memory_order_relaxed);
  userLocale.store(locale, std::memory_order_relaxed);
}

}  // namespace velt::com
