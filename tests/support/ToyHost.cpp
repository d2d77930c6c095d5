#include "tests/support/ToyHost.h"

#include <gtest/gtest.h>

#include "embedded/automation/classes/ClassDirectory.h"
#include "host/automation/IdValues.h"
#include "host/com/ComError.h"
#include "host/com/IPerPropertyBrowsing.h"
#include "host/com/TypeInfo.h"
#include "host/palette/ICategorizeProperties.h"
#include "host/palette/IDynamicEnumProperty.h"
#include "host/palette/IDynamicProperty.h"
#include "host/palette/IDynamicProperty2.h"
#include "host/palette/IOPMPropertyExpander.h"
#include "host/palette/IOPMPropertyExtension.h"
#include "host/palette/IPropertySource.h"
#include "tests/support/Interposers.h"
#include "tests/support/Narrow.h"
#include "tests/support/Toy.h"
#include "tests/support/ToyDatabase.h"

namespace velt::toys {

namespace {

ToyHost* theHost = nullptr;

struct NamedInterface {
  IID iid;
  const char* name;
};

constexpr NamedInterface interfaces[] = {
    {IID_IUnknown, "IUnknown"},
    {IID_IDispatch, "IDispatch"},
    {IID_ITypeInfo, "ITypeInfo"},
    {IID_ITypeLib, "ITypeLib"},
    {IID_IPerPropertyBrowsing, "IPerPropertyBrowsing"},
    {IID_ICategorizeProperties, "ICategorizeProperties"},
    {IID_IDynamicEnumProperty, "IDynamicEnumProperty"},
    {IID_IDynamicProperty, "IDynamicProperty"},
    {IID_IDynamicProperty2, "IDynamicProperty2"},
    {IID_IOPMPropertyExpander, "IOPMPropertyExpander"},
    {IID_IOPMPropertyExtension, "IOPMPropertyExtension"},
    {IID_IPropertySource, "IPropertySource"},
#define VELT_CLSID(name, ...)
#define VELT_IID(name, ...) {IID_##name, #name},
#include "host/automation/Ids.inc"
};

}  // namespace

ToyHost* ToyHost::current() {
  return theHost;
}

ToyHost::ToyHost() {
  EXPECT_EQ(theHost, nullptr) << "one ToyHost at a time";
  useInterposers();
  theHost = this;
  mark();
}

ToyHost::~ToyHost() {
  EXPECT_TRUE(toys.empty()) << "a toy outlives its host: declare the host first";
  theHost = nullptr;
  for (const auto& [block, left] : left_)
    left.end();
}

Rule& ToyHost::on(std::string call) {
  rules_.push_back(std::make_unique<Rule>(std::move(call)));
  return *rules_.back();
}

void ToyHost::failCall(int n, HRESULT result) {
  countdown_ = n;
  countdownResult_ = result;
  countdownText_.reset();
  countdownLeaves_ = false;
  countdownNulls_ = false;
  countdownLies_ = false;
  failedCall_.clear();
  untilFailure_.clear();
}

void ToyHost::raiseCall(int n, std::wstring text) {
  failCall(n);
  countdownText_ = std::move(text);
}

void ToyHost::leaveCall(int n) {
  failCall(n);
  countdownLeaves_ = true;
}

void ToyHost::nullCall(int n) {
  failCall(n, S_OK);
  countdownNulls_ = true;
}

void ToyHost::lieCall(int n) {
  failCall(n);
  countdownLies_ = true;
}

// References and openings count as before the call, and what it made belongs to nobody.
HRESULT ToyHost::leaveThenFail(const std::function<HRESULT()>& work, HRESULT result) {
  std::vector<std::pair<int*, int>> counts;
  for (Toy* const toy : toys) {
    for (auto& [iid, facet] : toy->facets_)
      counts.emplace_back(&facet.references, facet.references);
  }
  for (const auto& [id, object] : database)
    counts.emplace_back(&object->opened, object->opened);
  std::map<const void*, Block> lentBefore = lent_;
  isLeaving_ = true;
  static_cast<void>(work());
  isLeaving_ = false;
  for (const auto& [count, before] : counts)
    *count = before;
  for (auto& [block, lent] : lent_) {
    if (!lentBefore.contains(block)) left_[block] = {"", lent.end};
  }
  lent_ = std::move(lentBefore);
  return result;
}

void ToyHost::noteMade(const char* account, void* block, void (*end)(void*)) {
  if (isLeaving_) left_[block] = {account, [block, end] { end(block); }};
}

bool ToyHost::wasLeft(const std::string& line, const void* block) const {
  if (!left_.contains(block)) return false;
  ADD_FAILURE() << line << ": it was not handed over";
  return true;
}

Rule* ToyHost::ruleFor(const std::string& line) {
  Rule* chosen = nullptr;
  for (const auto& rule : rules_) {
    if (!line.starts_with(rule->call_)) continue;
    ++rule->seen_;
    if (rule->occurrence_ == 0 || rule->occurrence_ == rule->seen_) chosen = rule.get();
  }
  return chosen;
}

bool ToyHost::isDue(const std::string& line) {
  if (countdown_ == 0 || --countdown_ != 0) return false;
  failedCall_ = line;
  untilFailure_ = log.all();
  return true;
}

HRESULT ToyHost::perform(const std::string& line, const std::function<HRESULT()>& work,
                         const Action& answerNull, const Action& lie) {
  log.add(line);
  if ((!countdownLies_ || lie) && isDue(line)) {
    if (countdownText_.has_value()) _com_raise_error(countdownResult_, countdownText_->c_str());
    if (countdownNulls_ && answerNull) answerNull();
    const HRESULT result = countdownLies_     ? work()
                           : countdownLeaves_ ? leaveThenFail(work, countdownResult_)
                                              : countdownResult_;
    if (countdownLies_ && SUCCEEDED(result)) lie();
    return result;
  }
  const Rule* rule = ruleFor(line);
  Rule decided(line);
  if (rule == nullptr && decide) {
    decide(line, decided);
    rule = &decided;
  }
  if (rule == nullptr) return work();
  switch (rule->kind_) {
    case Rule::Kind::Work:
      if (rule->action_) rule->action_();
      return work();
    case Rule::Kind::Fail:
      return rule->result_;
    case Rule::Kind::Raise:
      _com_raise_error(rule->result_, rule->text_.c_str());
    case Rule::Kind::AnswerNull:
      if (answerNull) answerNull();
      return rule->result_;
    case Rule::Kind::WorkThenReturn:
      static_cast<void>(work());
      return rule->result_;
    case Rule::Kind::LeaveThenFail:
      return leaveThenFail(work, rule->result_);
  }
  return E_UNEXPECTED;
}

bool ToyHost::allows(const std::string& line) {
  log.add(line);
  const Rule* const rule = ruleFor(line);
  if (rule == nullptr) return true;
  if (rule->action_) rule->action_();
  return rule->kind_ == Rule::Kind::Work;
}

bool ToyHost::takeBackBlock(const char* kind, void* block) {
  if (wasLeft(say(kind, " given back"), block)) return false;
  const auto found = lent_.find(block);
  if (found == lent_.end() || found->second.kind != kind) {
    ADD_FAILURE() << kind << " given back that was not handed out";
    return false;
  }
  lent_.erase(found);
  return true;
}

std::string ToyHost::nameOfOwner(const IDispatch* dispatch) const {
  if (dispatch == nullptr) return "null";
  for (const Toy* toy : toys) {
    const auto facet = toy->facets_.find(nameOf(IID_IDispatch));
    if (facet != toy->facets_.end() && facet->second.object == dispatch) return toy->name();
  }
  return "nobody's dispatch";
}

std::map<std::string, long> ToyHost::counts() const {
  std::map<std::string, long> out;
  for (const auto& [block, lent] : lent_)
    ++out[lent.kind];
  // The embedded host counts what was left like everything else.
  for (const auto& [block, left] : left_)
    --out[left.kind];
  for (const Toy* toy : toys) {
    for (const auto& [iid, facet] : toy->facets_)
      out[toy->name() + "." + iid] += facet.references;
  }
  return out;
}

void ToyHost::mark() {
  marked_ = counts();
  ledgerAtMark_ = platform::Ledger::snapshot();
}

std::string ToyHost::balance() const {
  std::map<std::string, long> difference = counts();
  for (const auto& [what, count] : marked_)
    difference[what] -= count;
  for (const auto& [what, count] :
       platform::Ledger::difference(ledgerAtMark_, platform::Ledger::snapshot())) {
    difference[what] += static_cast<long>(count);
  }
  std::string text;
  for (const auto& [what, count] : difference) {
    if (count != 0 && !what.empty())
      text += say(text.empty() ? "" : ", ", what, count > 0 ? " +" : " ", count);
  }
  return text.empty() ? "balanced" : text;
}

std::string nameOf(const GUID& id) {
  for (const NamedInterface& named : interfaces) {
    if (named.iid == id) return named.name;
  }
  if (const automation::AutomationClass* const kind = automation::findClass(id))
    return "CLSID_" + narrow(kind->name);
  if (id == GUID_NULL) return "GUID_NULL";
  return "GUID " + hex(id.Data1);
}

std::string narrow(const wchar_t* text) {
  return text == nullptr ? "null" : tests::narrow(text);
}

std::string hex(std::uint32_t number) {
  std::ostringstream stream;
  stream << "0x" << std::hex << std::uppercase << number;
  return stream.str();
}

}  // namespace velt::toys
