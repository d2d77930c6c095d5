#pragma once

// The header for plug-ins of the embedded host: their entry point, and what the host passes to it.
//
// A plug-in is a shared object that adds property sources; docs/plugins.md tells how to begin one. It includes this
// header and headers of host/, and no others. Ids of classes and interfaces are the constants of namespace velt that
// come with this header (velt::IID_IVeltBaseObject): those of host/automation/Ids.h are data of the property layer,
// which a plug-in does not link. The host calls the entry point once, on the thread that loads the plug-in:
//
//   extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
//     if (host->version < veltPluginVersion) return E_NOTIMPL;
//     auto* const source = new Materials;
//     const HRESULT added = host->addPropertySource(host, L"Example.Materials", L"VkDbEntity", source);
//     source->Release();
//     return FAILED(added) ? added : veltPluginVersion;
//   }
//
// Version: the entry point answers the version that the plug-in was compiled with, veltPluginVersion. With any other
// number (another version, 0, or a failure) the plug-in is not used, and nothing that it has added stays. The version
// grows when something changes that plug-ins are compiled against. Members added at the end of VeltPluginHost do not
// change it: `size` tells whether they are there.
// Ownership: the table that `host` points to belongs to the host, and is valid only during the call. Its functions take
// the pointer to it that the entry point was given, and refuse a copy with E_INVALIDARG. The host takes a
// reference to each source, and to each property object that a source hands out, and keeps both until the plug-in is
// let go of. The code of a plug-in stays in the process; when it is loaded again, its entry point is called again.
// Errors: methods answer results. An exception of any type that leaves a method or the entry point is caught and
// counts as a failure. It costs this plug-in its rows, and no other one any. Each kind of trouble is told once, with
// the plug-in's name. Release and AddRef count as methods. A crash cannot be caught.
// Threads: a plug-in is called on one thread, the palette's.

#include <cstdint>

#include "host/automation/IdValues.h"
#include "host/com/HResult.h"
#include "host/palette/IPropertySource.h"

inline constexpr std::int32_t veltPluginVersion = 1;

#define VELT_PLUGIN_EXPORT __attribute__((visibility("default")))

struct VeltPluginHost {
  // veltPluginVersion of the host.
  std::int32_t version;
  // Size of this table in bytes.
  std::uint32_t size;

  // Offers the source for entities of a class ("VkDbLine") and of the classes derived from it ("VkDbEntity": for all).
  // The name must be unique, so begin it with your own ("Example."). May be called again with the same name and source
  // for further classes. E_INVALIDARG for an empty name or an unknown class, E_ACCESSDENIED for a name that another
  // source has, E_POINTER for a null.
  HRESULT(*addPropertySource)
  (const VeltPluginHost* host, const wchar_t* name, const wchar_t* entityClass, IPropertySource* source);

  // Shows a message to the person who loads the plug-in, as one line with the plug-in's name before it.
  void (*report)(const VeltPluginHost* host, const wchar_t* message);
};

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host);
