#include "tests/support/ToyTypeInfo.h"

namespace velt::toys {

namespace {

void write(BSTR* out, BSTR text) {
  if (out != nullptr) {
    *out = text;
  } else {
    SysFreeString(text);
  }
}

// Which outputs were asked for: "name, documentation".
std::string asked(const BSTR* name, const BSTR* documentation, const DWORD* context, const BSTR* file) {
  std::string parts;
  const auto add = [&parts](const void* out, const char* part) {
    if (out != nullptr) parts += parts.empty() ? part : say(", ", part);
  };
  add(name, "name");
  add(documentation, "documentation");
  add(context, "context");
  add(file, "file");
  return parts;
}

}  // namespace

class ToyTypeInfo::Library final : public Toy {
 public:
  explicit Library(ToyTypeInfo& type)
      : Toy(type.host(), type.name() + ".library"), type_(type), facet_(*this) {}

  class LibraryFacet final : public Facet<ITypeLib> {
   public:
    explicit LibraryFacet(Library& library) : Facet(library, IID_ITypeLib), library_(library) {}
    UINT GetTypeInfoCount() override { return 1; }
    HRESULT GetTypeInfo(UINT, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetTypeInfoType(UINT, TYPEKIND*) override { return E_NOTIMPL; }
    HRESULT GetTypeInfoOfGuid(REFGUID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT GetLibAttr(TLIBATTR**) override { return E_NOTIMPL; }
    HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
    HRESULT GetDocumentation(INT index, BSTR* name, BSTR* documentation, DWORD* context,
                             BSTR* file) override {
      return library_.answer(
          [&] {
            return say("GetDocumentation(", index, ": ", asked(name, documentation, context, file), ")");
          },
          [&] {
            if (index != library_.type_.libraryIndex) return TYPE_E_ELEMENTNOTFOUND;
            write(name, newString(library_.type_.typeName));
            write(documentation, newString(L"type documentation"));
            if (context != nullptr) *context = 7;
            write(file, newString(L"types.hlp"));
            return S_OK;
          },
          name, documentation, file);
    }
    HRESULT IsName(LPOLESTR, ULONG, BOOL*) override { return E_NOTIMPL; }
    HRESULT FindName(LPOLESTR, ULONG, ITypeInfo**, MEMBERID*, USHORT*) override { return E_NOTIMPL; }
    void ReleaseTLibAttr(TLIBATTR*) override {}

   private:
    Library& library_;
  };

 private:
  ToyTypeInfo& type_;
  LibraryFacet facet_;
};

class ToyTypeInfo::TypeInfoFacet final : public Facet<ITypeInfo> {
 public:
  explicit TypeInfoFacet(ToyTypeInfo& toy) : Facet(toy, IID_ITypeInfo), toy_(toy) {}

  HRESULT GetTypeAttr(TYPEATTR** attributes) override {
    return toy_.answer(
        "GetTypeAttr()",
        [&] {
          auto* const made = toy_.host().lend("TYPEATTR", new TYPEATTR{});
          made->typekind = toy_.kind;
          made->cFuncs = toy_.functionCount.value_or(
              static_cast<WORD>(toy_.functions.empty() ? 0 : toy_.functions.size() + baseFunctions));
          made->cVars = static_cast<WORD>(toy_.members.size());
          *attributes = made;
          return S_OK;
        },
        attributes);
  }

  HRESULT GetFuncDesc(UINT index, FUNCDESC** function) override {
    return toy_.answer([&] { return say("GetFuncDesc(", index, ")"); },
                       [&] {
                         if (index < baseFunctions || index - baseFunctions >= toy_.functions.size())
                           return TYPE_E_ELEMENTNOTFOUND;
                         const ToyFunction& described = toy_.functions[index - baseFunctions];
                         auto* const made = toy_.host().lend("FUNCDESC", new FUNCDESC{});
                         made->memid = described.memid;
                         made->invkind = described.kind;
                         made->wFuncFlags = described.flags;
                         made->elemdescFunc.tdesc.vt = described.returns;
                         if (described.type != nullptr) {
                           made->elemdescFunc.tdesc.hreftype = 0x100 + index;
                           toy_.references_[0x100 + index] = described.type;
                         }
                         *function = made;
                         return S_OK;
                       },
                       function);
  }

  HRESULT GetVarDesc(UINT index, VARDESC** variable) override {
    return toy_.answer([&] { return say("GetVarDesc(", index, ")"); },
                       [&] {
                         if (index >= toy_.members.size()) return TYPE_E_ELEMENTNOTFOUND;
                         auto* const made = toy_.host().lend("VARDESC", new VARDESC{});
                         made->memid = static_cast<MEMBERID>(index + 1);
                         made->varkind = toy_.members[index].kind;
                         // Only a constant has a value; the others have an offset in its place.
                         if (made->varkind == VAR_CONST) {
                           made->lpvarValue = &toy_.members[index].value;
                         } else {
                           made->oInst = 0x77;
                         }
                         *variable = made;
                         return S_OK;
                       },
                       variable);
  }

