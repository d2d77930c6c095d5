#pragma once

// Tells the person who loads a plug-in what goes wrong in it: once for each kind of trouble, because a source is asked
// for every entity of a selection.

#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace velt::sources {

enum class Trouble {
  // A message of the plug-in itself; told each time.
  Message,
  CannotBeLoaded,
  NoEntryPoint,
  WrongVersion,
  // Its entry point answered a failure.
  Refused,
  // A source that it added was not accepted.
  BadSource,
  // It passed a table that is not the host's.
  CopiedTable,
  // An exception left one of its methods.
  Exception,
  // A method without which there is no row or no value failed.
  Failure,
  // The answer to GetProperties is not an array of objects.
  NoArray,
  // A null among the properties.
  NullElement,
  // An object among the properties that is not a dynamic property.
  NoProperty,
  // A value of another type than the property has declared.
  WrongType,
  // A source goes on making new property objects.
  TooMany,
  // A property has more choices than anybody can choose from.
  TooManyChoices,
};

class PluginReports {
 public:
  // Takes one line, without a line end, and safe to be shown on a terminal.
  using Sink = std::function<void(const std::string& line)>;

  // Writes to standard error.
  [[nodiscard]] static Sink standardError();

  PluginReports(std::string plugin, Sink sink) : plugin_(std::move(plugin)), sink_(std::move(sink)) {}

  [[nodiscard]] const std::string& plugin() const { return plugin_; }

  // May be called on every thread. `what` is a sentence without the plug-in's name.
  void tell(Trouble trouble, std::string_view what);

  // From now on nothing is told: the sink may no longer exist.
  void silence();

 private:
  std::mutex mutex_;
  const std::string plugin_;
  Sink sink_;
  std::set<Trouble> told_;
};

// As UTF-8, for messages.
[[nodiscard]] std::string narrow(std::wstring_view text);

// The exception that is being handled, in words. Call it within a catch block.
[[nodiscard]] std::string describeException();

}  // namespace velt::sources
