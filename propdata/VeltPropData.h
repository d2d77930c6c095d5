#pragma once

// The property layer of a CAD host: which properties the selected entities have, with which values, how each
// is edited, and how a committed value is written back.
//
// A palette's work on one selection:
//
//   1. It makes a TqVector<VeltPropData*> with one entry per entity, each with its oldId filled in.
//   2. InitializePropData creates the automation objects.
//   3. GetPropertiesInfo answers the merged rows; SortByWeight, GetPropInfoValue, IsDifferentByLayerColors
//      serve it further; SetPropertiesValue writes a value.
//   4. UnInitializePropData releases the automation objects.
//
// Ownership. The selection and its entries belong to the caller. Each entry owns its two interface pointers
// between 2 and 4. Rows own their strings and vectors and nothing else: interface pointers in them are
// borrowed from the entries (rows must not be used after 4), and what a row's VARIANT refers to is shared by
// all copies of the row and freed once, by VariantClear on one of them. The caller clears the values of the
// rows that GetPropertiesInfo hands it.
//
// Failures. Operations that can fail return false (or 0) and leave a text for people in an out-parameter; the
// numbers given below are those of the message library. A host call that throws something else than described
// passes it through. When memory runs out, the crash recorder gets status 6 and the operation returns its
// failure value.
//
// Threads. All calls are made on the palette's thread. The only state of the layer is the cache of property
// lists and the handle of the resource library.
//
// The spelling of every exported name (ExcuteIntersect, GetDynProperteySources, ...) is kept for its callers.

#include <cstdint>
#include <map>

#include "container/TqVector.h"
#include "errors/LoadErrString.h"
#include "host/automation/Ids.h"
#include "host/com/IDispatch.h"
#include "host/com/OleSafeArray.h"
#include "host/com/StringArray.h"
#include "host/database/VkArray.h"
#include "host/database/VkCmColor.h"
#include "host/database/VkDbObjectId.h"
#include "host/palette/IPropertySource.h"
#include "text/CStdStr.h"

// ---------------------------------------------------------------------------------------------------------
// Records
// ---------------------------------------------------------------------------------------------------------

// One selected entity. Allocated, owned and freed by the caller.
struct VeltPropData {
  long oldId;            // database id in old-id form, filled in by the caller
  GUID clsid;            // class id of the automation object, written by InitializePropData
  IUnknown* pUnknown;    // the automation object, owned between InitializePropData and UnInitializePropData
  IDispatch* pDispatch;  // the same object, owned likewise
};

// One selected entity's automation object and its dynamic property, for a merged dynamic row. Owns nothing.
struct DispatchDynPropSourceNode {
  DispatchDynPropSourceNode() = default;
  DispatchDynPropSourceNode(IUnknown* dispatch, IUnknown* dynamicProperty)
      : pDispatch(dispatch), pDynamicProperty(dynamicProperty) {}

  IUnknown* pDispatch = nullptr;
  IUnknown* pDynamicProperty = nullptr;
};

// One row of the palette: one property of one entity, or after the merge of the whole selection. A plain
// value: copying allocates nothing, shares strings and vectors, and copies the VARIANT bit for bit; destroying
// a row clears no value and releases no interface.
//
// QUIRK(value_shared_by_copies): all copies refer to what the value holds; whoever owns the list clears it
// once.
//
// clsid, dispId and customType are not set by the default constructor: whoever makes a row assigns them.
struct PROPINFO {
  PROPINFO() { VariantInit(&value); }

  GUID clsid;                                      // class of the entity's automation object
  IDispatch* pDispatch = nullptr;                  // borrowed: where the property is read and written
  DISPID dispId;                                   // -23 for a dynamic property
  CStdStr<wchar_t> name;                           // automation name; a dynamic property's display name
  CStdStr<wchar_t> description;                    // documentation string
  CStdStr<wchar_t> displayName;                    // label in the palette, of an element its own
  VARIANT value{};                                 // current value; see Ownership above
  std::int32_t categoryId = 0;                     // -32 to -1 are predefined
  CStdStr<wchar_t> categoryName;                   //
  bool isElement = false;                          // one element of an expanded property
  std::uint32_t elementCookie = 0;                 // which element
  bool hasChoices = false;                         // the property offers a fixed set of values
  TqVector<CStdStr<wchar_t>> choiceNames;          // their labels
  TqVector<int> choiceValues;                      // their integers, parallel to choiceNames
  bool isWritable = false;                         // the type information declares a put function
  bool isEditable = false;                         // may be edited now
  bool isVaries = false;                           // the values of the selection differ
  std::int32_t customType;                         // 540 to 551 by type name, 500 to 539 by kind, 0 for none
  std::int64_t groupCount = 0;                     // groups of a grouped expanded property
  std::int16_t elementGrouping = 0;                // 0: not grouped
  std::int32_t weight = 0;                         // place in the display order, 0 for none
  bool sortByCookie = false;                       // among equal dispId and weight, by elementCookie
  VkDbObjectId objectId;                           // the entity
  VARTYPE valueType = VT_EMPTY;                    // declared type (VT_USERDEFINED is kept as it is)
  bool hasValue = false;                           // value is not to be fetched again
  IUnknown* pDynamicProperty = nullptr;            // borrowed: the dynamic property
  TqVector<DispatchDynPropSourceNode> dynSources;  // of a merged dynamic row: the pairs to write to
  TqVector<double> choiceReals;                    // values of real-valued dynamic choices, in item order
};

