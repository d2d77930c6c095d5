#include "embedded/sources/LoadedPlugins.h"

#include <dlfcn.h>

#include <algorithm>
#include <utility>

#include "embedded/database/ObjectClass.h"
#include "embedded/sources/GuardedSource.h"
#include "embedded/sources/Plugin.h"
#include "embedded/sources/PluginCall.h"
#include "embedded/sources/SourceRegistry.h"
#include "host/com/ComError.h"

namespace velt::sources {
namespace {

using EntryPoint = decltype(&veltRegisterPlugin);
constexpr const char* entryPointName = "veltRegisterPlugin";

// What a plug-in adds while its entry point runs. It is offered only after the entry point has answered a success.
class Registration : public VeltPluginHost {
 public:
  explicit Registration(std::shared_ptr<PluginReports> reports)
      : VeltPluginHost{veltPluginVersion, sizeof(VeltPluginHost), &addPropertySource, &report},
        reports_(std::move(reports)),
        outer_(std::exchange(running, this)) {}
  ~Registration() { running = outer_; }
  Registration(const Registration&) = delete;
  Registration& operator=(const Registration&) = delete;

  // Offers the sources, and answers the names of those that are offered.
  std::vector<std::wstring> offer() const {
    std::vector<std::wstring> offered;
    for (const Added& added : added_) {
      const HRESULT result =
          SourceRegistry::ofProcess().attach(added.name, added.entityClass, added.guarded.get());
      if (FAILED(result)) {
        reports_->tell(Trouble::BadSource, "the source " + narrow(added.name) + " cannot be offered");
      } else {
        offered.push_back(added.name);
      }
    }
    return offered;
  }

 private:
  struct Added {
    std::wstring name;
    VkRxClass* entityClass;
    IPropertySource* source;
    holders::InterfaceHolder<IPropertySource> guarded;
  };

  static HRESULT addPropertySource(const VeltPluginHost* host, const wchar_t* name,
                                   const wchar_t* entityClass, IPropertySource* source) {
    if (host == nullptr) return E_POINTER;
    Registration* const registration = of(host);
    if (registration == nullptr) return E_INVALIDARG;
    try {
      return registration->add(name, entityClass, source);
    } catch (const std::bad_alloc&) {
      return E_OUTOFMEMORY;
    }
  }

  static void report(const VeltPluginHost* host, const wchar_t* message) {
    if (host == nullptr || message == nullptr) return;
    if (const Registration* const registration = of(host)) {
      registration->reports_->tell(Trouble::Message, narrow(message));
    }
  }

  // Null for a copy of the table, and for one whose call has ended: neither is looked into.
  static Registration* of(const VeltPluginHost* host) {
    if (running == nullptr || host == running) return running;
    running->reports_->tell(Trouble::CopiedTable,
                            "it passed a copy of the host's table instead of the table");
    return nullptr;
  }

  HRESULT add(const wchar_t* name, const wchar_t* entityClass, IPropertySource* source) {
    if (name == nullptr || entityClass == nullptr || source == nullptr)
      return refuse(E_POINTER, "a source was added without a name, a class or the source itself");
    VkRxClass* const kind = database::runtimeClassNamed(entityClass);
    if (*name == L'\0' || kind == nullptr || !kind->isDerivedFrom(database::runtimeClassNamed(L"VkDbEntity")))
      return refuse(E_INVALIDARG, "the source \"" + narrow(name) + "\" was added for \"" + narrow(entityClass)
                                      + "\", which is not a class of entities");
    const auto known =
        std::find_if(added_.begin(), added_.end(), [&](const Added& it) { return it.name == name; });
    const bool isTaken = known != added_.end() ? known->source != source
                                               : static_cast<bool>(SourceRegistry::ofProcess().find(name));
    if (isTaken) return refuse(E_ACCESSDENIED, "the name \"" + narrow(name) + "\" is that of another source");
    holders::InterfaceHolder<IPropertySource> guarded =
        known != added_.end() ? holders::InterfaceHolder<IPropertySource>::sharing(known->guarded.get())
                              : guard(source, reports_);
    if (!guarded) return E_UNEXPECTED;
    added_.push_back({name, kind, source, std::move(guarded)});
    return S_OK;
  }

  HRESULT refuse(HRESULT result, const std::string& why) const {
    reports_->tell(Trouble::BadSource, why);
    return result;
  }

  // The one whose plug-in is being called on this thread.
  static thread_local Registration* running;

  std::shared_ptr<PluginReports> reports_;
  Registration* outer_;
  std::vector<Added> added_;
};

thread_local Registration* Registration::running = nullptr;

// The loader's own words; they begin with the name of the file.
std::string loaderMessage() {
  const char* const message = dlerror();
  return message != nullptr ? message : "the loader gave no reason";
}

bool registers(EntryPoint entryPoint, Registration& registration, PluginReports& reports) {
  std::int32_t answer = 0;
  const PluginCall calling(reports.plugin().c_str(), entryPointName);
  try {
    answer = entryPoint(&registration);
  } catch (...) {
    reports.tell(Trouble::Exception, std::string(entryPointName) + " threw: " + describeException());
    return false;
  }
  if (answer == veltPluginVersion) return true;
  if (answer > 0) {
    reports.tell(Trouble::WrongVersion, "it is of version " + std::to_string(answer)
                                            + ", and the host of version "
                                            + std::to_string(veltPluginVersion));
  } else {
    reports.tell(
        Trouble::Refused,
        "it refused to work: " + narrow(static_cast<const wchar_t*>(_com_error(answer).Description())));
  }
  return false;
}

}  // namespace

LoadedPlugins::LoadedPlugins(PluginReports::Sink listener) : listener_(std::move(listener)) {}

LoadedPlugins::~LoadedPlugins() {
  for (const Plugin& plugin : plugins_) {
    for (const std::wstring& source : plugin.sources)
      SourceRegistry::ofProcess().remove(source);
    plugin.reports->silence();
  }
}

bool LoadedPlugins::load(const std::filesystem::path& file) {
  auto reports = std::make_shared<PluginReports>(file.filename().string(), listener_);
  // An absolute path, because a name without a folder would be looked for among the system's libraries.
  void* const library =
      dlopen(std::filesystem::absolute(file).c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
  if (library == nullptr) {
    reports->tell(Trouble::CannotBeLoaded, "it cannot be loaded: " + loaderMessage());
    return false;
  }
  const bool isLoaded = std::any_of(plugins_.begin(), plugins_.end(),
                                    [&](const Plugin& plugin) { return plugin.library == library; });
  if (isLoaded) {
    reports->tell(Trouble::CannotBeLoaded, "it is loaded already");
    return false;
  }
  const auto entryPoint = reinterpret_cast<EntryPoint>(dlsym(library, entryPointName));
  if (entryPoint == nullptr) {
    reports->tell(Trouble::NoEntryPoint, std::string("it has no entry point ") + entryPointName);
    return false;
  }
  Registration registration(reports);
  if (!registers(entryPoint, registration, *reports)) return false;
  plugins_.push_back({library, reports, registration.offer()});
  return true;
}

}  // namespace velt::sources
