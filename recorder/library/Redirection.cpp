#include "recorder/library/Redirection.h"

#include <dlfcn.h>
#include <elf.h>
#include <link.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <map>

#include "recorder/Next.h"

namespace velt::recorder {

namespace {

// A place that holds the address of a function of somebody else: for calls, and for what takes its address.
#if defined(__x86_64__)
constexpr std::uint32_t forCalls = R_X86_64_JUMP_SLOT;
constexpr std::uint32_t forAddresses = R_X86_64_GLOB_DAT;
#elif defined(__aarch64__)
constexpr std::uint32_t forCalls = R_AARCH64_JUMP_SLOT;
constexpr std::uint32_t forAddresses = R_AARCH64_GLOB_DAT;
#else
#error "Which relocations fill the table of functions on this machine?"
#endif

// The function of this library that has that name, or null.
void* ours(void* library, const char* name) {
  void* const address = dlsym(library, name);
  return address != nullptr && ownPlace(address) == ownPlace() ? address : nullptr;
}

bool write(void** place, void* address) {
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto first = reinterpret_cast<std::uintptr_t>(place) / page * page;
  // The table is closed for writing once a library is loaded, and stays open from here on.
  if (mprotect(reinterpret_cast<void*>(first), page, PROT_READ | PROT_WRITE) != 0) return false;
  *place = address;
  return true;
}

class Table {
 public:
  explicit Table(const link_map& library) : base_(library.l_addr) {
    for (const ElfW(Dyn)* entry = library.l_ld; entry->d_tag != DT_NULL; ++entry)
      entries_[entry->d_tag] = entry->d_un.d_ptr;
  }

  bool redirect(void* to) const {
    return redirect(to, DT_JMPREL, DT_PLTRELSZ) && redirect(to, DT_RELA, DT_RELASZ);
  }

 private:
  bool redirect(void* to, ElfW(Sxword) list, ElfW(Sxword) bytes) const {
    if (!entries_.contains(list)) return true;
    const auto* const symbols = reinterpret_cast<const ElfW(Sym)*>(entries_.at(DT_SYMTAB));
    const auto* const names = reinterpret_cast<const char*>(entries_.at(DT_STRTAB));
    const auto* const relocations = reinterpret_cast<const ElfW(Rela)*>(entries_.at(list));
    for (std::size_t i = 0; i < entries_.at(bytes) / sizeof *relocations; ++i) {
      const auto type = static_cast<std::uint32_t>(ELF64_R_TYPE(relocations[i].r_info));
      if (type != forCalls && type != forAddresses) continue;
      const ElfW(Sym)& symbol = symbols[ELF64_R_SYM(relocations[i].r_info)];
      if (symbol.st_shndx != SHN_UNDEF) continue;
      void* const address = ours(to, names + symbol.st_name);
      if (address == nullptr) continue;
      if (!write(reinterpret_cast<void**>(base_ + relocations[i].r_offset), address)) return false;
    }
    return true;
  }

  ElfW(Addr) base_;
  std::map<ElfW(Sxword), ElfW(Addr)> entries_;
};

// A library that is loaded already, by the address of something in it.
void* loaded(const void* address) {
  Dl_info info{};
  return dladdr(address, &info) != 0 ? dlopen(info.dli_fname, RTLD_NOLOAD | RTLD_LAZY) : nullptr;
}

}  // namespace

bool redirectLayer(const void* function) {
  void* const layer = loaded(function);
  void* const own = loaded(reinterpret_cast<const void*>(&redirectLayer));
  link_map* map = nullptr;
  if (layer == nullptr || own == nullptr || dlinfo(layer, RTLD_DI_LINKMAP, &map) != 0) return false;
  return Table(*map).redirect(own);
}

}  // namespace velt::recorder