  HRESULT GetNames(MEMBERID member, BSTR* names, UINT maxNames, UINT* nameCount) override {
    return toy_.answer([&] { return say("GetNames(", member, ", at most ", maxNames, ")"); },
                       [&] {
                         if (member < 1 || static_cast<std::size_t>(member) > toy_.members.size())
                           return TYPE_E_ELEMENTNOTFOUND;
                         names[0] = newString(toy_.members[static_cast<std::size_t>(member) - 1].name);
                         *nameCount = 1;
                         return S_OK;
                       },
                       names, nameCount);
  }

  HRESULT GetDocumentation(MEMBERID member, BSTR* name, BSTR* documentation, DWORD* context,
                           BSTR* file) override {
    return toy_.answer(
        [&] {
          return say("GetDocumentation(", member, ": ", asked(name, documentation, context, file), ")");
        },
        [&] {
          for (const ToyFunction& function : toy_.functions) {
            if (function.memid != member) continue;
            write(name, newString(function.name));
            write(documentation,
                  function.documentation.has_value() ? newString(*function.documentation) : nullptr);
            if (context != nullptr) *context = 0;
            write(file, nullptr);
            return S_OK;
          }
          return TYPE_E_ELEMENTNOTFOUND;
        },
        name, documentation);
  }

  HRESULT GetRefTypeInfo(HREFTYPE refType, ITypeInfo** typeInfo) override {
    return toy_.answer([&] { return "GetRefTypeInfo(" + hex(refType) + ")"; },
                       [&] {
                         const auto found = toy_.references_.find(refType);
                         if (found == toy_.references_.end()) return TYPE_E_ELEMENTNOTFOUND;
                         found->second->referenced(IID_ITypeInfo);
                         *typeInfo = found->second->typeInfo();
                         return S_OK;
                       },
                       typeInfo);
  }

  HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) override {
    return toy_.answer(
        "GetContainingTypeLib()",
        [&] {
          toy_.library_->referenced(IID_ITypeLib);
          *library = toy_.library_->as<ITypeLib>(IID_ITypeLib);
          *index = static_cast<UINT>(toy_.libraryIndex);
          return S_OK;
        },
        library);
  }

  void ReleaseTypeAttr(TYPEATTR* attributes) override {
    const tests::AllocationPause pause;
    takeBack("ReleaseTypeAttr()", "TYPEATTR", attributes);
  }
  void ReleaseFuncDesc(FUNCDESC* function) override { takeBack("ReleaseFuncDesc()", "FUNCDESC", function); }
  void ReleaseVarDesc(VARDESC* variable) override { takeBack("ReleaseVarDesc()", "VARDESC", variable); }

  HRESULT GetTypeComp(ITypeComp**) override { return E_NOTIMPL; }
  HRESULT GetRefTypeOfImplType(UINT, HREFTYPE*) override { return E_NOTIMPL; }
  HRESULT GetImplTypeFlags(UINT, INT*) override { return E_NOTIMPL; }
  HRESULT GetIDsOfNames(LPOLESTR*, UINT, MEMBERID*) override { return E_NOTIMPL; }
  HRESULT Invoke(void*, MEMBERID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    const tests::AllocationPause pause;
    return E_NOTIMPL;
  }
  HRESULT GetDllEntry(MEMBERID, INVOKEKIND, BSTR*, BSTR*, WORD*) override { return E_NOTIMPL; }
  HRESULT AddressOfMember(MEMBERID, INVOKEKIND, void**) override { return E_NOTIMPL; }
  HRESULT CreateInstance(IUnknown*, REFIID, void**) override { return E_NOTIMPL; }
  HRESULT GetMops(MEMBERID, BSTR*) override { return E_NOTIMPL; }

 private:
  template <class Block>
  void takeBack(const char* call, const char* blockKind, Block* block) {
    const tests::AllocationPause pause;
    toy_.host().log.add(say(call, " on ", toy_.name()));
    toy_.host().takeBack(blockKind, block);
  }

  ToyTypeInfo& toy_;
};

ToyTypeInfo::ToyTypeInfo(ToyHost& host, std::string name, TYPEKIND typeKind)
    : Toy(host, std::move(name)),
      kind(typeKind),
      facet_(std::make_unique<TypeInfoFacet>(*this)),
      library_(std::make_unique<Library>(*this)) {}

ToyTypeInfo::~ToyTypeInfo() = default;

std::unique_ptr<ToyTypeInfo> ToyTypeInfo::named(ToyHost& host, std::wstring name, TYPEKIND kind) {
  auto type = std::make_unique<ToyTypeInfo>(host, narrow(name), kind);
  type->typeName = std::move(name);
  return type;
}

ToyTypeInfo& ToyTypeInfo::member(std::wstring memberName, VARIANT value, VARKIND memberKind) {
  members.push_back({std::move(memberName), value, memberKind});
  return *this;
}

}  // namespace velt::toys
