#pragma once

// Type information: what an automation object publishes about its members. The layer makes the rows of a palette from
// it: one row for each visible function that gets a property.
//
// Ownership: a block that a type information answers (TYPEATTR, FUNCDESC, VARDESC) stays its own, and is given back to
// the Release... method of the same type information. Strings and interfaces belong to the caller.
//
// Of the blocks the layer reads only a part: of TYPEATTR typekind, cFuncs and cVars; of FUNCDESC memid, invkind,
// wFuncFlags and the type of elemdescFunc; of VARDESC memid, varkind and, for a constant, lVal of lpvarValue. Of the
// methods it calls GetTypeAttr, GetFuncDesc, GetVarDesc, GetNames, GetDocumentation, GetRefTypeInfo,
// GetContainingTypeLib and the three Release..., and of a type library GetDocumentation.

#include "host/com/IDispatch.h"

struct ITypeLib;
struct ITypeComp;

// Names a type information among those that another one refers to.
using HREFTYPE = DWORD;

// What a type information describes. The layer tells enumerations from all others.
enum TYPEKIND : INT {
  TKIND_ENUM = 0,       // constants: the choices of a property
  TKIND_RECORD = 1,     // fields
  TKIND_MODULE = 2,     // functions of a library
  TKIND_INTERFACE = 3,  // a function table
  TKIND_DISPATCH = 4,   // members that are called by DISPID
  TKIND_COCLASS = 5,    // a class, by the interfaces that it has
  TKIND_ALIAS = 6,      // another name of a type
  TKIND_UNION = 7       // fields in one place
};

// How a function is called; the layer does not look at it.
enum FUNCKIND : INT {
  FUNC_VIRTUAL,      // through the function table
  FUNC_PUREVIRTUAL,  // through the function table, and the class itself has none
  FUNC_NONVIRTUAL,   // by its address, with an instance
  FUNC_STATIC,       // by its address, without one
  FUNC_DISPATCH      // by its DISPID
};

// A property that can be read and written is two functions of one name: a get and a put.
enum INVOKEKIND : INT {
  INVOKE_FUNC = 1,           // a method
  INVOKE_PROPERTYGET = 2,    // gets a property: the row
  INVOKE_PROPERTYPUT = 4,    // puts it: the row is writable
  INVOKE_PROPERTYPUTREF = 8  // puts it by reference: not looked at
};

// How arguments are passed; the layer does not look at it.
enum CALLCONV : INT {
  CC_CDECL = 1,   // the caller cleans the stack
  CC_STDCALL = 4  // the function does
};

// The members of an enumeration are constants.
enum VARKIND : INT {
  VAR_PERINSTANCE = 0,  // a field of each instance
  VAR_STATIC = 1,       // one for all instances
  VAR_CONST = 2,        // a constant
  VAR_DISPATCH = 3      // by its DISPID
};

// A function that is hidden or not browsable is no row.
inline constexpr WORD FUNCFLAG_FRESTRICTED = 0x1;
inline constexpr WORD FUNCFLAG_FHIDDEN = 0x40;
inline constexpr WORD FUNCFLAG_FNONBROWSABLE = 0x400;

// The type of a value. For VT_USERDEFINED hreftype names another type information, which GetRefTypeInfo answers.
struct TYPEDESC {
  union {
    // What a pointer points to, the bounds of an array, or the reference to a user-defined type.
    TYPEDESC* lptdesc;
    void* lpadesc;
    HREFTYPE hreftype;
  };
  // A VARENUM.
  VARTYPE vt;
};

// How a parameter is passed; the layer does not look at it.
struct PARAMDESC {
  // Its default value, and flags.
  void* pparamdescex;
  USHORT wParamFlags;
};

// A parameter, or what a function returns.
struct ELEMDESC {
  // Its type, and how it is passed.
  TYPEDESC tdesc;
  PARAMDESC paramdesc;
};

// What a type information describes, and how many members it has.
struct TYPEATTR {
  // Not read by the layer, down to the size of an instance.
  GUID guid;
  LCID lcid;
  DWORD dwReserved;
  MEMBERID memidConstructor;
  MEMBERID memidDestructor;
  LPOLESTR lpstrSchema;
  ULONG cbSizeInstance;
  // What the type information describes.
  TYPEKIND typekind;
  // Number of functions; the first seven are those of IUnknown and IDispatch.
  WORD cFuncs;
  // Number of variables: for an enumeration, its members.
  WORD cVars;
  // Not read by the layer, from here on.
  WORD cImplTypes;
  WORD cbSizeVft;
  WORD cbAlignment;
  WORD wTypeFlags;
  WORD wMajorVerNum;
  WORD wMinorVerNum;
  TYPEDESC tdescAlias;
  DWORD idldescType[2];
};

// One function. elemdescFunc is what it returns: for a property get, the type of the property.
struct FUNCDESC {
  // By which GetDocumentation is asked for the name. The row gets its DISPID from IDispatch::GetIDsOfNames.
  MEMBERID memid;
  // Not read by the layer.
  SCODE* lprgscode;
  ELEMDESC* lprgelemdescParam;
  FUNCKIND funckind;
  // Whether it gets or puts a property.
  INVOKEKIND invkind;
  // Not read by the layer.
  CALLCONV callconv;
  SHORT cParams;
  SHORT cParamsOpt;
  SHORT oVft;
  SHORT cScodes;
  // What it returns.
  ELEMDESC elemdescFunc;
  // FUNCFLAG_...
  WORD wFuncFlags;
};

