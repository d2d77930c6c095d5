// Functions with the names of the host's, which count and forward. This program exports them, so the layer, the floor
// and the host itself call these instead of the host's own.

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

#include "bench/counting/CallCounts.h"
#include "host/com/ComRuntime.h"
#include "host/com/Variant.h"
#include "host/database/OpenObject.h"

using velt::bench::countCall;

namespace {

template <class Function>
Function* real(const char* symbol) {
  void* const address = dlsym(RTLD_NEXT, symbol);
  if (address == nullptr) {
    std::fprintf(stderr, "the host has no %s\n", symbol);
    std::abort();
  }
  return reinterpret_cast<Function*>(address);
}

#define VELT_COUNT_AND_FIND(Signature, symbol)          \
  static auto* const forward = real<Signature>(symbol); \
  countCall(__func__)

}  // namespace

extern "C" {

void SysFreeString(BSTR string) {
  VELT_COUNT_AND_FIND(void(BSTR), "SysFreeString");
  forward(string);
}

void CoTaskMemFree(void* block) {
  VELT_COUNT_AND_FIND(void(void*), "CoTaskMemFree");
  forward(block);
}

HRESULT VariantClear(VARIANT* variant) {
  VELT_COUNT_AND_FIND(HRESULT(VARIANT*), "VariantClear");
  return forward(variant);
}

LANGID GetUserDefaultLangID() {
  VELT_COUNT_AND_FIND(LANGID(), "GetUserDefaultLangID");
  return forward();
}

}  // extern "C"

Velt::ErrorStatus vkdbOpenVkDbObject(VkDbObject*& object, VkDbObjectId id, VkDb::OpenMode mode,
                                     bool openErased) {
  VELT_COUNT_AND_FIND(Velt::ErrorStatus(VkDbObject*&, VkDbObjectId, VkDb::OpenMode, bool),
                      "_Z18vkdbOpenVkDbObjectRP10VkDbObject12VkDbObjectIdN4VkDb8OpenModeEb");
  return forward(object, id, mode, openErased);
}

Velt::ErrorStatus vkdbOpenObject(VkDbEntity*& entity, VkDbObjectId id, VkDb::OpenMode mode) {
  VELT_COUNT_AND_FIND(Velt::ErrorStatus(VkDbEntity*&, VkDbObjectId, VkDb::OpenMode),
                      "_Z14vkdbOpenObjectRP10VkDbEntity12VkDbObjectIdN4VkDb8OpenModeE");
  return forward(entity, id, mode);
}

Velt::ErrorStatus VkDbObject::close() {
  VELT_COUNT_AND_FIND(Velt::ErrorStatus(VkDbObject*), "_ZN10VkDbObject5closeEv");
  return forward(this);
}

VkDbObjectId VkDbEntity::layerId() const {
  VELT_COUNT_AND_FIND(VkDbObjectId(const VkDbEntity*), "_ZNK10VkDbEntity7layerIdEv");
  return forward(this);
}

VkCmColor VkDbLayerTableRecord::color() const {
  VELT_COUNT_AND_FIND(VkCmColor(const VkDbLayerTableRecord*), "_ZNK20VkDbLayerTableRecord5colorEv");
  return forward(this);
}

void VkCmColor::setColor(std::uint32_t value) {
  VELT_COUNT_AND_FIND(void(VkCmColor*, std::uint32_t), "_ZN9VkCmColor8setColorEj");
  forward(this, value);
}

void VkCmColor::setNames(const wchar_t* colorName, const wchar_t* bookName) {
  VELT_COUNT_AND_FIND(void(VkCmColor*, const wchar_t*, const wchar_t*), "_ZN9VkCmColor8setNamesEPKwS1_");
  forward(this, colorName, bookName);
}

bool VkCmColor::isByLayer() const {
  VELT_COUNT_AND_FIND(bool(const VkCmColor*), "_ZNK9VkCmColor9isByLayerEv");
  return forward(this);
}

bool VkCmColor::operator!=(const VkCmColor& other) const {
  VELT_COUNT_AND_FIND(bool(const VkCmColor*, const VkCmColor&), "_ZNK9VkCmColorneERKS_");
  return forward(this, other);
}
