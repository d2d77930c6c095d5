#pragma once

// Which plug-in is being called, so that a crash can be told with its name. What a plug-in asks of the host is not
// cancelled (platform/Watch.h): the exception would pass through its code.
//
// Threads: each has a call of its own.

#include <string>

#include "embedded/platform/Watch.h"

namespace velt::sources {

// The plug-in is being called for as long as this lives. Both texts must outlive it.
class PluginCall {
 public:
  PluginCall(const char* plugin, const char* method);
  PluginCall(const PluginCall&) = delete;
  PluginCall& operator=(const PluginCall&) = delete;
  ~PluginCall();

 private:
  const char* const outerPlugin_;
  const char* const outerMethod_;
  const platform::Unwatched unwatched_;
};

// While it lives, a crash within a plug-in (a bad pointer, an endless recursion, abort) is told on standard error with
// the names of the plug-in and of the method, before it ends the process as it would have. One at a time.
class CrashNotice {
 public:
  // `program` stands before the message, and must outlive the notice.
  explicit CrashNotice(const char* program);
  CrashNotice(const CrashNotice&) = delete;
  CrashNotice& operator=(const CrashNotice&) = delete;
  ~CrashNotice();
};

}  // namespace velt::sources
