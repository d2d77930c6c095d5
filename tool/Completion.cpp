#include "tool/Completion.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <utility>

#include "palette/Palette.h"
#include "tool/ConditionPlace.h"
#include "tool/EntityFacts.h"
#include "tool/ManPages.h"
#include "tool/NamedRows.h"
#include "tool/OpenDrawing.h"
#include "tool/PluginFiles.h"

namespace velt::tool {

namespace {

constexpr const char* drawingFiles = ".dxf";
constexpr const char* pluginFiles = ".so";
constexpr const char* anyFiles = "*";

// --- the line --------------------------------------------------------------------------------------------

bool takesValue(const CLI::Option& option) {
  return option.get_items_expected_max() > 0;
}

const CLI::Option* optionNamed(const CLI::App& command, const std::string& word) {
  return word.starts_with('-') ? command.get_option_no_throw(word) : nullptr;
}

// The line as far as it is complete.
struct Line {
  const CLI::App* command;
  // The option whose value is being typed; null for none.
  const CLI::Option* option = nullptr;
  // How many arguments that are not options stand before.
  std::size_t arguments = 0;
  // A command that there is not.
  bool isUnknown = false;
};

Line readLine(const CLI::App& app, const std::vector<std::string>& complete) {
  Line line{&app};
  for (const std::string& word : complete) {
    if (std::exchange(line.option, nullptr) != nullptr) continue;
    if (const CLI::Option* const option = optionNamed(*line.command, word)) {
      if (takesValue(*option)) line.option = option;
    } else if (word.size() > 1 && word.starts_with('-')) {
      continue;
    } else if (line.command == &app) {
      const auto isNamed = [&](const CLI::App* command) { return command->get_name() == word; };
      const std::vector<const CLI::App*> named = app.get_subcommands(isNamed);
      line.isUnknown = named.empty();
      if (line.isUnknown) return line;
      line.command = named.front();
    } else {
      ++line.arguments;
    }
  }
  return line;
}

// The argument at that place: the last one that may be repeated takes all further ones.
const CLI::Option* argumentAt(const CLI::App& command, std::size_t place) {
  const CLI::Option* last = nullptr;
  for (const CLI::Option* option : command.get_options()) {
    if (!option->get_positional()) continue;
    last = option;
    if (place-- == 0) break;
  }
  return last;
}

// --- the drawing -----------------------------------------------------------------------------------------

class AskedDrawing {
 public:
  explicit AskedDrawing(const Subject& subject)
      : subject_(subject),
        drawing_(subject.drawings.empty() || subject.drawings.front() == standardStream
                     ? nullptr
                     : openDrawing(subject.drawings.front())) {}

  std::vector<std::string> layers() const { return drawing_ ? namesIn(drawing_->layers()) : none(); }
  std::vector<std::string> blocks() const { return drawing_ ? namesIn(drawing_->blocks()) : none(); }
  std::vector<std::string> layouts() const {
    if (!drawing_) return {};
    // New drawings have a layout of that name, old ones none.
    std::vector<std::string> names{"Model"};
    for (const database::Layout& layout : drawing_->layouts()) {
      if (std::string name = palette::toUtf8(layout.name); name != names.front())
        names.push_back(std::move(name));
    }
    return names;
  }
  std::vector<std::string> types() const {
    std::set<std::string> names;
    for (const VkDbObjectId id : entities()) {
      names.insert(className(id));
      names.insert(dxfName(id));
    }
    return {names.begin(), names.end()};
  }
  // One entity of each class tells them all but for attributes and the like.
  std::vector<Candidate> properties() const {
    std::set<std::string> classes, names;
    std::vector<Candidate> found;
    for (const VkDbObjectId id : selected()) {
      if (!classes.insert(dxfName(id)).second) continue;
      palette::Selection selection(std::span(&id, 1));
      const std::vector<palette::Row>& rows = selection.query();
      const std::vector<std::string> namesOfRows = namesToFind(rows);
      for (std::size_t i = 0; i < rows.size(); ++i) {
        if (names.insert(namesOfRows[i]).second) found.push_back({namesOfRows[i], rows[i].help()});
      }
    }
    return found;
  }
  // NAME= for every property that can be written.
  std::vector<Candidate> assignments() const {
    std::vector<Candidate> found;
    std::set<std::string> names;
    palette::Selection selection(selected());
    for (const palette::Row& row : selection.query()) {
      if (row.isEditable() && names.insert(row.label()).second)
        found.push_back({row.label() + "=", row.text(numberStyleOf(*drawing_))});
    }
    return found;
  }
  // What the property of that name, or the fact, can be compared with.
  std::vector<std::string> valuesOf(const std::string& name) const {
    if (name == "@layer") return layers();
    if (name == "@block") return blocks();
    if (name == "@layout") return layouts();
    if (name == "@type" || name == "@class") return types();
    std::set<std::string> classes;
    for (const VkDbObjectId id : selected()) {
      if (!classes.insert(dxfName(id)).second) continue;
      palette::Selection selection(std::span(&id, 1));
      for (const palette::Row& row : rowsMeant(selection.query(), name)) {
        std::vector<std::string> labels;
        for (const palette::Choice& choice : row.choices())
          labels.push_back(choice.label);
        return labels;
      }
    }
    return {};
  }
  // NAME=CHOICE for the property of that name.
  std::vector<Candidate> choices(const std::string& name) const {
    palette::Selection selection(selected());
    std::vector<Candidate> found;
    for (const palette::Row& row : rowsMeant(selection.query(), name)) {
      for (const palette::Choice& choice : row.choices())
        found.push_back({fmt::format("{}={}", name, choice.label)});
      break;
    }
    return found;
  }

