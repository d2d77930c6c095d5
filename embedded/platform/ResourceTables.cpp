#include "embedded/platform/ResourceTables.h"

#include <algorithm>
#include <cstddef>
#include <cwchar>
#include <deque>
#include <map>
#include <mutex>

#include "embedded/platform/Categories.h"
#include "embedded/platform/Messages.h"

namespace {

using Texts = std::map<UINT, std::wstring>;

struct Library {
  std::wstring name;
  bool isThere = true;
  Texts texts;
};

constexpr UINT categoryBase = 1000;

Texts messageTexts() {
  Texts texts;
  for (const auto& message : velt::platform::messages)
    texts.emplace(message.id, message.text);
  return texts;
}

Texts categoryTexts() {
  Texts texts;
  for (const auto& category : velt::platform::categoryNames) {
    texts.emplace(categoryBase + static_cast<UINT>(-velt::platform::number(category.category)),
                  category.name);
  }
  return texts;
}

wchar_t lowerCase(wchar_t c) {
  return c >= L'A' && c <= L'Z' ? c + (L'a' - L'A') : c;
}

// Allocates nothing, so that a caller without memory still gets its message.
bool isSameName(std::wstring_view a, std::wstring_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](wchar_t x, wchar_t y) { return lowerCase(x) == lowerCase(y); });
}

class Shelf {
 public:
  Shelf() { restore(); }

  void restore() {
    const std::lock_guard lock(mutex_);
    for (Library& library : libraries_)
      library.isThere = false;
    bring(L"PropertyBarRes.dll").texts = messageTexts();
    bring(L"PlxOPMRes.dll").texts = categoryTexts();
  }

  void add(std::wstring_view name) {
    const std::lock_guard lock(mutex_);
    bring(name).texts.clear();
  }

  void remove(std::wstring_view name) {
    const std::lock_guard lock(mutex_);
    if (Library* library = find(name)) library->isThere = false;
  }

  void setText(std::wstring_view name, UINT id, std::wstring_view text) {
    const std::lock_guard lock(mutex_);
    Library* library = find(name);
    const bool isNew = library == nullptr || !library->isThere;
    library = &bring(name);
    if (isNew) library->texts.clear();
    library->texts.insert_or_assign(id, std::wstring(text));
  }

  void removeText(std::wstring_view name, UINT id) {
    const std::lock_guard lock(mutex_);
    if (Library* library = find(name)) library->texts.erase(id);
  }

  HMODULE load(const wchar_t* name) {
    if (name == nullptr) return nullptr;
    const std::lock_guard lock(mutex_);
    Library* library = find(name);
    return library != nullptr && library->isThere ? library : nullptr;
  }

  INT copyText(HMODULE module, UINT id, wchar_t* buffer, std::size_t characters) {
    const std::lock_guard lock(mutex_);
    // A handle may be any number: it is compared with the libraries that exist, and never followed.
    const auto library = std::find_if(libraries_.begin(), libraries_.end(),
                                      [&](const Library& candidate) { return &candidate == module; });
    if (library == libraries_.end() || !library->isThere) return 0;
    const auto text = library->texts.find(id);
    if (text == library->texts.end()) return 0;
    const std::size_t length = std::min(text->second.size(), characters);
    std::wmemcpy(buffer, text->second.data(), length);
    buffer[length] = L'\0';
    return static_cast<INT>(length);
  }

 private:
  Library* find(std::wstring_view name) {
    for (Library& library : libraries_) {
      if (isSameName(library.name, name)) return &library;
    }
    return nullptr;
  }

  Library& bring(std::wstring_view name) {
    Library* library = find(name);
    if (library == nullptr) library = &libraries_.emplace_back(Library{std::wstring(name), true, {}});
    library->isThere = true;
    return *library;
  }

  std::mutex mutex_;
  // Never shrinks: the handles are addresses of its elements.
  std::deque<Library> libraries_;
};

// Never destroyed: messages may be loaded while the process ends.
Shelf& shelf() {
  static Shelf& instance = *new Shelf;
  return instance;
}

}  // namespace

HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, [[maybe_unused]] DWORD flags) {
  // Reserved: callers pass null.
  if (file != nullptr) return nullptr;
  return shelf().load(name);
}

HMODULE loadResourceDll(const wchar_t* name) {
  return shelf().load(name);
}

INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters) {
  if (buffer == nullptr || characters <= 0) return 0;
  return shelf().copyText(module, id, buffer, static_cast<std::size_t>(characters));
}

namespace velt::platform {

void ResourceTables::setText(std::wstring_view library, UINT id, std::wstring_view text) {
  shelf().setText(library, id, text);
}

void ResourceTables::removeText(std::wstring_view library, UINT id) {
  shelf().removeText(library, id);
}

void ResourceTables::addLibrary(std::wstring_view library) {
  shelf().add(library);
}

void ResourceTables::removeLibrary(std::wstring_view library) {
  shelf().remove(library);
}

void ResourceTables::restore() {
  shelf().restore();
}

}  // namespace velt::platform
