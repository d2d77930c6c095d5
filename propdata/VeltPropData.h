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
// numbers given below are those of the message library. A _com_error that a host call throws ends the operation with
// its failure value and its description as the text; on the way to a dynamic row it only costs that row. When memory
// runs out, the crash recorder gets status 6 and the operation returns its failure value.
//
// Threads. All calls come from one thread, the palette's; debug builds assert it. Only copies of records, vectors and
// strings may be made and destroyed on other threads. The only state of the layer is the cache of property lists and
// the handle of the resource library.
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
  // Database id in old-id form, filled in by the caller.
  long oldId;
  // Class id of the automation object, written by InitializePropData.
  GUID clsid;
  // The automation object, owned between InitializePropData and UnInitializePropData.
  IUnknown* pUnknown;
  // The same object, owned likewise.
  IDispatch* pDispatch;
};

// One selected entity's automation object and its dynamic property, for a merged dynamic row. Owns nothing.
struct DispatchDynPropSourceNode {
  DispatchDynPropSourceNode() = default;
  DispatchDynPropSourceNode(IUnknown* dispatch, IUnknown* dynamicProperty)
      : pDispatch(dispatch), pDynamicProperty(dynamicProperty) {}

  IUnknown* pDispatch = nullptr;
  IUnknown* pDynamicProperty = nullptr;
};

// What a property is to the palette, beyond the type of its value: by it a palette chooses an editor and knows
// the unit of a number. Stored in PROPINFO.customType; the numbers are published and stay what they are.
//
// The type with which a property is declared tells it by its name (NameToUserdefinedType). Where that says
// nothing, the kind is settled when the value is read: by the property's DISPID, by its name and the entity's
// class, or by the type of the value (_GetPropertyType).
//
// Units: lengths are in drawing units, areas in their squares, angles in radians.
struct PropertyKind {
  // clang-format off
  enum Code : std::int32_t {
    none                   = 0,    // not declared with a type of its own, or of no kind

    // Settled when the value is read.
    // kind                  code     meaning
    polylineFit            = 500,  // how a polyline is smoothed: one of the choices
    polyline3dFit          = 501,  // the same of a polyline in space
    segmentWidth           = 502,  // width of a polyline at a segment's start or end: a length
    vertex                 = 503,  // a polyline's current vertex; the group header of an expanded property
    flag                   = 504,  // yes or no
    colorObject            = 505,  // an object with IVeltVkCmColor
    arrowhead              = 506,  // one of the choices
    dimensionStyle         = 507,  // name of a dimension style
    ellipseEndAngle        = 508,  // an angle
    hatchType              = 509,  // where a hatch's pattern comes from: one of the choices
    hyperlinks             = 510,  // an object with IVeltHyperlinks
    choice                 = 511,  // one of the choices
    hatchGradient          = 512,  // name of a gradient
    hatchAngle             = 513,  // of the pattern: an angle
    hatchFlag              = 514,  // yes or no
    hatchElevation         = 515,  // a length
    hatchIslandStyle       = 516,  // one of the choices
    hatchIsoPenWidth       = 517,  // one of the choices
    hatchPattern           = 518,  // name of a pattern
    hatchScale             = 519,  // of the pattern: a factor
    hatchSpacing           = 520,  // of the pattern's lines: a length
    entityLayer            = 521,  // the layer that an entity is on, by name
    entityLinetype         = 522,  // the line type of an entity, by name
    entityPlotStyle        = 523,  // the plot style of an entity, by name
    leaderBlock            = 524,  // name of the block that a multileader shows
    textDirection          = 525,  // how lines of text run: one of the choices
    mtextStyle             = 526,  // name of a text style
    elevation              = 527,  // of a solid or trace: a length
    number                 = 528,  // a number of which nothing else is known
    shapeArea              = 529,  // of a curve or region: an area
    entityLineweight       = 530,  // one of the choices, in hundredths of a millimetre
    viewportPlotStyleTable = 531,  // name of a table of plot styles
    meshFit                = 532,  // how a polygon mesh is smoothed: one of the choices
    imageHeight            = 533,  // a length
    imageWidth             = 534,  // a length
    text                   = 535,  // a text of which nothing else is known
    textJustification      = 536,  // one of the choices
    textStyle              = 537,  // name of a text style
    splineWeight           = 538,  // of a control point: a factor
    entityLinetypeScale    = 539,  // a factor

    // Told by the name of the declared type.
    // kind                  code     meaning
    color                  = 540,  // index of a color
    layer                  = 541,  // name of a layer
    distance               = 542,  // a length
    angle                  = 543,  // an angle
    noUnits                = 544,  // a number without a unit
    lineweight             = 545,  // in hundredths of a millimetre; negative for by layer and the like
    plotStyle              = 546,  // name of a plot style
    linetype               = 547,  // name of a line type
    noEditor               = 548,  // a value that no editor is offered for
    plotStyleTable         = 549,  // name of a table of plot styles
    area                   = 550,  // an area
    unknownType            = 551,  // the name tells nothing, as that of every ordinary enumeration
  };
  // clang-format on
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