 private:
  static std::vector<std::string> none() { return {}; }
  static std::vector<std::string> namesIn(const database::Table& table) {
    std::vector<std::string> names;
    for (const database::TableEntry& entry : table.entries())
      names.push_back(palette::toUtf8(entry.name));
    return names;
  }
  std::vector<VkDbObjectId> entities() const {
    if (!drawing_) return {};
    const auto ids = drawing_->entities();
    return {ids.begin(), ids.end()};
  }
  std::vector<VkDbObjectId> selected() const {
    if (!drawing_) return {};
    return select(*drawing_, subject_.selection).ids;
  }

  const Subject& subject_;
  std::unique_ptr<database::Drawing> drawing_;
};

// --- values ----------------------------------------------------------------------------------------------

// The value is a list: names before the last comma stay.
std::vector<Candidate> listed(const std::string& typed, const std::vector<std::string>& names) {
  const std::size_t comma = typed.rfind(',');
  const std::string before = comma == std::string::npos ? "" : typed.substr(0, comma + 1);
  std::vector<Candidate> found;
  for (const std::string& name : names) {
    std::string word = before;
    for (const char c : name)
      word += c == ',' ? std::string("\\,") : std::string(1, c);
    found.push_back({std::move(word)});
  }
  return found;
}

// A condition with its last word completed.
std::vector<Candidate> conditions(const std::string& typed, const AskedDrawing& drawing) {
  using What = ConditionPlace::What;
  const ConditionPlace place = placeIn(typed);
  const std::string before = typed.substr(0, place.begin);
  const bool isQuoted =
      place.begin < typed.size() && (typed[place.begin] == '\'' || typed[place.begin] == '"');
  const char quote = isQuoted ? typed[place.begin] : '\0';
  std::vector<Candidate> found;
  if (place.what == What::name || place.what == What::comparer) {
    for (Candidate& property : drawing.properties())
      found.push_back({before + asOperand(property.word, quote), std::move(property.help)});
    for (const std::string_view fact : factNames)
      found.push_back({before + asOperand(fact, quote)});
  } else {
    for (const std::string& value : drawing.valuesOf(place.name))
      found.push_back({before + asOperand(value, quote)});
  }
  const auto follow = [&](std::initializer_list<const char*> words) {
    for (const char* const word : words)
      found.push_back({typed + word});
  };
  const bool isAfterBlank = typed.ends_with(' ');
  if (place.what == What::comparer && isAfterBlank) follow({"=", "!=", "<", "<=", ">", ">=", "like", "in ("});
  if (place.what == What::joint && isAfterBlank) follow({"and", "or"});
  if (place.what == What::name && place.begin == typed.size()) follow({"not", "has"});
  return found;
}

Completion valuesOf(const CLI::Option& option, const std::string& typed, const Subject& subject) {
  const auto is = [&](const char* name) { return option.check_lname(name); };
  if (is("plugin")) {
    Completion plugins{.files = pluginFiles};
    for (std::string& name : installedPlugins())
      plugins.candidates.push_back({std::move(name)});
    return plugins;
  }
  if (is("output") || is("from")) return {.files = anyFiles};
  const AskedDrawing drawing(subject);
  if (is("layer")) return {listed(typed, drawing.layers())};
  if (is("block")) return {listed(typed, drawing.blocks())};
  if (is("layout")) return {listed(typed, drawing.layouts())};
  if (is("type")) return {listed(typed, drawing.types())};
  if (is("where")) return {conditions(typed, drawing)};
  if (is("columns")) {
    std::vector<std::string> names{"all"};
    for (const Candidate& property : drawing.properties())
      names.push_back(property.word);
    names.insert(names.end(), factNames.begin(), factNames.end());
    return {listed(typed, names)};
  }
  return {};
}

Completion argumentsOf(const CLI::App& command, const Line& line, const std::string& typed,
                       const Subject& subject) {
  const CLI::Option* const argument = argumentAt(command, line.arguments);
  if (argument == nullptr) return {};
  // The first argument of every command is a file.
  if (line.arguments == 0) return {.files = drawingFiles};
  if (argument->get_name().find("NAME=VALUE") != std::string::npos) {
    const AskedDrawing drawing(subject);
    const std::size_t equals = typed.find('=');
    if (equals != std::string::npos) return {drawing.choices(typed.substr(0, equals))};
    return {drawing.assignments(), drawingFiles};
  }
  if (argument->get_name().find("NAME") != std::string::npos)
    return {AskedDrawing(subject).properties(), drawingFiles};
  return {.files = drawingFiles};
}

std::vector<Candidate> optionNames(const CLI::App& command) {
  std::vector<Candidate> found;
  for (const CLI::Option* option : command.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_lnames())
      found.push_back({"--" + name, option->get_description()});
  }
  return found;
}

std::vector<Candidate> commandNames(const CLI::App& app) {
  std::vector<Candidate> found;
  for (const CLI::App* command : listedCommands(app))
    found.push_back({command->get_name(), command->get_description()});
  return found;
}

Completion allThatFit(const CLI::App& app, const std::vector<std::string>& complete, const std::string& typed,
                      const Parse& parse) {
  const Line line = readLine(app, complete);
  if (line.isUnknown) return {};
  // The value of an option that is not typed yet is not missing.
  const Subject subject = parse({complete.begin(), complete.end() - (line.option != nullptr ? 1 : 0)});
  if (line.option != nullptr) return valuesOf(*line.option, typed, subject);
  const std::size_t equals = typed.find('=');
  if (typed.starts_with("--") && equals != std::string::npos) {
    const CLI::Option* const option = optionNamed(*line.command, typed.substr(0, equals));
    if (option == nullptr) return {};
    Completion values = valuesOf(*option, typed.substr(equals + 1), subject);
    for (Candidate& candidate : values.candidates)
      candidate.word.insert(0, typed, 0, equals + 1);
    return values;
  }
  if (typed.starts_with('-')) return {optionNames(*line.command)};
  if (line.command == &app) return {commandNames(app)};
  return argumentsOf(*line.command, line, typed, subject);
}

bool beginsIgnoringCase(std::string_view word, std::string_view typed) {
  return word.size() >= typed.size() && palette::equalIgnoringCase(word.substr(0, typed.size()), typed);
}

}  // namespace

