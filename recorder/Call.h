#pragma once

// One call of the layer to its host, both ways: recorded, it is made and written down; replayed, it is compared and
// answered. A call is a name, the number of the object that it goes to, what it takes, and where its answers go:
//
//   return perform<HRESULT>("ICategorizeProperties::MapPropertyToCategory", number,
//                           [&] { return real->MapPropertyToCategory(dispId, category); },
//                           In("dispId", dispId), Out("category", category));
//
// Answers that are pointers to objects become those of our own before the layer sees them (adopt).

#include <cstring>
#include <exception>
#include <typeinfo>
#include <utility>

#include "host/com/ComError.h"
#include "host/com/HResult.h"
#include "host/platform/ErrorStatus.h"
#include "recorder/Interfaces.h"
#include "recorder/Session.h"
#include "recorder/Values.h"

// Referred to and not asked for: a program that the recorder is loaded into may load its host later.
asm(".weak _ZTI10_com_error");

namespace velt::recorder {

// --- how each type of argument is written and read ---------------------------------------------------------------------
template <class T>
requires std::is_arithmetic_v<T> || std::is_enum_v<T> json toJson(T value) {
  if constexpr (std::is_enum_v<T>)
    return static_cast<int>(value);
  else
    return value;
}
template <class T>
requires std::is_arithmetic_v<T> || std::is_enum_v<T>
void fromJson(const json& from, T& value) {
  if constexpr (std::is_enum_v<T>)
    value = static_cast<T>(from.get<int>());
  else
    value = from.get<T>();
}
inline json toJson(const GUID& value) {
  return guidJson(value);
}
inline void fromJson(const json& from, GUID& value) {
  value = guidFrom(from);
}
inline json toJson(VkDbObjectId value) {
  return idJson(value);
}
inline void fromJson(const json& from, VkDbObjectId& value) {
  value = idFrom(from);
}
// A BSTR where the call says BSTR; names that are passed as plain pointers are written by textJson.
inline json toJson(BSTR value) {
  return stringJson(value);
}
inline void fromJson(const json& from, BSTR& value) {
  value = stringFrom(from);
}
inline json toJson(const VARIANT& value) {
  return valueJson(value);
}
inline void fromJson(const json& from, VARIANT& value) {
  value = valueFrom(from);
}
inline json toJson(const CALPOLESTR& value) {
  return textsJson(value);
}
inline void fromJson(const json& from, CALPOLESTR& value) {
  value = textsFrom(from);
}
inline json toJson(const CADWORD& value) {
  return cookiesJson(value);
}
inline void fromJson(const json& from, CADWORD& value) {
  value = cookiesFrom(from);
}
inline json toJson(VkRxClass* value) {
  return classJson(value);
}
inline void fromJson(const json& from, VkRxClass*& value) {
  value = classFrom(from);
}
template <class I>
requires std::is_base_of_v<IUnknown, I> json toJson(I* value) {
  return numberOf(value);
}
template <class I>
requires std::is_base_of_v<IUnknown, I>
void fromJson(const json& from, I*& value) {
  value = objectFrom<I>(from);
}
inline json toJson(const json& written) {
  return written;
}

template <class T>
void adopt(T&) {}
inline void adopt(VARIANT& value) {
  wrapContent(value);
}
template <class I>
requires std::is_base_of_v<IUnknown, I>
void adopt(I*& object) {
  object = wrap(object);
}

// --- the parts of a call ------------------------------------------------------------------------------------------------
template <class T>
struct In {
  In(const char* itsName, const T& itsValue) : name(itsName), value(itsValue) {}
  const char* name;
  const T& value;

  void writeInput(json& in) { in[name] = toJson(value); }
  void writeAnswer(json&, bool) {}
  void readAnswer(const json&) {}
};

// `unexamined`: the layer takes what the output holds, whatever the result is; else a failure hands nothing over.
enum class Taken { afterSuccess, always };

template <class T>
struct Out {
  Out(const char* itsName, T* itsPlace, Taken when = Taken::afterSuccess)
      : name(itsName), place(itsPlace), taken(when) {}
  const char* name;
  T* place;
  Taken taken;
  std::array<char, sizeof(T)> before{};

  void writeInput(json&) {
    if (place != nullptr) std::memcpy(before.data(), static_cast<const void*>(place), sizeof(T));
  }
  void writeAnswer(json& out, bool hasSucceeded) {
    if (place == nullptr || (!hasSucceeded && taken == Taken::afterSuccess)) return;
    const bool isLeft = std::memcmp(before.data(), static_cast<const void*>(place), sizeof(T)) == 0;
    if (isLeft && !hasSucceeded) return;
    adopt(*place);
    out[name] = toJson(*place);
  }
  void readAnswer(const json& out) {
    const auto found = out.find(name);
    if (place != nullptr && found != out.end()) fromJson(*found, *place);
  }
};

// An answer that needs a hand: `write` answers its JSON (null for none), `read` takes it.
template <class Write, class Read>
struct Special {
  Special(const char* itsName, Write toWrite, Read toRead)
      : name(itsName), write(std::move(toWrite)), read(std::move(toRead)) {}
  const char* name;
  Write write;
  Read read;

  void writeInput(json&) {}
  void writeAnswer(json& out, bool hasSucceeded) {
    json written = write(hasSucceeded);
    if (!written.is_null()) out[name] = std::move(written);
  }
  void readAnswer(const json& out) {
    const auto found = out.find(name);
    if (found != out.end()) read(*found);
  }
};

// --- the call -------------------------------------------------------------------------------------------------------------

template <class Result>
bool isSuccess([[maybe_unused]] Result result) {
  if constexpr (std::is_same_v<Result, HRESULT>) return SUCCEEDED(result);
  if constexpr (std::is_same_v<Result, Velt::ErrorStatus>) return result == Velt::eOk;
  return true;
}

// Where the type of a _com_error was not known when the recorder was loaded, any exception is taken for one.
bool isComError();
json thrownJson(const _com_error& error);
[[noreturn]] void throwRecorded(const json& thrown);

template <class Result, class Work, class... Parts>
Result perform(const std::string& name, std::uint64_t on, Work&& work, Parts... parts) {
  json line{{"call", name}};
  if (on != 0) line["on"] = on;
  json in = json::object();
  (parts.writeInput(in), ...);
  if (!in.empty()) line["in"] = std::move(in);
  const Turn turn(Side::host);
  if (session().isReplay()) {
    json answer = session().answerOf(line);
    try {
      if (const auto thrown = answer.find("throws"); thrown != answer.end()) throwRecorded(*thrown);
      const json out = answer.value("out", json::object());
      (parts.readAnswer(out), ...);
      if constexpr (std::is_void_v<Result>) {
        return;
      } else {
        std::remove_cv_t<Result> result{};
        fromJson(answer.at("result"), result);
        return result;
      }
    } catch (const _com_error&) {
      throw;
    } catch (const std::exception& error) {
      session().refuse(error.what());
    }
  }
  const auto finish = [&]([[maybe_unused]] bool hasSucceeded) {
    json out = json::object();
    (parts.writeAnswer(out, hasSucceeded), ...);
    if (!out.empty()) line["out"] = std::move(out);
    session().write(line);
  };
  try {
    if constexpr (std::is_void_v<Result>) {
      work();
      finish(true);
    } else {
      const Result result = work();
      line["result"] = toJson(result);
      finish(isSuccess(result));
      return result;
    }
  } catch (const _com_error& error) {
    if (isComError()) {
      line["throws"] = thrownJson(error);
      session().write(line);
    }
    throw;
  }
}

}  // namespace velt::recorder