// Marks a row that comes from a property source.
inline constexpr DISPID dynamicPropertyDispId = -23;

// Key of the property-list cache: the bytes of a class id and the low byte of a variant number, cut at the
// first zero byte.
class VELT_PROPDATA_EXPORT CLSIDMemString : public CStdStr<char> {
 public:
  CLSIDMemString(const GUID& clsid, int variant);
};

using PropertyListCache = std::map<CLSIDMemString, TqVector<PROPINFO>, std::less<CLSIDMemString>,
                                   _TqSTLAllocator<std::pair<const CLSIDMemString, TqVector<PROPINFO>>>>;

// One row of the weight table: the DISPIDs of a class in display order, up to the first 0.
struct Guid2DispIds {
  GUID clsid;
  DISPID dispIds[80];
};

// ---------------------------------------------------------------------------------------------------------
// For the palette
// ---------------------------------------------------------------------------------------------------------

// Gives every entry its class id and automation object and starts COM. Stops at the first entry that fails:
// entries before it keep their objects (so UnInitializePropData is still due), entries after it are untouched.
//   errorText     emptied; on failure one of
//                 1001 COM could not be initialised (no entry touched)
//                 1002 the automation object could not be created
//                 1003 it has no IDispatch (pUnknown is released and null)
//                 1004 it has no IVeltBaseObject (pUnknown is released and null, pDispatch is kept)
//   mixedClasses  set to true when the entries are of several classes, else left alone
VELT_PROPDATA_EXPORT bool InitializePropData(TqVector<VeltPropData*>& selection, CStdStr<wchar_t>& errorText,
                                             bool& mixedClasses);

// Releases the automation objects, sets the pointers to null and ends COM. An empty selection does nothing,
// although InitializePropData starts COM for one. Always true.
VELT_PROPDATA_EXPORT bool UnInitializePropData(TqVector<VeltPropData*>& selection);

// The rows of the selection: the properties that all entities have, with the first entity's values, isVaries
// where they differ; dynamic rows behind them.
//   selection  after InitializePropData
//   result     emptied first; after a failure holds what a failed merge had put there
//   errorText  the message of the step that failed (1005 to 1011, 1020 to 1022, 1014, 1015, 1019); messages of
//              failures that do not end the query may stand there after success (1018, 1014, 1015, 1019)
//   mergeFlag, typeFlag  never read or written
// The caller clears the values of the rows.
VELT_PROPDATA_EXPORT bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                                            CStdStr<wchar_t>& errorText, bool& mergeFlag, bool& typeFlag);

// Reads one row's value again, with its weight and kind; never expands it. The value held before is
// overwritten, not cleared. Always true: when the get fails, value has the declared type as its tag.
VELT_PROPDATA_EXPORT bool GetPropInfoValue(PROPINFO& prop);

// Puts a list in display order: by weight, elements of one property by cookie. Not stable.
VELT_PROPDATA_EXPORT void SortByWeight(TqVector<PROPINFO>& list);
VELT_PROPDATA_EXPORT bool picompare(const PROPINFO& a, const PROPINFO& b);

// Whether a by-layer color shows differently for the entities of two lists; false for any other value. The
// entity of a list is the one of its first row with DISPID 1281 that can be opened.
VELT_PROPDATA_EXPORT bool IsDifferentByLayerColors(VARIANT& value, TqVector<PROPINFO>& listA,
                                                   TqVector<PROPINFO>& listB);

// Writes a value to every entity of the selection.
//   property       its dispId and name, and for a dynamic property its dynSources, are read
//   value          passed on as it is: not copied, not converted, not cleared
//   elementWrite   false: the whole property; true: the element elementCookie of an expanded property
//   errorText      written on failure only: 1003 an entry without IDispatch, 1019 (with the name) the property
//                  cannot be found, 1014 no IOPMPropertyExpander, 1014 (with the name) the element was refused;
//                  left alone when a property put fails
//   lockedCount    one is added for each entity on a locked layer; such an entity is skipped
//   touchedIds     gets the id of every entity on an unlocked layer before its write is attempted
// Entities that cannot be opened, or whose layer cannot, are skipped without a word. 1 when every entity was
// processed, and for every dynamic property; 0 when an entity failed: those before it keep the new value.
VELT_PROPDATA_EXPORT int SetPropertiesValue(TqVector<VeltPropData*>& selection, const PROPINFO& property,
                                            VARIANT& value, bool elementWrite, CStdStr<wchar_t>& errorText,
                                            int& lockedCount, VkArray<VkDbObjectId>& touchedIds,
                                            unsigned int elementCookie);

