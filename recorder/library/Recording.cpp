// libVeltRecorder.so: stands between the layer and any host, and writes down what they say to each other.
//
// It is loaded before both (LD_PRELOAD, or first on the linker's command line) and has functions with the names of the
// operations and of the host's functions. Without VELT_RECORDING, which names the file, all of them only hand on.

#include <cstdio>
#include <cstdlib>
#include <string>

#include "recorder/Database.h"
#include "recorder/Next.h"
#include "recorder/Operations.h"
#include "recorder/Session.h"
#include "recorder/Values.h"
#include "recorder/library/Redirection.h"

using namespace velt::recorder;

namespace {

class Recording final : public Session {
 public:
  Recording() : path_(std::getenv("VELT_RECORDING")) {
    if (path_ == nullptr || *path_ == '\0') return;
    // An earlier recording is not written over, and a program that this one starts inherits the name.
    file_ = std::fopen(path_, "wxe");
    if (file_ == nullptr) {
      std::fprintf(stderr, "libVeltRecorder.so: nothing is recorded: ");
      std::perror(path_);
      return;
    }
    // Line by line, so that all is there when the program crashes.
    std::setvbuf(file_, nullptr, _IOLBF, std::size_t{1} << 16);
  }

  // Once session() answers this.
  void begin() {
    auto* const function = next<bool(PROPINFO&)>("_Z16GetPropInfoValueR8PROPINFO");
    if (!redirectLayer(reinterpret_cast<const void*>(function))) {
      std::fprintf(stderr, "libVeltRecorder.so: nothing is recorded: the layer cannot be redirected\n");
      std::fclose(file_);
      file_ = nullptr;
      return;
    }
    write({{"veltRecording", formatVersion}, {"layer", VELT_VERSION}});
    nameClasses();
  }

  bool isOn() const { return file_ != nullptr; }
  bool isReplay() const override { return false; }
  void write(const json& line) override {
    const std::string text = line.dump(-1, ' ', false, json::error_handler_t::replace) + '\n';
    if (file_ == nullptr || std::fwrite(text.data(), 1, text.size(), file_) == text.size()) return;
    std::fprintf(stderr, "libVeltRecorder.so: the recording ends here: ");
    std::perror(path_);
    std::fclose(file_);
    file_ = nullptr;
  }
  json answerOf(const json&) override { std::abort(); }
  [[noreturn]] void refuse(const std::string&) override { std::abort(); }

 private:
  const char* const path_;
  std::FILE* file_ = nullptr;
};

Recording& recording() {
  // Not ended with the process: hosts call the layer until then.
  static Recording& one = []() -> Recording& {
    auto& made = *new Recording;
    if (made.isOn()) made.begin();
    return made;
  }();
  return one;
}

// One operation: what it takes, itself, and what it leaves. An operation on another thread, or after the file could not
// be written, is its own affair.
template <class Inputs, class Work, class Outputs>
auto operation(const char* name, Inputs inputs, Work work, Outputs outputs) {
  if (!recording().isOn()) return work();
  recording().write({{"begin", name}, {"in", inputs()}});
  const auto run = [&] {
    const Turn turn(Side::layer);
    aValueWasRead() = false;
    return work();
  };
  if constexpr (std::is_void_v<decltype(work())>) {
    run();
    recording().write({{"end", name}, {"out", outputs()}});
  } else {
    const auto result = run();
    recording().write({{"end", name}, {"out", outputs()}, {"result", result}});
    return result;
  }
}

json ownTextJson(const CStdStr<wchar_t>& text) {
  return textJson(text.c_str(), text.length());
}

}  // namespace

Session& velt::recorder::session() {
  return recording();
}

bool InitializePropData(TqVector<VeltPropData*>& selection, CStdStr<wchar_t>& errorText, bool& mixedClasses) {
  static auto* const layer = next<decltype(InitializePropData)>(
      "_Z18InitializePropDataR8TqVectorIP12VeltPropData21TqDefaultMemAllocatorIS1_E12TqRefCounter"
      "25TqVectorDefaultGrowPolicyER7CStdStrIwERb");
  return operation(
      "InitializePropData",
      [&] {
        return json{{"selection", selectionJson(selection)},
                    {"errorText", ownTextJson(errorText)},
                    {"mixedClasses", mixedClasses}};
      },
      [&] { return layer(selection, errorText, mixedClasses); },
      [&] {
        return json{{"selection", selectionJson(selection)},
                    {"errorText", ownTextJson(errorText)},
                    {"mixedClasses", mixedClasses}};
      });
}