// One variable. A constant (VAR_CONST) has its value in lpvarValue.
struct VARDESC {
  // By which GetNames is asked for the name.
  MEMBERID memid;
  // Not read by the layer.
  LPOLESTR lpstrSchema;
  union {
    // Where it stands in an instance, or its value.
    ULONG oInst;
    VARIANT* lpvarValue;
  };
  // Not read by the layer.
  ELEMDESC elemdescVar;
  WORD wVarFlags;
  // The layer takes constants.
  VARKIND varkind;
};

// What one automation class, or one type that it uses, looks like. All entities of a class id may share one: the layer
// reads it for the first of them, and keeps the list of properties until the process ends.
// Called by: GetPropertiesInfo, for the first entity of a class. Where a failure has a message, the query ends with it.
struct ITypeInfo : IUnknown {
  // Failure: message 1007; of a user-defined type: the property has no custom type and no choices from it.
  virtual HRESULT GetTypeAttr(TYPEATTR** attributes) = 0;
  // Not called by the layer.
  virtual HRESULT GetTypeComp(ITypeComp** comp) = 0;
  // By index, from 0. Failure: message 1008; of a variable: that choice is left out.
  virtual HRESULT GetFuncDesc(UINT index, FUNCDESC** function) = 0;
  virtual HRESULT GetVarDesc(UINT index, VARDESC** variable) = 0;
  // The name of a member and those of its parameters, at most maxNames; nameCount tells how many were written.
  // The result is not looked at: a member without a name is a choice without a label.
  virtual HRESULT GetNames(MEMBERID member, BSTR* names, UINT maxNames, UINT* nameCount) = 0;
  // Not called by the layer, down to Invoke.
  virtual HRESULT GetRefTypeOfImplType(UINT index, HREFTYPE* refType) = 0;
  virtual HRESULT GetImplTypeFlags(UINT index, INT* flags) = 0;
  virtual HRESULT GetIDsOfNames(LPOLESTR* names, UINT count, MEMBERID* members) = 0;
  virtual HRESULT Invoke(void* instance, MEMBERID member, WORD flags, DISPPARAMS* params, VARIANT* result,
                         EXCEPINFO* exception, UINT* argumentError) = 0;
  // Name and help text of a member. Each output may be null when it is not asked for. Failure: message 1009.
  virtual HRESULT GetDocumentation(MEMBERID member, BSTR* name, BSTR* documentation, DWORD* helpContext,
                                   BSTR* helpFile) = 0;
  // Not called by the layer.
  virtual HRESULT GetDllEntry(MEMBERID member, INVOKEKIND kind, BSTR* dll, BSTR* name, WORD* ordinal) = 0;
  // The type that a TYPEDESC names. The result is not looked at; null: the property has no custom type.
  virtual HRESULT GetRefTypeInfo(HREFTYPE refType, ITypeInfo** typeInfo) = 0;
  // Not called by the layer, down to GetMops.
  virtual HRESULT AddressOfMember(MEMBERID member, INVOKEKIND kind, void** address) = 0;
  virtual HRESULT CreateInstance(IUnknown* outer, REFIID iid, void** object) = 0;
  virtual HRESULT GetMops(MEMBERID member, BSTR* mops) = 0;
  // The library that holds this type, and the type's index in it. Failure: the property has no custom type.
  virtual HRESULT GetContainingTypeLib(ITypeLib** library, UINT* index) = 0;
  // Takes back what the method of the same name has lent.
  virtual void ReleaseTypeAttr(TYPEATTR* attributes) = 0;
  virtual void ReleaseFuncDesc(FUNCDESC* function) = 0;
  virtual void ReleaseVarDesc(VARDESC* variable) = 0;
};

// What a library of types says of itself; the layer does not look at it.
struct TLIBATTR {
  // Its id, language, platform, version and flags.
  GUID guid;
  LCID lcid;
  INT syskind;
  WORD wMajorVerNum;
  WORD wMinorVerNum;
  WORD wLibFlags;
};

// A library of types. The layer asks it for the names of user-defined types, by which it knows a color or a layer.
struct ITypeLib : IUnknown {
  // Not called by the layer, down to GetTypeComp.
  virtual UINT GetTypeInfoCount() = 0;
  virtual HRESULT GetTypeInfo(UINT index, ITypeInfo** typeInfo) = 0;
  virtual HRESULT GetTypeInfoType(UINT index, TYPEKIND* kind) = 0;
  virtual HRESULT GetTypeInfoOfGuid(REFGUID guid, ITypeInfo** typeInfo) = 0;
  virtual HRESULT GetLibAttr(TLIBATTR** attributes) = 0;
  virtual HRESULT GetTypeComp(ITypeComp** comp) = 0;
  // Name and help text of the type with that index. Each output may be null when it is not asked for.
  // Called by: GetPropertiesInfo, for the name. Failure: the property has no custom type.
  virtual HRESULT GetDocumentation(INT index, BSTR* name, BSTR* documentation, DWORD* helpContext,
                                   BSTR* helpFile) = 0;
  // Not called by the layer.
  virtual HRESULT IsName(LPOLESTR name, ULONG hash, BOOL* isName) = 0;
  virtual HRESULT FindName(LPOLESTR name, ULONG hash, ITypeInfo** typeInfos, MEMBERID* members,
                           USHORT* found) = 0;
  virtual void ReleaseTLibAttr(TLIBATTR* attributes) = 0;
};

inline constexpr IID IID_ITypeInfo{
    0x00020401, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
inline constexpr IID IID_ITypeLib{
    0x00020402, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