// ---------------------------------------------------------------------------------------------------------
// Selection
// ---------------------------------------------------------------------------------------------------------

// The automation class of a database object; the generic class when it names none. False, with clsid left
// alone, when the object cannot be opened.
VELT_PROPDATA_EXPORT bool GetCLSID(GUID& clsid, long oldId);

// The static rows of one entity, without values, from the cache when its class was seen before.
//   errorText  the walk's or the category's message; 1011 no IOPMPropertyExtension; 1018 no
//              IPerPropertyBrowsing, which is left there although the call succeeds
// False also for a null entry and for an object without properties, without a message. A failed harvest
// enters nothing in the cache.
VELT_PROPDATA_EXPORT bool GetSingleEntPropInfo(VeltPropData* entry, TqVector<PROPINFO>& list,
                                               CStdStr<wchar_t>& errorText, bool& typeFlag);

// Puts an entity's own fields (clsid, pDispatch, objectId, isEditable) into rows taken from the cache.
VELT_PROPDATA_EXPORT void resetObjectInfo(TqVector<PROPINFO>& list, const VeltPropData* entry);

// The process-wide cache: made on first use, never emptied. Owned by the layer.
VELT_PROPDATA_EXPORT PropertyListCache* getTqPROPINFOCache();

// ---------------------------------------------------------------------------------------------------------
// Type information
// ---------------------------------------------------------------------------------------------------------

// One row per visible property-get accessor, in the order of the function table, and the names of all visible
// property-put accessors. flag is never read or written. On failure false, errorText 1005 to 1011 or a
// _com_error's description, and what was listed so far stays in props and putNames.
VELT_PROPDATA_EXPORT bool GetPropTypeInfo(VeltPropData* data, TqVector<PROPINFO>& props,
                                          CStringArray& putNames, CStdStr<wchar_t>& errorText, bool& flag);

// Category number and name of one property. On failure false and errorText 1020, 1021, 1022 or a _com_error's
// description; categoryId is written as soon as it is known. An empty name becomes the text of 1023.
VELT_PROPDATA_EXPORT bool GetCategoryInfo(VeltPropData* data, int dispId, int& categoryId,
                                          CStdStr<wchar_t>& categoryName, CStdStr<wchar_t>& errorText);

// Name of a predefined category (-32 to -1), from "PlxOPMRes.dll"; empty when the library lacks it. Returns 0.
VELT_PROPDATA_EXPORT int GetPredefinedCategoryName(int category, CStdStr<wchar_t>& name);

// Code of a custom type name, 540 to 550; 551 for any other name and for null.
VELT_PROPDATA_EXPORT int NameToUserdefinedType(const wchar_t* name);

// Appends one row per element of an expanded property to out, a group header before them when the property is
// grouped. info is the template and is modified. False with errorText 1014, 1015 or 1016; rows appended
// before a failure stay.
VELT_PROPDATA_EXPORT bool GetVariantTypeInfo(PROPINFO& info, TqVector<PROPINFO>& out,
                                             CStdStr<wchar_t>& errorText);

// ---------------------------------------------------------------------------------------------------------
// Typing and values
// ---------------------------------------------------------------------------------------------------------

// Ends with a row of GUID_NULL.
extern "C" VELT_PROPDATA_EXPORT const Guid2DispIds g_guid2dispids[13];

// Index among the 32 special names; 0xFFFFFFFE for null, 0xFFFFFFFF for any other name.
VELT_PROPDATA_EXPORT std::uint32_t _GetSpecialPropertyIndex(const wchar_t* name);

// 1 when clsid is the class wanted, else 0 (also for null). No hierarchy is consulted.
VELT_PROPDATA_EXPORT int _ObjectIsA(GUID clsid, const GUID* wanted);

// Kind of a property, 500 to 539; 0 for none and for null.
VELT_PROPDATA_EXPORT std::uint32_t _GetPropertyType(GUID clsid, PROPINFO* prop);

// Sets weight to the property's place in the class's row of the weight table, or leaves it. The result means
// nothing.
VELT_PROPDATA_EXPORT int SetPropertyWeight(GUID clsid, PROPINFO& prop);