Completion complete(const CLI::App& app, const std::vector<std::string>& words, const Parse& parse) {
  const std::string typed = words.empty() ? "" : words.back();
  const std::vector<std::string> complete(words.begin(), words.empty() ? words.end() : words.end() - 1);
  Completion completion = allThatFit(app, complete, typed, parse);
  std::vector<Candidate>& found = completion.candidates;
  const auto differs = [&](const Candidate& candidate) { return !candidate.word.starts_with(typed); };
  // Names do not differ by case, so "doo" may become "Doors"; but not where something is spelled as typed.
  const bool isSpelled = !std::all_of(found.begin(), found.end(), differs);
  std::erase_if(found, [&](const Candidate& candidate) {
    return isSpelled ? differs(candidate) : !beginsIgnoringCase(candidate.word, typed);
  });
  return completion;
}

void print(const Completion& completion, std::ostream& out) {
  out << completion.files << '\n';
  for (const Candidate& candidate : completion.candidates) {
    const auto oneLine = [](std::string text) {
      std::replace(text.begin(), text.end(), '\n', ' ');  // within a description
      return palette::oneLine(palette::fromUtf8(text));
    };
    out << oneLine(candidate.word) << '\t' << oneLine(candidate.help) << '\n';
  }
}

}  // namespace velt::tool
