#include "recorder/replay/Replay.h"

#include <cstdlib>

#include "holders/VariantHolder.h"
#include "recorder/Database.h"
#include "recorder/Operations.h"
#include "recorder/Values.h"

namespace velt::recorder {

namespace {

constexpr std::size_t longestShown = 400;

std::string shown(const json& line) {
  std::string text = line.dump(-1, ' ', false, json::error_handler_t::replace);
  if (text.size() > longestShown) text = text.substr(0, longestShown) + " ...";
  return text;
}

// The first place where two differ, as a path into them.
std::string firstDifference(const json& recorded, const json& now, const std::string& path = "") {
  if (recorded == now) return {};
  if (recorded.type() == now.type() && recorded.is_object()) {
    for (const auto& [key, value] : recorded.items()) {
      const auto other = now.find(key);
      if (other == now.end()) return path + "/" + key;
      const std::string inside = firstDifference(value, *other, path + "/" + key);
      if (!inside.empty()) return inside;
    }
  }
  if (recorded.is_array() && now.is_array()) {
    for (std::size_t i = 0; i < recorded.size() && i < now.size(); ++i) {
      const std::string inside = firstDifference(recorded[i], now[i], path + "/" + std::to_string(i));
      if (!inside.empty()) return inside;
    }
  }
  return path.empty() ? "/" : path;
}

json pointed(const json& object, const std::string& path) {
  const json::json_pointer pointer(path == "/" ? "" : path);
  return object.contains(pointer) ? object.at(pointer) : json();
}

CStdStr<wchar_t> ownText(const json& from) {
  return CStdStr<wchar_t>(textFrom(from));
}

json ownTextJson(const CStdStr<wchar_t>& text) {
  return textJson(text.c_str(), text.length());
}

void clearValues(TqVector<PROPINFO>& rows) {
  for (PROPINFO& row : rows)
    VariantClear(&row.value);
}

}  // namespace

Replay::Replay(std::istream& recording, Ends ends) : recording_(recording), ends_(std::move(ends)) {
  const json first = read();
  if (!first.is_object() || !first.contains("veltRecording"))
    throw DamagedRecording("it is not a recording: the first line has no \"veltRecording\"");
  if (first.at("veltRecording") != formatVersion)
    throw DamagedRecording("it has the format " + shown(first.at("veltRecording")) + "; this program reads "
                           + std::to_string(formatVersion));
}

std::string Replay::at(const std::string& why) const {
  return "line " + std::to_string(line_) + ": " + why;
}

json Replay::read() {
  std::string text;
  if (!std::getline(recording_, text)) {
    if (recording_.bad()) throw DamagedRecording(at("it cannot be read further"));
    return nullptr;
  }
  ++line_;
  try {
    json line = json::parse(text);
    if (!line.is_object()) throw DamagedRecording(at("it is not an object"));
    return line;
  } catch (const json::exception&) {
    throw DamagedRecording(
        at(recording_.eof() ? "the recording is cut off in the middle of a line" : "it is not JSON"));
  }
}

Outcome Replay::run() {
  nameClasses();
  for (json line = read(); !line.is_null(); line = read()) {
    if (!line.contains("begin")) throw DamagedRecording(at("an operation should begin here"));
    operate(line);
  }
  return outcome_;
}

void Replay::refuse(const std::string& why) {
  ends_.damaged(at(why));
  std::abort();
}

void Replay::departed(const std::string& recorded, const std::string& now) {
  outcome_.departures.push_back({line_, running_.empty() ? "" : running_.back(), recorded, now});
  ends_.departed(outcome_);
  std::abort();
}

json Replay::answerOf(const json& call) {
  try {
    json line = read();
    // The host called the layer again before it answered.
    for (; line.is_object() && line.contains("begin"); line = read())
      operate(line);
    if (line.is_null())
      refuse("the recording ends here, inside of " + running_.back() + ", before the answer to "
             + shown(call));
    json compared = line;
    for (const char* const answer : {"out", "result", "throws"})
      compared.erase(answer);
    if (compared != call) departed(shown(compared), shown(call));
    ++outcome_.calls;
    return line;
  } catch (const std::exception& error) {
    refuse(error.what());
  }
}

void Replay::operate(const json& begin) {
  if (!begin.at("begin").is_string()) throw DamagedRecording(at("the name of the operation is not a text"));
  const auto name = begin.at("begin").get<std::string>();
  if (onOperation) onOperation(line_, name);
  running_.push_back(name);
  json result;
  json out;
  try {
    out = perform(name, begin.at("in"), result);
  } catch (const json::exception& error) {
    throw DamagedRecording(at(error.what()));
  }
  const json end = read();
  if (end.is_null()) throw DamagedRecording(at("the recording ends here, inside of " + name));
  if (end.value("end", json()) != name) departed(shown(end), name + " ends");
  ++outcome_.operations;
  json ended{{"out", std::move(out)}};
  if (!result.is_null()) ended["result"] = std::move(result);
  json recorded{{"out", end.value("out", json::object())}};
  if (end.contains("result")) recorded["result"] = end.at("result");
  if (const std::string path = firstDifference(recorded, ended); !path.empty()) {
    outcome_.departures.push_back({line_, name, path + " = " + shown(pointed(recorded, path)),
                                   path + " = " + shown(pointed(ended, path))});
  }
  running_.pop_back();
}

void Replay::setSelection(const json& from, TqVector<VeltPropData*>& selection) {
  for (const json& written : from) {
    if (written.is_null()) {
      selection.push_back(nullptr);
      continue;
    }
    const auto number = written.at("entry").get<std::uint64_t>();
    auto& entry = entries_[number];
    if (entry == nullptr) {
      entry = std::make_unique<VeltPropData>();
      setNumber(entry.get(), number);
    }
    entryFrom(written, *entry);
    selection.push_back(entry.get());
  }
}

json Replay::perform(const std::string& name, const json& in, json& result) {
  const auto asLayer = [&](auto work) {
    const Turn turn(Side::layer);
    aValueWasRead() = false;
    return work();
  };
  const Turn turn(Side::outside);
  TqVector<VeltPropData*> selection;
  if (in.contains("selection")) setSelection(in.at("selection"), selection);
  CStdStr<wchar_t> errorText = ownText(in.value("errorText", json()));

  if (name == "InitializePropData") {
    bool mixedClasses = in.at("mixedClasses").get<bool>();
    result = asLayer([&] { return InitializePropData(selection, errorText, mixedClasses); });
    return {{"selection", selectionJson(selection)},
            {"errorText", ownTextJson(errorText)},
            {"mixedClasses", mixedClasses}};
  }
  if (name == "UnInitializePropData") {
    result = asLayer([&] { return UnInitializePropData(selection); });
    return {{"selection", selectionJson(selection)}};
  }
  if (name == "GetPropertiesInfo") {
    TqVector<PROPINFO> rows;
    bool mergeFlag = false;
    bool typeFlag = false;
    result = asLayer([&] { return GetPropertiesInfo(selection, rows, errorText, mergeFlag, typeFlag); });
    json out{{"rows", rowsJson(rows, true)}, {"errorText", ownTextJson(errorText)}};
    clearValues(rows);
    return out;
  }
  if (name == "GetPropInfoValue") {
    PROPINFO row = rowFrom(in.at("row"));
    if (row.pDispatch == nullptr) throw DamagedRecording(at("the row belongs to no object"));
    result = asLayer([&] { return GetPropInfoValue(row); });
    json out{{"row", rowJson(row, aValueWasRead())}};
    VariantClear(&row.value);
    return out;
  }
  if (name == "SortByWeight") {
    TqVector<PROPINFO> rows = rowsFrom(in.at("rows"));
    asLayer([&] { SortByWeight(rows); });
    return {{"rows", rowsJson(rows, false)}};
  }
  if (name == "IsDifferentByLayerColors") {
    holders::VariantHolder value;
    value.attach(valueFrom(in.at("value")));
    TqVector<PROPINFO> listA = rowsFrom(in.at("listA"));
    TqVector<PROPINFO> listB = rowsFrom(in.at("listB"));
    result = asLayer([&] { return IsDifferentByLayerColors(value.get(), listA, listB); });
    return json::object();
  }
  if (name == "SetPropertiesValue") {
    const PROPINFO property = rowFrom(in.at("property"));
    holders::VariantHolder value;
    value.attach(valueFrom(in.at("value")));
    int lockedCount = in.at("lockedCount").get<int>();
    VkArray<VkDbObjectId> touchedIds;
    result = asLayer([&] {
      return SetPropertiesValue(selection, property, value.get(), in.at("elementWrite").get<bool>(),
                                errorText, lockedCount, touchedIds,
                                in.at("elementCookie").get<unsigned int>());
    });
    return {{"errorText", ownTextJson(errorText)},
            {"lockedCount", lockedCount},
            {"touchedIds", idsJson(touchedIds, 0)}};
  }
  throw DamagedRecording(at("no operation is named " + name));
}

}  // namespace velt::recorder
