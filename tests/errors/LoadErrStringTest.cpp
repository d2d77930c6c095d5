#include "errors/LoadErrString.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>

#include "propdata/VeltPropData.h"
#include "tests/support/AllocationSpy.h"

// The message library is loaded once per process, so every test runs in a process of its own, which writes down what it
// did and saw. The test compares the transcript.

namespace {

std::string narrow(const std::wstring& text) {
  return {text.begin(), text.end()};
}

struct Host {
  bool hasMessages = true;
  bool hasCategories = true;
  // What LoadStringW does; the library's name, the id and the buffer.
  std::function<INT(const std::string&, UINT, wchar_t*, INT)> loadString = [](const std::string& library,
                                                                              UINT id, wchar_t* buffer, INT) {
    const std::string text = library + ":" + std::to_string(id);
    std::copy_n(text.c_str(), text.size() + 1, buffer);
    return static_cast<INT>(text.size());
  };
  std::ostringstream transcript;

  // Notes nothing while set, for the sake of who counts allocations.
  bool isSilent = false;
  void say(const std::string& line) {
    if (!isSilent) transcript << line << "\n";
  }
};

Host& host() {
  static Host instance;
  return instance;
}

char messagesHandle;
char categoriesHandle;

std::string nameOf(HMODULE module) {
  return module == nullptr             ? "null"
         : module == &messagesHandle   ? "messages"
         : module == &categoriesHandle ? "categories"
                                       : "unknown";
}

}  // namespace

// Takes the place of the host's own functions.

HMODULE LoadLibraryExW(const wchar_t* name, HANDLE file, DWORD flags) {
  host().say("LoadLibraryExW " + narrow(name) + (file == nullptr ? " no file" : " file") + " flags "
             + std::to_string(flags));
  return host().hasMessages ? &messagesHandle : nullptr;
}

HMODULE loadResourceDll(const wchar_t* name) {
  host().say("loadResourceDll " + narrow(name));
  return host().hasCategories ? &categoriesHandle : nullptr;
}

INT LoadStringW(HMODULE module, UINT id, wchar_t* buffer, INT characters) {
  host().say("LoadStringW " + nameOf(module) + " " + std::to_string(id) + " " + std::to_string(characters)
             + (buffer[0] == L'\0' ? "" : " into a buffer that is not empty"));
  return module == nullptr ? 0 : host().loadString(nameOf(module), id, buffer, characters);
}

namespace velt::errors {
namespace {

using ::testing::ExitedWithCode;
using ::testing::HasSubstr;

void load(int id) {
  host().say("-> '" + narrow(LoadErrString(id).str()) + "'");
}

void nameCategory(int category) {
  CStdStr<wchar_t> name(L"before");
  GetPredefinedCategoryName(category, name);
  host().say("=> '" + narrow(name.str()) + "'");
}

// Runs the body in a fresh process, and compares its transcript.
void inAFreshProcess(const std::function<void()>& body, const std::string& expected) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        body();
        std::cerr << "<begin>\n" << host().transcript.str() << "<end>\n";
        std::exit(0);
      },
      ExitedWithCode(0), HasSubstr("<begin>\n" + expected + "<end>\n"));
}

// Hosts hold the texts by these numbers.
TEST(LoadErrString, TheMessagesHaveTheNumbersOfTheLibrary) {
  EXPECT_EQ(1001, message::comInitialisation);
  EXPECT_EQ(1002, message::instanceCreation);
  EXPECT_EQ(1003, message::noDispatch);
  EXPECT_EQ(1004, message::noBaseObject);
  EXPECT_EQ(1005, message::typeInfoFailed);
  EXPECT_EQ(1006, message::typeInfoMissing);
  EXPECT_EQ(1007, message::typeAttributes);
  EXPECT_EQ(1008, message::functionDescription);
  EXPECT_EQ(1009, message::documentation);
  EXPECT_EQ(1010, message::nameNotResolved);
  EXPECT_EQ(1011, message::noPropertyExtension);
  EXPECT_EQ(1014, message::noExpander);
  EXPECT_EQ(1015, message::elementStrings);
  EXPECT_EQ(1016, message::elementValue);
  EXPECT_EQ(1018, message::noPropertyBrowsing);
  EXPECT_EQ(1019, message::nameNotFound);
  EXPECT_EQ(1020, message::noCategories);
  EXPECT_EQ(1021, message::categoryNotFound);
  EXPECT_EQ(1022, message::categoryName);
  EXPECT_EQ(1023, message::defaultCategory);
}

TEST(LoadErrString, LoadsItsLibraryOnFirstNeedForItsResourcesOnly) {
  inAFreshProcess([] { load(1005); },
                  "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
                  "LoadStringW messages 1005 2047\n"
                  "-> 'messages:1005'\n");
}

