#include "tool/UsageMessage.h"

#include <fmt/format.h>

#include <vector>

#include "palette/Palette.h"
#include "tool/ManPages.h"

namespace velt::tool {

namespace {

bool isOption(const std::string& word) {
  return word.starts_with('-') && word != "-";
}

std::vector<std::string> optionNames(const CLI::App& command) {
  std::vector<std::string> names;
  for (const CLI::Option* option : command.get_options()) {
    for (const std::string& name : option->get_lnames())
      names.push_back("--" + name);
  }
  return names;
}

std::vector<std::string> commandNames(const CLI::App& program) {
  std::vector<std::string> names;
  for (const CLI::App* command : listedCommands(program))
    names.push_back(command->get_name());
  return names;
}

}  // namespace

std::string usageMessage(const CLI::App& program, const CLI::ParseError& error) {
  const std::vector<CLI::App*> parsed = program.get_subcommands();
  const CLI::App& command = parsed.empty() ? program : *parsed.front();
  const std::string name =
      parsed.empty() ? program.get_name() : program.get_name() + " " + command.get_name();
  const std::string help = fmt::format("; \"{} --help\" tells more", name);
  const std::vector<std::string> left = command.remaining();
  if (!left.empty() && isOption(left.front())) {
    return fmt::format("{}: {} has no such option{}", left.front(), name,
                       palette::didYouMean(left.front(), optionNames(command), help));
  }
  if (parsed.empty()) {
    if (left.empty()) return fmt::format("which command? \"{} --help\" lists them", name);
    return fmt::format("{}: no such command{}", left.front(),
                       palette::didYouMean(left.front(), commandNames(program), help));
  }
  return error.what() + help;
}

}  // namespace velt::tool
