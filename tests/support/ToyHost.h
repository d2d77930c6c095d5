#pragma once

// The stage of a test: the log of all host calls, the script that makes calls fail, the balance of what was
// handed out, and the drawing database of toys. Every toy belongs to one ToyHost, and while one is alive the
// free functions of the host (see Interposers.cpp) are logged in it and obey its script too. Without a script
// and without toys in the database every function passes through to the embedded host.
//
// One at a time, on one thread. Toys must not outlive it.

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "embedded/platform/Ledger.h"
#include "host/com/ComRuntime.h"
#include "host/com/Guid.h"
#include "host/com/HResult.h"
#include "host/com/IDispatch.h"
#include "host/com/IUnknown.h"
#include "host/platform/CrashRecorder.h"
#include "tests/support/CallLog.h"

namespace velt::toys {

class Toy;
class ToyObject;
class ToyDbObject;

// What a call does instead of its work; made by ToyHost::on.
class Rule {
 public:
  explicit Rule(std::string call) : call_(std::move(call)) {}

  Rule& nth(int occurrence) {  // counts the calls of that name from 1; without it the rule is for all of them
    occurrence_ = occurrence;
    return *this;
  }

  void fail(HRESULT result = E_FAIL) { set(Kind::Fail, result); }               // outputs untouched
  void raise(std::wstring text) { set(Kind::Raise, E_FAIL, std::move(text)); }  // throws _com_error
  void answerNothing() { set(Kind::Fail, S_OK); }                               // success, outputs untouched
  void answerNull() { set(Kind::AnswerNull, S_OK); }                            // success, outputs null
  void workThenReturn(HRESULT result) { set(Kind::WorkThenReturn, result); }  // outputs written all the same
  // Outputs written, but nothing in them is handed over: who gives it back fails the test.
  void leaveThenFail(HRESULT result = E_FAIL) { set(Kind::LeaveThenFail, result); }
  void first(std::function<void()> action) { set(Kind::Work, S_OK, {}, std::move(action)); }  // then the work

 private:
  friend class ToyHost;
  enum class Kind { Work, Fail, Raise, AnswerNull, WorkThenReturn, LeaveThenFail };

  void set(Kind kind, HRESULT result, std::wstring text = {}, std::function<void()> action = {}) {
    kind_ = kind;
    result_ = result;
    text_ = std::move(text);
    action_ = std::move(action);
  }

  std::string call_;
  int occurrence_ = 0;
  int seen_ = 0;
  Kind kind_ = Kind::Work;
  HRESULT result_ = S_OK;
  std::wstring text_;
  std::function<void()> action_;
};

class ToyHost {
 public:
  ToyHost();
  ~ToyHost();
  ToyHost(const ToyHost&) = delete;
  ToyHost& operator=(const ToyHost&) = delete;

  static ToyHost* current();  // null outside of a test that has one

  CallLog log;

  // --- script ---------------------------------------------------------------------------------------------
  Rule& on(std::string call);  // the rule made last wins
  // Fails (or with a text: throws at) the n-th call that can fail, counted from here on.
  void failCall(int n, HRESULT result = E_FAIL);
  void raiseCall(int n, std::wstring text);
  // Lets it write its outputs and fail, handing nothing over.
  void leaveCall(int n);
  // Lets it succeed with null outputs; a call without outputs succeeds and does nothing.
  void nullCall(int n);
  // Lets it do its work and then tell a wrong number; counts only calls that have one to tell.
  void lieCall(int n);
  // Says what a call does that can fail and for which no rule was made: by the rule that it gets with the call's line.
  // Null: its work.
  std::function<void(const std::string& line, Rule& rule)> decide;
  std::string failedCall() const {
    return failedCall_;
  }  // its line; empty when that many calls were not made
  const Lines& untilFailure() const { return untilFailure_; }  // the log as that call began

  // --- switches of the free functions ------------------------------------------------------------------------
  std::function<ToyObject*(REFCLSID)>
      createInstance;                               // TqAutoCreateInstance; null answer: REGDB_E_CLASSNOTREG
  std::optional<LANGID> userLanguage;               // GetUserDefaultLangID
  std::optional<LCID> userLocale;                   // GetUserDefaultLCID
  std::optional<VeltCrashRecorder*> crashRecorder;  // veltGetCrashRecorder
  // Libraries that hold no file: LoadLibraryExW and loadResourceDll answer a handle for every name, and
  // LoadStringW answers texts[id], or "<library>:<id>" without one.
  bool toyLibraries = false;
  std::map<UINT, std::wstring> texts;
  std::set<UINT> missingTexts;

  // VkCmColor::setColor and setNames are logged; not always, because toys are made with colors too.
  bool logsColors = false;

  // Objects that the vkdbOpen... functions find by id before they ask the embedded host.
  std::map<long, ToyDbObject*> database;

  // --- balance ----------------------------------------------------------------------------------------------
  void mark();  // counts from here on; the constructor does it too
  // "balanced", or what is still out since mark(): "BSTR +1, FUNCDESC +1, line.IDispatch -1".
  std::string balance() const;

  // --- for toys and interposers --------------------------------------------------------------------------------
  using Action = std::function<void()>;
  // Logs a call that can fail and does what the script says.
  HRESULT perform(const std::string& line, const std::function<HRESULT()>& work,
                  const Action& answerNull = {}, const Action& lie = {});
  // The same for a function without a HRESULT: false when the script makes it fail or answer null.
  bool allows(const std::string& line);
  template <class T>
  T* lend(const char* kind, T* block) {
    lent_[block] = {kind, [block] { delete block; }};
    return block;
  }
  template <class T>
  void takeBack(const char* kind, T* block) {
    if (takeBackBlock(kind, block)) delete block;
  }
  // Strings and the like as they are made, with the account that the embedded host counts them in.
  void noteMade(const char* account, void* block, void (*end)(void*));
  // Whether a failing call left it in an output. That it is given back now fails the test.
  bool wasLeft(const std::string& line, const void* block) const;
  std::set<Toy*> toys;
  // The name of the toy whose IDispatch it is, as the log writes an entity that is handed to somebody.
  std::string nameOfOwner(const IDispatch* dispatch) const;

 private:
  struct Block {
    std::string kind;
    Action end;
  };

  HRESULT leaveThenFail(const std::function<HRESULT()>& work, HRESULT result);
  Rule* ruleFor(const std::string& line);
  bool isDue(const std::string& line);
  bool takeBackBlock(const char* kind, void* block);
  void act(const Rule& rule) const;

  std::vector<std::unique_ptr<Rule>> rules_;
  int countdown_ = 0;
  HRESULT countdownResult_ = E_FAIL;
  std::optional<std::wstring> countdownText_;
  bool countdownLeaves_ = false;
  bool countdownNulls_ = false;
  bool countdownLies_ = false;
  std::string failedCall_;
  Lines untilFailure_;
  std::map<const void*, Block> lent_;
  // What failing calls left in their outputs; and whether such a call is at work.
  std::map<const void*, Block> left_;
  bool isLeaving_ = false;
  std::map<std::string, long> counts() const;
  std::map<std::string, long> marked_;
  platform::Ledger::Snapshot ledgerAtMark_;
};

// How the log writes things.
std::string nameOf(const GUID& id);  // "IOPMPropertyExtension", "CLSID_VeltLine", "GUID_NULL"
std::string narrow(const wchar_t* text);
inline std::string narrow(const std::wstring& text) {
  return narrow(text.c_str());
}
std::string hex(std::uint32_t number);

}  // namespace velt::toys