TEST(LoadErrString, LoadsItsLibraryOnce) {
  inAFreshProcess(
      [] {
        load(1001);
        load(1002);
        load(1001);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'messages:1001'\n"
      "LoadStringW messages 1002 2047\n"
      "-> 'messages:1002'\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'messages:1001'\n");
}

TEST(LoadErrString, TriesAgainWhenTheLibraryCouldNotBeLoaded) {
  inAFreshProcess(
      [] {
        host().hasMessages = false;
        load(1001);
        load(1001);
        host().hasMessages = true;
        load(1001);
        host().hasMessages = false;
        load(1002);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW null 1001 2047\n"
      "-> ''\n"
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW null 1001 2047\n"
      "-> ''\n"
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'messages:1001'\n"
      "LoadStringW messages 1002 2047\n"
      "-> 'messages:1002'\n");
}

TEST(LoadErrString, AMessageThatTheLibraryLacksIsEmpty) {
  inAFreshProcess(
      [] {
        host().loadString = [](const std::string&, UINT, wchar_t*, INT) { return 0; };
        load(1017);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1017 2047\n"
      "-> ''\n");
}

TEST(LoadErrString, PassesAnyNumberOn) {
  inAFreshProcess(
      [] {
        load(0);
        load(-1);
        load(0x7fffffff);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 0 2047\n"
      "-> 'messages:0'\n"
      "LoadStringW messages 4294967295 2047\n"
      "-> 'messages:4294967295'\n"
      "LoadStringW messages 2147483647 2047\n"
      "-> 'messages:2147483647'\n");
}

TEST(LoadErrString, Quirk_message_result_unexamined) {
  for (const INT result : {0, -1, 1, 2, 2047, 1'000'000}) {
    SCOPED_TRACE(result);
    inAFreshProcess(
        [result] {
          host().loadString = [result](const std::string&, UINT, wchar_t* buffer, INT) {
            std::copy_n(L"text", 5, buffer);
            return result;
          };
          load(1001);
          host().loadString = [result](const std::string&, UINT, wchar_t*, INT) { return result; };
          load(1002);
        },
        "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
        "LoadStringW messages 1001 2047\n"
        "-> 'text'\n"
        "LoadStringW messages 1002 2047\n"
        "-> ''\n");
  }
}

TEST(LoadErrString, AMessageEndsAtItsFirstZeroCharacter) {
  inAFreshProcess(
      [] {
        host().loadString = [](const std::string&, UINT, wchar_t* buffer, INT) {
          std::copy_n(L"one\0two", 8, buffer);
          return 7;
        };
        load(1001);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'one'\n");
}

TEST(LoadErrString, AMessageForWhichThereIsNoMemoryIsEmpty) {
  if (!tests::AllocationSpy::seesNew()) GTEST_SKIP() << "operator new belongs to the sanitizer";
  inAFreshProcess(
      [] {
        host().loadString = [](const std::string&, UINT, wchar_t* buffer, INT) {
          std::copy_n(L"text", 5, buffer);
          return 4;
        };
        load(1001);
        CStdStr<wchar_t> text;
        {
          host().isSilent = true;
          const auto spy = tests::AllocationSpy::failNth(1);
          text = LoadErrString(1002);
        }
        host().isSilent = false;
        host().say("-> '" + narrow(text.str()) + "'");
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'text'\n"
      "-> ''\n");
}

TEST(LoadErrString, KeepsAtMost2047CharactersOfAMessage) {
  inAFreshProcess(
      [] {
        host().loadString = [](const std::string&, UINT id, wchar_t* buffer, INT characters) {
          const INT length = std::min(static_cast<INT>(id), characters);
          std::fill_n(buffer, length, L'x');
          buffer[length] = L'\0';
          return length;
        };
        std::string lengths;
        for (const int length : {1, 2046, 2047, 2048, 5000}) {
          lengths += std::to_string(LoadErrString(length).length()) + " ";
        }
        host().transcript.str(lengths);
        host().transcript.seekp(0, std::ios::end);
        host().say("");
      },
      "1 2046 2047 2047 2047 \n");
}

TEST(LoadErrString, ItsBufferHasRoomBeyondWhatItAsksFor) {
  inAFreshProcess(
      [] {
        host().loadString = [](const std::string&, UINT, wchar_t* buffer, INT) {
          std::fill_n(buffer, 2051, L'y');  // a sanitizer sees a buffer that is smaller
          buffer[2051] = L'\0';
          return 2051;
        };
        const CStdStr<wchar_t> text = LoadErrString(1001);
        host().say(text.length() >= 2047 && text.str().substr(0, 2047) == std::wstring(2047, L'y') ? "kept"
                                                                                                   : "lost");
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "kept\n");
}

TEST(LoadErrString, GivesEveryCallerATextOfItsOwn) {
  inAFreshProcess(
      [] {
        const CStdStr<wchar_t> first = LoadErrString(1001);
        const CStdStr<wchar_t> second = LoadErrString(1002);
        host().say(narrow(first.str()) + " " + narrow(second.str()));
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "LoadStringW messages 1002 2047\n"
      "messages:1001 messages:1002\n");
}

TEST(LoadErrString, Quirk_shared_resource_handle) {
  inAFreshProcess(
      [] {
        nameCategory(-1);
        load(1001);
        nameCategory(-32);
      },
      "loadResourceDll PlxOPMRes.dll\n"
      "LoadStringW categories 1001 1023\n"
      "=> 'categories:1001'\n"
      "LoadStringW categories 1001 2047\n"
      "-> 'categories:1001'\n"
      "LoadStringW categories 1032 1023\n"
      "=> 'categories:1032'\n");
  inAFreshProcess(
      [] {
        load(1001);
        nameCategory(-1);
      },
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'messages:1001'\n"
      "LoadStringW messages 1001 1023\n"
      "=> 'messages:1001'\n");
}

TEST(LoadErrString, IsNotHeldUpByACategoryLibraryThatCannotBeLoaded) {
  inAFreshProcess(
      [] {
        host().hasCategories = false;
        nameCategory(-1);
        load(1001);
        host().hasCategories = true;
        nameCategory(-1);
      },
      "loadResourceDll PlxOPMRes.dll\n"
      "LoadStringW null 1001 1023\n"
      "=> ''\n"
      "LoadLibraryExW PropertyBarRes.dll no file flags 2\n"
      "LoadStringW messages 1001 2047\n"
      "-> 'messages:1001'\n"
      "LoadStringW messages 1001 1023\n"
      "=> 'messages:1001'\n");
}

}  // namespace
}  // namespace velt::errors
