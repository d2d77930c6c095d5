#pragma once

// Toy: an object that counts its references per interface and never dies by them (a test owns it as a plain
// value). Each interface is a facet of its own, so that the log tells through which interface an object was
// released. A method of a facet is one of the answer...() functions, which log the call, obey the script and keep what
// the toy allocates for itself out of sight of an AllocationSpy.

#include <map>
#include <optional>
#include <string>

#include "host/automation/IdValues.h"
#include "host/com/Bstr.h"
#include "host/com/IDispatch.h"
#include "tests/support/AllocationSpy.h"
#include "tests/support/ToyHost.h"
#include "tests/support/ToyValue.h"

namespace velt::toys {

class Toy {
 public:
  Toy(ToyHost& host, std::string name);
  virtual ~Toy();
  Toy(const Toy&) = delete;
  Toy& operator=(const Toy&) = delete;

  ToyHost& host() const { return host_; }
  const std::string& name() const { return name_; }

  void withhold(REFIID iid) { withheld_.insert(nameOf(iid)); }  // QueryInterface answers E_NOINTERFACE
  // QueryInterface answers with the other toy's, so that it shows which of the two is asked from then on.
  void handOut(REFIID iid, Toy& other) { handedOut_[nameOf(iid)] = &other; }
  int references() const;
  int references(REFIID iid) const;

  // The interface without a reference (unlogged, even when withheld), for building the given of a test.
  template <class Interface>
  Interface* as(REFIID iid) const {
    return static_cast<Interface*>(facets_.at(nameOf(iid)).object);
  }
  IUnknown* unknown() const { return as<IUnknown>(IID_IUnknown); }
  IDispatch* dispatch() const { return as<IDispatch>(IID_IDispatch); }
  // A reference that is not logged, as the test's own.
  IUnknown* referenced(REFIID iid);

  // --- for facets ---
  // A call as it stands in the log (a text, or a function that makes it), what it does, and the outputs that are null
  // when the script answers so; an output may be missing.
  template <class Line, class Work, class... Out>
  HRESULT answer(const Line& line, const Work& work, Out*... outputs) {
    const tests::AllocationPause pause;
    return call(textOf(line), work, [&] { (setNull(outputs), ...); });
  }
  // The value where there is one; otherwise the call fails.
  template <class Line, class Value, class Out>
  HRESULT answerValue(const Line& line, const std::optional<Value>& value, Out* out,
                      HRESULT missing = E_FAIL) {
    return answer(
        line,
        [&] {
          if (!value.has_value()) return missing;
          *out = given(*value);
          return S_OK;
        },
        out);
  }
  // The text where there is one; otherwise the null string.
  template <class Line>
  HRESULT answerText(const Line& line, const std::optional<std::wstring>& text, BSTR* out) {
    return answer(
        line, [&] { return *out = text.has_value() ? given(*text) : nullptr, S_OK; }, out);
  }
  // The byte where there is one; otherwise the output stays as it was.
  template <class Line>
  HRESULT answerFlag(const Line& line, const std::optional<BOOL>& byte, BOOL* out) {
    return answer(
        line,
        [&] {
          if (byte.has_value()) *out = *byte;
          return S_OK;
        },
        out);
  }

  HRESULT query(REFIID iid, void** object);
  ULONG addRef(REFIID iid);
  ULONG release(REFIID iid);
  HRESULT call(const std::string& line, const std::function<HRESULT()>& work,
               const ToyHost::Action& answerNull = {}) {
    return host_.perform(line + " on " + name_, work, answerNull);
  }

 private:
  static std::string textOf(const char* line) { return line; }
  template <class Line>
  static std::string textOf(const Line& line) {
    return line();
  }
  template <class Out>
  static void setNull(Out* output) {
    if (output != nullptr) *output = Out{};
  }
  // What the receiver gets, and owns.
  static BSTR given(const std::wstring& text) { return SysAllocString(text.c_str()); }
  static VARIANT given(const ToyValue& value) { return value.make(); }
  template <class Plain>
  static Plain given(const Plain& plain) {
    return plain;
  }

  friend class ToyHost;
  template <class Interface>
  friend class Facet;

  struct FacetEntry {
    void* object = nullptr;
    int references = 0;
  };

  struct UnknownFacet final : IUnknown {
    explicit UnknownFacet(Toy& owner) : toy(owner) {}
    HRESULT QueryInterface(REFIID iid, void** object) override { return toy.query(iid, object); }
    ULONG AddRef() override { return toy.addRef(IID_IUnknown); }
    ULONG Release() override { return toy.release(IID_IUnknown); }
    Toy& toy;
  };

  ToyHost& host_;
  std::string name_;
  std::map<std::string, FacetEntry> facets_;
  std::set<std::string> withheld_;
  std::map<std::string, Toy*> handedOut_;
  UnknownFacet unknown_;
};

// The three methods of IUnknown for one interface of a toy.
template <class Interface>
class Facet : public Interface {
 public:
  Facet(Toy& toy, REFIID iid) : owner_(toy), iid_(iid) {
    toy.facets_[nameOf(iid)].object = static_cast<Interface*>(this);
  }
  Facet(const Facet&) = delete;
  Facet& operator=(const Facet&) = delete;

  HRESULT QueryInterface(REFIID iid, void** object) override { return owner_.query(iid, object); }
  ULONG AddRef() override { return owner_.addRef(iid_); }
  ULONG Release() override { return owner_.release(iid_); }

 private:
  Toy& owner_;
  IID iid_;
};

// The same for an interface over IDispatch whose dispatch methods nobody calls.
template <class Interface>
class DualFacet : public Facet<Interface> {
 public:
  DualFacet(Toy& toy, REFIID iid) : Facet<Interface>(toy, iid), toy_(toy) {}

  HRESULT GetTypeInfoCount(UINT*) override { return refuse("GetTypeInfoCount()"); }
  HRESULT GetTypeInfo(UINT, LCID, ITypeInfo**) override { return refuse("GetTypeInfo()"); }
  HRESULT GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return refuse("GetIDsOfNames()"); }
  HRESULT Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return refuse("Invoke()");
  }

 protected:
  HRESULT refuse(const char* call) const {
    return toy_.answer(call, [] { return E_NOTIMPL; });
  }

 private:
  Toy& toy_;
};

}  // namespace velt::toys
