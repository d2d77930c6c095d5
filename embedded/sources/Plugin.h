#pragma once

// What a plug-in for the embedded host includes: the one entry point, and what the host hands to it.
//
// A plug-in is a shared object that adds property sources; docs/plugins.md tells how to begin one. Beside this header it
// includes headers of host/ and no other. Ids of classes and interfaces it takes from namespace velt, where this header
// brings them in as constants (velt::IID_IVeltBaseObject): those of host/automation/Ids.h are data of the property layer,
// which a plug-in does not link. The host calls its entry point once, on the thread that loads it:
//
//   extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host) {
//     if (host->version < veltPluginVersion) return E_NOTIMPL;
//     auto* const source = new Materials;
//     const HRESULT added = host->addPropertySource(host, L"Example.Materials", L"VkDbEntity", source);
//     source->Release();
//     return FAILED(added) ? added : veltPluginVersion;
//   }
//
// Version: the entry point answers the version that the plug-in was compiled with, veltPluginVersion. Any other
// positive number, 0, and a negative result refuse the plug-in; nothing that it has added stays then. The version grows
// when something changes that a plug-in was compiled against; what is only added at the end of VeltPluginHost leaves
// the version as it is, and `size` tells whether it is there.
// Ownership: the table that `host` points to belongs to the host and is there during the call only. The host takes a
// reference to each source, and to each property object that a source hands out, and keeps both until it lets go of the
// plug-in. The code of a plug-in stays in the process; loaded anew, its entry point is called anew.
// Errors: methods answer results. An exception that leaves a method, the entry point included, is caught and counts as a
// failure, _com_error too; it costs the plug-in rows, and nobody else any. Each kind of trouble is told once, with the
// plug-in's name. What cannot be caught is a crash.
// Threads: everything of a plug-in is called on the thread of the drawing that is shown. Different drawings may be shown
// by different threads at once.

#include <cstdint>

#include "host/automation/IdValues.h"
#include "host/com/HResult.h"
#include "host/palette/IPropertySource.h"

inline constexpr std::int32_t veltPluginVersion = 1;

#define VELT_PLUGIN_EXPORT __attribute__((visibility("default")))

struct VeltPluginHost {
  std::int32_t version;  // veltPluginVersion of the host
  std::uint32_t size;    // of this table, in bytes

  // Offers the source for entities of a class ("VkDbLine") and of the classes derived from it ("VkDbEntity": of all).
  // The name stands for the source wherever one is named; it must be unique, so begin it with your own ("Example.").
  // May be called again with the same name and source for further classes. E_INVALIDARG for an empty name or an unknown
  // class, E_ACCESSDENIED for a name that another source has, E_POINTER for a null.
  HRESULT(*addPropertySource)
  (const VeltPluginHost* host, const wchar_t* name, const wchar_t* entityClass, IPropertySource* source);

  // Tells the person who loads the plug-in something, as one line with the plug-in's name before it.
  void (*report)(const VeltPluginHost* host, const wchar_t* message);
};

extern "C" VELT_PLUGIN_EXPORT std::int32_t veltRegisterPlugin(const VeltPluginHost* host);
