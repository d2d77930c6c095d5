#include "embedded/sources/PluginReports.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include "dxf/Encoding.h"
#include "host/com/ComError.h"

namespace velt::sources {
namespace {

// For one line of a terminal: bytes that are not UTF-8 and whatever a terminal might obey become U+FFFD.
std::string cleaned(const std::string& line) {
  const auto isObeyed = [](wchar_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); };
  std::wstring text = dxf::Encoding::utf8().decode(line);
  std::replace_if(text.begin(), text.end(), isObeyed, static_cast<wchar_t>(dxf::replacementCharacter));
  return dxf::Encoding::utf8().encode(text);
}

}  // namespace

PluginReports::Sink PluginReports::standardError() {
  return [](const std::string& line) { std::fprintf(stderr, "%s\n", line.c_str()); };
}

void PluginReports::tell(Trouble trouble, std::string_view what) {
  const std::lock_guard lock(mutex_);
  if (!sink_ || (!told_.insert(trouble).second && trouble != Trouble::Message)) return;
  sink_(cleaned("plug-in " + plugin_ + ": " + std::string(what)));
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
    const char* const what = exception.what();
    return what != nullptr ? what : "an exception without a text";
  } catch (...) {
    return "an exception of an unknown type";
  }
}

}  // namespace velt::sources