  // Class of the entity's automation object.
  GUID clsid;
  // Borrowed: where the property is read and written.
  IDispatch* pDispatch = nullptr;
  // dynamicPropertyDispId for a dynamic property.
  DISPID dispId;
  // Automation name; of a dynamic property its display name.
  CStdStr<wchar_t> name;
  // Documentation string.
  CStdStr<wchar_t> description;
  // Label in the palette; an element has a label of its own.
  CStdStr<wchar_t> displayName;
  // Current value; see Ownership above.
  VARIANT value{};
  // The category to show the row in; -32 to -1 are predefined.
  std::int32_t categoryId = 0;
  CStdStr<wchar_t> categoryName;
  // One element of an expanded property, and which.
  bool isElement = false;
  std::uint32_t elementCookie = 0;
  // The property offers a fixed set of values: their labels and, parallel to them, their integers.
  bool hasChoices = false;
  TqVector<CStdStr<wchar_t>> choiceNames;
  TqVector<int> choiceValues;
  // The type information declares a put function.
  bool isWritable = false;
  // May be edited now.
  bool isEditable = false;
  // The values of the selection differ.
  bool isVaries = false;
  // A PropertyKind.
  std::int32_t customType;
  // Groups of a grouped expanded property.
  std::int64_t groupCount = 0;
  // 0: not grouped.
  std::int16_t elementGrouping = 0;
  // Place in the display order, 0 for none.
  std::int32_t weight = 0;
  // Rows of equal dispId and weight are ordered by elementCookie.
  bool sortByCookie = false;
  // The entity.
  VkDbObjectId objectId;
  // Declared type (VT_USERDEFINED is kept as it is); of a dynamic property the type of its value.
  VARTYPE valueType = VT_EMPTY;
  // The value is not to be fetched again.
  bool hasValue = false;
  // Borrowed: the dynamic property.
  IUnknown* pDynamicProperty = nullptr;
  // Of a merged dynamic row: the pairs to write to.
  TqVector<DispatchDynPropSourceNode> dynSources;
  // The values of real-valued dynamic choices, in the order of the choices.
  TqVector<double> choiceReals;
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

// Gives every entry its class id and automation object and starts COM. Null entries are skipped. Stops at the
// first entry that fails: entries before it keep their objects (so UnInitializePropData is still due), entries
// after it are untouched.
//   errorText     emptied; on failure one of
//                 1001 COM could not be initialised (no entry touched)
//                 1002 the automation object could not be created
//                 1003 it has no IDispatch (pUnknown is released and null)
//                 1004 it has no IVeltBaseObject (pUnknown is released and null, pDispatch is kept)
//   mixedClasses  set to true when the entries are of several classes, else left alone
VELT_PROPDATA_EXPORT bool InitializePropData(TqVector<VeltPropData*>& selection, CStdStr<wchar_t>& errorText,
                                             bool& mixedClasses);

// Releases the automation objects, sets the pointers to null and ends COM. Null entries are skipped. An empty
// selection does nothing, although InitializePropData starts COM for one. Always true.
VELT_PROPDATA_EXPORT bool UnInitializePropData(TqVector<VeltPropData*>& selection);

// The rows of the selection: the properties that all entities have, with the first entity's values, isVaries
// where they differ; after them the dynamic rows.
//   selection  after InitializePropData; an empty one is answered with false, without a message, and so is one
//              with a null entry
//   result     emptied first; after a failure holds what a failed merge had put there
//   errorText  the message of the step that failed (1005 to 1011, 1020 to 1022, 1014, 1015, 1019); messages of
//              failures that do not end the query may stand there after success (1018, 1014, 1015, 1019)
//   mergeFlag, typeFlag  never read or written
// The caller clears the values of the rows.
VELT_PROPDATA_EXPORT bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                                            CStdStr<wchar_t>& errorText, bool& mergeFlag, bool& typeFlag);

// Reads one row's value again, with its weight and kind; never expands it. Always true: nobody is told when the
// get fails. What the value held before is overwritten, not cleared, and after a failed get the old bits stand
// under the declared type: a string or object that somebody else owns, or that was cleared long ago. So whoever
// owns the value takes it out before the call, to clear it, and leaves VARIANT{} in its place: then the value can
// be cleared after the call, whatever became of it. Otherwise it must not be.
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
// Null entries, and entities that cannot be opened or whose layer cannot, are skipped without a word. 1 when
// every entity was processed, and for every dynamic property; 0 when an entity failed: those before it keep the
// new value.
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

// The kind that a declared type's name tells; PropertyKind::unknownType for any other name and for null.
VELT_PROPDATA_EXPORT int NameToUserdefinedType(const wchar_t* name);

// Appends one row per element of an expanded property to out, a group header before them when the property is
// grouped. info is the template and is modified. False with errorText 1014, 1015 or 1016; rows appended
// before a failure stay. A _com_error of the host passes to the caller.
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

// The kind of a property by its DISPID, its name and class, or its value; PropertyKind::none when these say
// nothing, and for null.
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

// Merges the lists of the selection's entities into one. False only when there is no list (without a message), the
// host throws or memory runs out; result is then untouched. entities and flag are not used; errorText may receive
// 1014, 1015 or 1019 although the merge succeeds. lists 1 onward are changed in place: values read, names emptied,
// elements appended.
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

// Appends a row for each property that the source offers for the entity. 1: the source answered, even if no row
// came of it; 0: it failed or left its answer empty.
VELT_PROPDATA_EXPORT int GetDynPropSourcePropInfo(IDispatch* entity, IPropertySource* source,
                                                  TqVector<PROPINFO>& out);

// Appends the rows of all sources of the entity. 0: there are no sources.
VELT_PROPDATA_EXPORT int GetDynPropSourcesPropInfo(IDispatch* entity, TqVector<PROPINFO>& out);

// Whether dynamic rows are shown: a single entity, or references to one dynamic block.
VELT_PROPDATA_EXPORT bool isAllEntitiesSameDynProp(TqVector<VeltPropData*>& selection);

// Rebuilds the choices of a dynamic row. 1 also for an enumeration without values, which empties the lists; 0,
// with the lists left alone, when the property has no IDynamicEnumProperty or the data of a value cannot be had.
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