bool UnInitializePropData(TqVector<VeltPropData*>& selection) {
  static auto* const layer = next<decltype(UnInitializePropData)>(
      "_Z20UnInitializePropDataR8TqVectorIP12VeltPropData21TqDefaultMemAllocatorIS1_E12TqRefCounter"
      "25TqVectorDefaultGrowPolicyE");
  return operation(
      "UnInitializePropData",
      [&] {
        return json{{"selection", selectionJson(selection)}};
      },
      [&] { return layer(selection); },
      [&] {
        return json{{"selection", selectionJson(selection)}};
      });
}

bool GetPropertiesInfo(TqVector<VeltPropData*>& selection, TqVector<PROPINFO>& result,
                       CStdStr<wchar_t>& errorText, bool& mergeFlag, bool& typeFlag) {
  static auto* const layer = next<decltype(GetPropertiesInfo)>(
      "_Z17GetPropertiesInfoR8TqVectorIP12VeltPropData21TqDefaultMemAllocatorIS1_E12TqRefCounter"
      "25TqVectorDefaultGrowPolicyERS_I8PROPINFOS2_IS8_ES4_S5_ER7CStdStrIwERbSF_");
  return operation(
      "GetPropertiesInfo",
      [&] {
        return json{{"selection", selectionJson(selection)}, {"errorText", ownTextJson(errorText)}};
      },
      [&] { return layer(selection, result, errorText, mergeFlag, typeFlag); },
      [&] {
        return json{{"rows", rowsJson(result, true)}, {"errorText", ownTextJson(errorText)}};
      });
}

bool GetPropInfoValue(PROPINFO& prop) {
  static auto* const layer = next<decltype(GetPropInfoValue)>("_Z16GetPropInfoValueR8PROPINFO");
  return operation(
      "GetPropInfoValue",
      [&] {
        return json{{"row", rowJson(prop, false)}};
      },
      [&] { return layer(prop); },
      [&] {
        return json{{"row", rowJson(prop, aValueWasRead())}};
      });
}

void SortByWeight(TqVector<PROPINFO>& list) {
  static auto* const layer = next<decltype(SortByWeight)>(
      "_Z12SortByWeightR8TqVectorI8PROPINFO21TqDefaultMemAllocatorIS0_"
      "E12TqRefCounter25TqVectorDefaultGrowPolicyE");
  operation(
      "SortByWeight",
      [&] {
        return json{{"rows", rowsJson(list, false)}};
      },
      [&] { layer(list); },
      [&] {
        return json{{"rows", rowsJson(list, false)}};
      });
}

bool IsDifferentByLayerColors(VARIANT& value, TqVector<PROPINFO>& listA, TqVector<PROPINFO>& listB) {
  static auto* const layer = next<bool(VARIANT&, TqVector<PROPINFO>&, TqVector<PROPINFO>&)>(
      "_Z24IsDifferentByLayerColorsR7VARIANTR8TqVectorI8PROPINFO21TqDefaultMemAllocatorIS2_E12TqRefCounter"
      "25TqVectorDefaultGrowPolicyES8_");
  return operation(
      "IsDifferentByLayerColors",
      [&] {
        return json{{"value", valueJson(value)},
                    {"listA", rowsJson(listA, false)},
                    {"listB", rowsJson(listB, false)}};
      },
      [&] { return layer(value, listA, listB); }, [&] { return json::object(); });
}

int SetPropertiesValue(TqVector<VeltPropData*>& selection, const PROPINFO& property, VARIANT& value,
                       bool elementWrite, CStdStr<wchar_t>& errorText, int& lockedCount,
                       VkArray<VkDbObjectId>& touchedIds, unsigned int elementCookie) {
  static auto* const layer = next<decltype(SetPropertiesValue)>(
      "_Z18SetPropertiesValueR8TqVectorIP12VeltPropData21TqDefaultMemAllocatorIS1_E12TqRefCounter"
      "25TqVectorDefaultGrowPolicyERK8PROPINFOR7VARIANTbR7CStdStrIwERiR7VkArrayI12VkDbObjectIdEj");
  const int touchedBefore = touchedIds.length();
  return operation(
      "SetPropertiesValue",
      [&] {
        return json{{"selection", selectionJson(selection)},
                    {"property", rowJson(property, false)},
                    {"value", valueJson(value)},
                    {"elementWrite", elementWrite},
                    {"errorText", ownTextJson(errorText)},
                    {"lockedCount", lockedCount},
                    {"elementCookie", elementCookie}};
      },
      [&] {
        return layer(selection, property, value, elementWrite, errorText, lockedCount, touchedIds,
                     elementCookie);
      },
      [&] {
        return json{{"errorText", ownTextJson(errorText)},
                    {"lockedCount", lockedCount},
                    {"touchedIds", idsJson(touchedIds, touchedBefore)}};
      });
}
