#include "hostcheck/Findings.h"

#include <algorithm>
#include <cstdio>

#include "hostcheck/CheckList.h"

namespace velt::hostcheck {

namespace {

const Check* find(std::string_view name) {
  const auto found =
      std::find_if(checks.begin(), checks.end(), [&](const Check& check) { return check.name == name; });
  return found != checks.end() ? &*found : nullptr;
}

bool contains(const std::vector<std::string>& names, std::string_view name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

std::string narrow(const wchar_t* text) {
  std::string bytes;
  for (; text != nullptr && *text != L'\0'; ++text) {
    const auto c = static_cast<std::uint32_t>(*text);
    const auto add = [&](std::uint32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
      add(c);
    } else if (c < 0x800) {
      add(0xC0 | c >> 6);
      add(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
      add(0xE0 | c >> 12);
      add(0x80 | (c >> 6 & 0x3F));
      add(0x80 | (c & 0x3F));
    } else {
      add(0xF0 | (c >> 18 & 0x07));
      add(0x80 | (c >> 12 & 0x3F));
      add(0x80 | (c >> 6 & 0x3F));
      add(0x80 | (c & 0x3F));
    }
  }
  return bytes;
}

std::string hex(HRESULT result) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(result));
  return text;
}

void Findings::note(std::string_view check) {
  if (!noted_.contains(check)) report_.tried.push_back(*noted_.emplace(check).first);
}

void Findings::tries(std::string_view check) {
  if (report_.onTry) report_.onTry(std::string(check), subject_);
  note(check);
}

void Findings::calls(std::string_view method) {
  if (report_.onTry) report_.onTry(std::string(method), subject_);
  note("exceptions");
}

void Findings::cannotTry(std::string_view check, std::string reason) {
  const bool isKnown = std::any_of(report_.notTried.begin(), report_.notTried.end(),
                                   [&](const NotTried& known) { return known.check == check; });
  if (!isKnown) report_.notTried.push_back({std::string(check), std::move(reason)});
}

bool Findings::expect(bool holds, std::string_view check, std::string_view expected, std::string came) {
  note(check);
  if (holds) return true;
  const auto isOfCheck = [&](const Finding& finding) { return finding.check == check; };
  const auto already = std::count_if(report_.findings.begin(), report_.findings.end(), isOfCheck);
  if (static_cast<std::size_t>(already) >= findingsPerCheck) {
    ++report_.further[std::string(check)];
    return false;
  }
  const Check* const known = find(check);
  report_.findings.push_back({std::string(check), subject_, std::string(expected), std::move(came),
                              std::string(known != nullptr ? known->suffers : "")});
  return false;
}

void Findings::finish() {
  std::vector<std::string> tried;
  std::vector<NotTried> notTried;
  for (const Check& check : checks) {
    if (contains(report_.tried, check.name)) {
      tried.emplace_back(check.name);
      continue;
    }
    const auto known = std::find_if(report_.notTried.begin(), report_.notTried.end(),
                                    [&](const NotTried& one) { return one.check == check.name; });
    notTried.push_back(known != report_.notTried.end()
                           ? *known
                           : NotTried{std::string(check.name), "no entity that was given calls for it"});
  }
  report_.tried = std::move(tried);
  report_.notTried = std::move(notTried);
}

}  // namespace velt::hostcheck
