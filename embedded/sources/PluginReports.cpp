#include "embedded/sources/PluginReports.h"

#include <cstdio>
#include <exception>

#include "dxf/Encoding.h"
#include "host/com/ComError.h"

namespace velt::sources {

PluginReports::Sink PluginReports::standardError() {
  return [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
}

void PluginReports::tell(Trouble trouble, std::string_view what) {
  const std::lock_guard lock(mutex_);
  if (!sink_ || (!told_.insert(trouble).second && trouble != Trouble::Message)) return;
  sink_("plug-in " + plugin_ + ": " + std::string(what));
}

void PluginReports::silence() {
  const std::lock_guard lock(mutex_);
  sink_ = nullptr;
}

std::string narrow(std::wstring_view text) {
  return dxf::Encoding::utf8().encode(text);
}

std::string describeException() {
  try {
    throw;
  } catch (const _com_error& error) {
    return narrow(static_cast<const wchar_t*>(error.Description()));
  } catch (const std::exception& exception) {
    return exception.what();
  } catch (...) {
    return "an exception of an unknown type";
  }
}

}  // namespace velt::sources