// Reads a row's weight, value and kind; a VT_VARIANT property that the object expands is appended to elements
// instead of being read. Failures leave fields as they were; hasValue is set in every case.
VELT_PROPDATA_EXPORT void getPropValue(PROPINFO& prop, TqVector<PROPINFO>& elements);

// ---------------------------------------------------------------------------------------------------------
// Merge
// ---------------------------------------------------------------------------------------------------------

// Merges the lists of the selection's entities into one. False only when there is no list or memory runs out
// (result is then untouched). entities and flag are not used; errorText may receive 1014, 1015 or 1019
// although the merge succeeds. lists 1 onward are changed in place: values read, names emptied, elements appended.
VELT_PROPDATA_EXPORT bool ExcuteIntersect(TqVector<VeltPropData*>& entities,
                                          TqVector<TqVector<PROPINFO>>& lists, TqVector<PROPINFO>& result,
                                          CStdStr<wchar_t>& errorText, bool& flag);

// Whether the search for first in other's list is over; found tells whether it is the same property, compared.
// Sets first.isVaries when the values differ. errorText may receive 1014, 1015 or 1019.
VELT_PROPDATA_EXPORT bool comparePropInfo(PROPINFO& first, PROPINFO& other, bool& found,
                                          CStdStr<wchar_t>& errorText);

// 0 equal, 1 different, -1 of different types. Frees nothing.
VELT_PROPDATA_EXPORT std::int32_t CompareVARIANT(VARIANT& a, VARIANT b);

// The color of a color object; E_FAIL, with color left alone, when the value is none.
VELT_PROPDATA_EXPORT HRESULT VariantToColorHelper(VARIANT* value, VkCmColor& color);

// The color of the layer of the row's entity. False, with color left alone, when either cannot be opened.
VELT_PROPDATA_EXPORT bool getPropEntityLayerColor(VkCmColor& color, PROPINFO& prop);

// Whether two equal colors are by layer and the entities' layers differ in color.
VELT_PROPDATA_EXPORT bool IsDifferentByLayerColors(PROPINFO& first, PROPINFO& other);

// ---------------------------------------------------------------------------------------------------------
// Dynamic properties
// ---------------------------------------------------------------------------------------------------------

// Describes one dynamic property of an entity. 1: out describes it; 0: skip it; 2: it has no
// IDynamicProperty2, the older form is to be tried. out borrows the property object.
VELT_PROPDATA_EXPORT int GetDynamicPropertyPropInfo(IDispatch* entity, IUnknown* property, PROPINFO& out);

// The same through IDynamicProperty: 1 or 0.
VELT_PROPDATA_EXPORT int GetDynamicPropertyPropInfoDefault(IDispatch* entity, IUnknown* property,
                                                           PROPINFO& out);

// The property sources of the entity's class, as an array of IUnknown. 1: out is filled; 0: there are none.
VELT_PROPDATA_EXPORT int GetDynProperteySources(IDispatch* entity, COleSafeArray& out);

// Appends a row for each property that the source offers for the entity. 0: the source failed or has none.
VELT_PROPDATA_EXPORT int GetDynPropSourcePropInfo(IDispatch* entity, IPropertySource* source,
                                                  TqVector<PROPINFO>& out);

// Appends the rows of all sources of the entity. 0: there are no sources.
VELT_PROPDATA_EXPORT int GetDynPropSourcesPropInfo(IDispatch* entity, TqVector<PROPINFO>& out);

// Whether dynamic rows are shown: a single entity, or references to one dynamic block.
VELT_PROPDATA_EXPORT bool isAllEntitiesSameDynProp(TqVector<VeltPropData*>& selection);

// Rebuilds the choices of a dynamic row. 0, with the lists left alone, when it enumerates nothing or a value
// cannot be had.
VELT_PROPDATA_EXPORT int fillDynPropComboBox(PROPINFO& property);

// Write a value to every dynamic property of dynSources. 0: there are none; 1: all were visited; 2 (the first
// function only): a property without IDynamicProperty2 was met, the older writer is to write all of them.
VELT_PROPDATA_EXPORT int setDynPropSourcesPropValue(const PROPINFO& property, VARIANT& value);
VELT_PROPDATA_EXPORT int setDynPropSourcesPropValueDefault(const PROPINFO& property, VARIANT& value);

// ---------------------------------------------------------------------------------------------------------
// Choices
// ---------------------------------------------------------------------------------------------------------

// Fills the choices of every row with hasChoices; rows whose object refuses lose hasChoices.
VELT_PROPDATA_EXPORT void fillPropComboBox(TqVector<PROPINFO>& properties);

// Clears the value of every row of every list.
VELT_PROPDATA_EXPORT void freePropInfoVariantValue(TqVector<TqVector<PROPINFO>>& lists);
