// The category of a property: asked of a toy object, predefined names from toy libraries.

#include "tests/support/LayerTest.h"
#include "tests/support/ToySelection.h"

namespace {

using namespace velt::toys;

class Categories : public LayerTest {
 protected:
  bool ask(int dispId) { return GetCategoryInfo(&entry, dispId, categoryId, categoryName, errorText); }

  ToyObject line{host, "line"};
  ToySelection selection;
  VeltPropData& entry = selection.add(line, 77, CLSID_VeltLine);
  int categoryId = -777;
  CStdStr<wchar_t> categoryName = untouched;
};

TEST_F(Categories, ACategoryOfTheObjectsOwnIsAskedForInOneOrderOfCalls) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  host.mark();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "QueryInterface(ICategorizeProperties) on line",
                                  "MapPropertyToCategory(4) on line",
                                  "GetCategoryName(3, locale 4) on line",
                                  "Release(ICategorizeProperties) on line",
                              }));
  EXPECT_EQ(categoryId, 3);
  EXPECT_EQ(categoryName.str(), L"Geometry");
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.log.count("SysFreeString(Geometry)"), 1);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Categories, Quirk_dispid_as_category_locale) {
  line.readOnly(1027, L"StartX").inCategory(3, L"Geometry");

  EXPECT_TRUE(ask(1027));

  EXPECT_EQ(host.log.count("GetCategoryName(3, locale 1027) on line"), 1);
}

TEST_F(Categories, TheUnknownOfTheEntryIsAsked) {
  ToyObject other(host, "other");
  other.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  entry.pUnknown->Release();
  entry.pUnknown = other.unknown();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(host.log.count("QueryInterface(ICategorizeProperties) on other"), 1);
  entry.pUnknown = nullptr;
}

// --- predefined categories ----------------------------------------------------------------------------------

TEST_F(Categories, APredefinedCategorysNameComesFromTheLibraryAndNotFromTheObject) {
  line.readOnly(4, L"StartX").inCategory(-2, L"never asked for");
  host.mark();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(host.log.lines(), (Lines{
                                  "QueryInterface(ICategorizeProperties) on line",
                                  "MapPropertyToCategory(4) on line",
                                  "loadResourceDll(PlxOPMRes.dll)",
                                  "LoadStringW(PlxOPMRes.dll, 1002, 1023)",
                                  "Release(ICategorizeProperties) on line",
                              }));
  EXPECT_EQ(categoryId, -2);
  EXPECT_EQ(categoryName.str(), L"PlxOPMRes.dll:1002");
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Categories, FromMinus32ToMinus1TheyArePredefined) {
  for (const int number : {-34, -33, -32, -31, -2, -1, 0, 1}) {
    SCOPED_TRACE(number);
    host.log.clear();
    line.readOnly(4, L"StartX").inCategory(number, L"own");

    EXPECT_TRUE(ask(4));

    const bool predefined = number >= -32 && number <= -1;
    EXPECT_EQ(categoryId, number);
    EXPECT_EQ(host.log.count("GetCategoryName"), predefined ? 0 : 1);
    EXPECT_EQ(categoryName.str(), predefined ? L"PlxOPMRes.dll:" + std::to_wstring(1000 - number) : L"own");
  }
}

TEST_F(Categories, TheResourceOfEveryPredefinedCategoryIsAThousandLessItsNumber) {
  for (int number = -32; number <= -1; ++number) {
    CStdStr<wchar_t> name;

    EXPECT_EQ(GetPredefinedCategoryName(number, name), 0);

    EXPECT_EQ(name.str(), L"PlxOPMRes.dll:" + std::to_wstring(1000 - number));
  }
}

TEST_F(Categories, ANameOfMoreThan1023CharactersIsCut) {
  host.texts[1001] = std::wstring(3000, L'x');
  host.texts[1002] = std::wstring(1023, L'y');
  CStdStr<wchar_t> name;

  GetPredefinedCategoryName(-1, name);
  EXPECT_EQ(name.str(), std::wstring(1023, L'x'));
  GetPredefinedCategoryName(-2, name);
  EXPECT_EQ(name.str(), std::wstring(1023, L'y'));
}

TEST_F(Categories, AMissingStringIsAnEmptyName) {
  host.missingTexts.insert(1003);
  CStdStr<wchar_t> name = L"as before";

  GetPredefinedCategoryName(-3, name);

  EXPECT_EQ(name.str(), L"");
}

TEST_F(Categories, AnEmptyPredefinedNameStaysEmpty) {
  line.readOnly(4, L"StartX").inCategory(-3);
  host.missingTexts.insert(1003);

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(categoryName.str(), L"") << "the default name is for categories of the object's own";
}

TEST_F(Categories, TheLibraryIsLoadedOnce) {
  CStdStr<wchar_t> name;

  GetPredefinedCategoryName(-1, name);
  GetPredefinedCategoryName(-2, name);

  EXPECT_EQ(host.log.count("loadResourceDll"), 1);
}

TEST_F(Categories, ALibraryThatCannotBeLoadedGivesAnEmptyNameAndIsTriedAgain) {
  host.on("loadResourceDll").nth(1).answerNull();
  CStdStr<wchar_t> name = L"as before";

  GetPredefinedCategoryName(-1, name);
  EXPECT_EQ(name.str(), L"");

  GetPredefinedCategoryName(-1, name);
  EXPECT_EQ(name.str(), L"PlxOPMRes.dll:1001");
  EXPECT_EQ(host.log.count("loadResourceDll"), 2);
}

TEST_F(Categories, AfterAMessageCategoriesAreReadFromTheMessageLibrary) {
  LoadErrString(1011);
  CStdStr<wchar_t> name;

  GetPredefinedCategoryName(-11, name);

  EXPECT_EQ(name.str(), L"PropertyBarRes.dll:1011");
  EXPECT_EQ(host.log.count("loadResourceDll"), 0);
}

