#pragma once

// The functions that ours stand in front of.

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace velt::recorder {

// Where the program or library stands that this code is part of.
inline void* ownPlace(const void* address = nullptr) {
  static const char inside = 0;
  Dl_info info{};
  return dladdr(address != nullptr ? address : &inside, &info) != 0 ? info.dli_fbase : nullptr;
}

// The function of that mangled name, of the host or of the layer. A host that is a program comes before a library that is
// loaded into it, another one after. The program ends without it: the layer needs it, too.
template <class Function>
Function* next(const char* symbol) {
  void* address = dlsym(RTLD_DEFAULT, symbol);
  if (address == nullptr || ownPlace(address) == ownPlace()) address = dlsym(RTLD_NEXT, symbol);
  if (address == nullptr) {
    std::fprintf(stderr, "libVeltRecorder.so: nobody has %s. Is the recorder loaded before host and layer?\n",
                 symbol);
    std::abort();
  }
  return reinterpret_cast<Function*>(address);
}

// Whether code of the layer is returned to. A function that stands under a name of the host's is also called by the host
// itself, from others that do not stand here.
inline bool isOfTheLayer(const void* returnAddress) {
  static const dl_find_object layer = [] {
    dl_find_object found{};
    auto* const inside = next<void()>("_Z16GetPropInfoValueR8PROPINFO");
    return _dl_find_object(reinterpret_cast<void*>(inside), &found) == 0 ? found : dl_find_object{};
  }();
  return returnAddress >= layer.dlfo_map_start && returnAddress < layer.dlfo_map_end;
}

}  // namespace velt::recorder
