#pragma once

// What the checks share: they tell what they ask for, and what was wrong with the answer.

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <utility>

#include "host/com/ComError.h"
#include "hostcheck/HostCheck.h"

namespace velt::hostcheck {

std::string narrow(const wchar_t* text);
std::string hex(HRESULT result);

class Findings {
 public:
  explicit Findings(Report& report) : report_(report) {}

  // What the checks that follow are about.
  void about(std::string subject) { subject_ = std::move(subject); }
  const std::string& subject() const { return subject_; }

  // A check is made from here on; and the host is called for one.
  void tries(std::string_view check);
  void calls(std::string_view method);
  // It cannot be made; of no account when it was made for another entity or property.
  void cannotTry(std::string_view check, std::string reason);
  // The outcome of a check: finds something unless it holds. Answers whether it does.
  bool expect(bool holds, std::string_view check, std::string_view expected, std::string came);

  // Calls the host: a _com_error is the layer's to catch, and answers its result; anything else is found.
  template <class Call>
  HRESULT call(std::string_view what, Call&& work) {
    calls(what);
    try {
      return work();
    } catch (const _com_error&) {
      return E_FAIL;
    } catch (...) {
      expect(false, "exceptions", "a result, or a _com_error", std::string(what) + " threw something else");
      return E_FAIL;
    }
  }

  // Puts the report in order.
  void finish();

 private:
  void note(std::string_view check);

  Report& report_;
  // What was tried, found at once: a drawing is asked for millions of things.
  std::set<std::string, std::less<>> noted_;
  std::string subject_;
};

}  // namespace velt::hostcheck