TEST_F(Categories, AfterACategoryMessagesAreReadFromTheCategoryLibrary) {
  CStdStr<wchar_t> name;
  GetPredefinedCategoryName(-1, name);

  EXPECT_EQ(LoadErrString(1020).str(), L"PlxOPMRes.dll:1020");

  EXPECT_EQ(host.log.count("LoadLibraryExW"), 0);
}

// --- default name -------------------------------------------------------------------------------------------

TEST_F(Categories, Quirk_default_category_name) {
  line.readOnly(4, L"StartX").inCategory(3, L"");
  host.mark();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(categoryId, 3);
  EXPECT_EQ(categoryName.str(), message(1023));
  EXPECT_EQ(error(), untouched);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Categories, AnEmptyNameIsFreedBeforeTheDefaultOneIsLoaded) {
  line.readOnly(4, L"StartX").inCategory(3, L"");

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(host.log.only({"GetCategoryName", "SysFreeString", "LoadStringW", "Release"}),
            (Lines{"GetCategoryName(3, locale 4) on line", "SysFreeString()",
                   "LoadStringW(PropertyBarRes.dll, 1023, 2047)", "Release(ICategorizeProperties) on line"}));
}

TEST_F(Categories, ANullNameGetsTheDefaultNameToo) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  host.on("GetCategoryName").answerNull();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(categoryName.str(), message(1023));
}

TEST_F(Categories, ANameThatIsNotWrittenGetsTheDefaultNameToo) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  host.on("GetCategoryName").answerNothing();

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(categoryName.str(), message(1023)) << "the string is preset to null";
}

// --- failures -----------------------------------------------------------------------------------------------

TEST_F(Categories, AnObjectWithoutCategoriesIsMessage1020) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  line.withhold(IID_ICategorizeProperties);

  EXPECT_FALSE(ask(4));

  EXPECT_EQ(error(), message(1020));
  EXPECT_EQ(categoryId, -777);
  EXPECT_EQ(categoryName.str(), untouched);
  EXPECT_EQ(host.log.count("MapPropertyToCategory"), 0);
}

TEST_F(Categories, APropertyWithoutACategoryIsMessage1021AndLeavesTheNumber) {
  host.mark();

  EXPECT_FALSE(ask(4));

  EXPECT_EQ(error(), message(1021));
  EXPECT_EQ(categoryId, -777);
  EXPECT_EQ(categoryName.str(), untouched);
  EXPECT_EQ(host.log.count("GetCategoryName"), 0);
  EXPECT_EQ(host.balance(), "balanced");
}

TEST_F(Categories, ANumberThatAFailingCallWroteIsNotTakenOver) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  host.on("MapPropertyToCategory").workThenReturn(E_FAIL);

  EXPECT_FALSE(ask(4));

  EXPECT_EQ(categoryId, -777);
}

TEST_F(Categories, ACategoryWhoseNameIsRefusedIsMessage1022AfterItsNumberIsStored) {
  line.readOnly(4, L"StartX").inCategory(3);
  host.on("GetCategoryName").fail();
  host.mark();

  EXPECT_FALSE(ask(4));

  EXPECT_EQ(error(), message(1022));
  EXPECT_EQ(categoryId, 3);
  EXPECT_EQ(categoryName.str(), untouched);
  EXPECT_EQ(host.balance(), "balanced");
}

// Categories that write a name and fail all the same; the name stays theirs.
class RefusingCategories final : public ICategorizeProperties {
 public:
  ~RefusingCategories() { SysFreeString(name); }
  HRESULT QueryInterface(REFIID, void** object) override {
    *object = static_cast<ICategorizeProperties*>(this);
    return S_OK;
  }
  ULONG AddRef() override { return 1; }
  ULONG Release() override { return 1; }
  HRESULT MapPropertyToCategory(DISPID, PROPCAT* category) override {
    *category = 3;
    return S_OK;
  }
  HRESULT GetCategoryName(PROPCAT, LCID, BSTR* out) override {
    *out = name;
    return E_FAIL;
  }
  const BSTR name = SysAllocString(L"Geometry");
};

TEST_F(Categories, ANameThatAFailingCallLeftIsNeitherTakenNorFreed) {
  RefusingCategories refusing;
  VeltPropData refused{77, CLSID_VeltLine, &refusing, nullptr};
  host.log.clear();

  EXPECT_FALSE(GetCategoryInfo(&refused, 4, categoryId, categoryName, errorText));

  EXPECT_EQ(error(), message(1022));
  EXPECT_EQ(categoryName.str(), untouched);
  EXPECT_EQ(host.log.count("SysFreeString"), 0);
}

TEST_F(Categories, PositiveResultsAreSuccess) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");
  host.on("MapPropertyToCategory").workThenReturn(S_FALSE);
  host.on("GetCategoryName").workThenReturn(S_FALSE);

  EXPECT_TRUE(ask(4));

  EXPECT_EQ(categoryName.str(), L"Geometry");
}

TEST_F(Categories, WhicheverCallThrowsItsDescriptionIsTheErrorText) {
  line.readOnly(4, L"StartX").inCategory(3, L"Geometry");

  for (int run = 1; run <= 3; ++run) {
    errorText = untouched;
    host.mark();
    host.raiseCall(run, L"no connection");

    EXPECT_FALSE(ask(4));

    SCOPED_TRACE(host.failedCall());
    EXPECT_NE(host.failedCall(), "");
    EXPECT_EQ(error(), L"no connection");
    EXPECT_EQ(host.balance(), "balanced");
  }
}

}  // namespace
