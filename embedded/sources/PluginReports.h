#pragma once

// What goes wrong in a plug-in is told to the person who loaded it: once per kind, because a source is asked for every
// entity of a selection.

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace velt::sources {

enum class Trouble {
  // The plug-in's own words; told each time.
  Message,
  CannotBeLoaded,
  NoEntryPoint,
  WrongVersion,
  // By the plug-in itself.
  Refused,
  // That it wanted to add.
  BadSource,
  // Left one of its methods.
  Exception,
  // A method that rows need answered one.
  Failure,
  // But something else, in place of the properties.
  NoArray,
  NullElement,
  // An element that is no dynamic property.
  NoProperty,
  // A value of another type than the property has declared.
  WrongType,
  // Property objects.
  TooMany,
};

class PluginReports {
 public:
  // Gets one line without its end.
  using Sink = std::function<void(const std::string& line)>;

  // Standard error.
  [[nodiscard]] static Sink standardError();

  PluginReports(std::string plugin, Sink sink) : plugin_(std::move(plugin)), sink_(std::move(sink)) {}

  // May be called on every thread. `what` is a sentence without the plug-in's name.
  void tell(Trouble trouble, std::string_view what);

  // Nothing is told from here on: who listens may be gone.
  void silence();

 private:
  std::mutex mutex_;
  std::string plugin_;
  Sink sink_;
  std::set<Trouble> told_;
};

// For messages.
[[nodiscard]] std::string narrow(std::wstring_view text);

// What is being handled, in words. Call within a handler.
[[nodiscard]] std::string describeException();

}  // namespace velt::sources
