#include "tool/ManPages.h"

#include <fmt/format.h>

#include <fstream>
#include <sstream>
#include <string_view>

#include "tool/Failure.h"
#include "tool/Version.h"

namespace velt::tool {

namespace {

// A hyphen that is typed is a minus there, so that it can be copied; a leading dot or quote would be a request.
std::string escaped(std::string_view text) {
  std::string result;
  bool isAtLineStart = true;
  for (const char c : text) {
    if (isAtLineStart && (c == '.' || c == '\'')) result += "\\&";
    isAtLineStart = c == '\n';
    switch (c) {
      case '\\':
        result += "\\e";
        break;
      case '-':
        result += "\\-";
        break;
      case '^':
        result += "\\(ha";
        break;
      case '~':
        result += "\\(ti";
        break;
      case '\'':
        result += "\\(aq";
        break;
      default:
        result += c;
    }
  }
  return result;
}

std::string bold(std::string_view text) {
  return "\\fB" + escaped(text) + "\\fR";
}

std::string italic(std::string_view text) {
  return "\\fI" + escaped(text) + "\\fR";
}

const CLI::App& programOf(const CLI::App& command) {
  return command.get_parent() != nullptr ? *command.get_parent() : command;
}

// "veltprops", "veltprops-show".
std::string pageNameOf(const CLI::App& command) {
  const CLI::App& program = programOf(command);
  return &program == &command ? program.get_name() : program.get_name() + "-" + command.get_name();
}

std::vector<const CLI::Option*> optionsOf(const CLI::App& command, bool arePositional) {
  return command.get_options([=](const CLI::Option* option) {
    return option->get_positional() == arePositional && !option->get_group().empty();
  });
}

// Lines that begin with a blank are examples, which stay as they stand; other lines flow.
void writeText(std::string_view text, std::ostream& out) {
  std::istringstream lines{std::string(text)};
  bool isExample = false;
  const auto endExample = [&] {
    if (isExample) out << ".fi\n.RE\n";
    isExample = false;
  };
  bool wantsParagraph = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.empty()) {
      endExample();
      wantsParagraph = true;
      continue;
    }
    if (wantsParagraph) out << ".PP\n";
    wantsParagraph = false;
    if (line.starts_with(' ') != isExample) {
      if (isExample) {
        endExample();
      } else {
        out << ".RS 4\n.nf\n";
        isExample = true;
      }
    }
    const std::size_t start = line.find_first_not_of(' ');
    out << escaped(line.substr(start == std::string::npos ? 0 : start)) << '\n';
  }
  endExample();
}

void writeOption(const CLI::Option& option, std::ostream& out) {
  std::string names;
  for (const std::string& name : option.get_snames())
    names += (names.empty() ? "" : ", ") + bold("-" + name);
  for (const std::string& name : option.get_lnames())
    names += (names.empty() ? "" : ", ") + bold("--" + name);
  if (option.get_items_expected_max() > 0) names += " " + italic(option.get_type_name());
  out << ".TP\n" << names << '\n' << escaped(option.get_description()) << '\n';
}

void writeOptions(const CLI::App& command, std::ostream& out) {
  out << ".SH OPTIONS\n";
  for (const CLI::Option* option : optionsOf(command, false))
    writeOption(*option, out);
}

void writeArguments(const CLI::App& command, std::ostream& out) {
  const std::vector<const CLI::Option*> arguments = optionsOf(command, true);
  if (arguments.empty()) return;
  out << ".SH ARGUMENTS\n";
  for (const CLI::Option* argument : arguments)
    out << ".TP\n" << italic(argument->get_name()) << '\n' << escaped(argument->get_description()) << '\n';
}

void writeCommands(const CLI::App& program, std::ostream& out) {
  const std::vector<const CLI::App*> commands = listedCommands(program);
  if (commands.empty()) return;
  out << ".SH COMMANDS\n";
  for (const CLI::App* command : commands) {
    out << ".TP\n"
        << bold(command->get_name()) << '\n'
        << escaped(command->get_description()) << ": see " << bold(pageNameOf(*command)) << "(1)\n";
  }
}

void writeSeeAlso(const CLI::App& command, std::ostream& out) {
  const CLI::App& program = programOf(command);
  std::vector<const CLI::App*> others = listedCommands(program);
  if (&program != &command) others.insert(others.begin(), &program);
  std::erase(others, &command);
  out << ".SH SEE ALSO\n";
  for (std::size_t i = 0; i < others.size(); ++i) {
    out << ".BR " << escaped(pageNameOf(*others[i])) << " (1)" << (i + 1 < others.size() ? "," : "") << '\n';
  }
}

}  // namespace

std::vector<const CLI::App*> listedCommands(const CLI::App& program) {
  std::vector<const CLI::App*> listed;
  for (const CLI::App* command : program.get_subcommands([](const CLI::App*) { return true; })) {
    if (!command->get_group().empty()) listed.push_back(command);
  }
  return listed;
}

std::string usageOf(const CLI::App& command) {
  const CLI::App& program = programOf(command);
  std::string usage = program.get_name();
  if (&program != &command) usage += " " + command.get_name();
  usage += " [OPTIONS]";
  for (const CLI::Option* argument : optionsOf(command, true)) {
    usage += " " + argument->get_name();
    if (argument->get_items_expected_max() > 1) usage += "...";
  }
  if (!listedCommands(command).empty()) usage += " COMMAND";
  return usage;
}

std::string manPage(const CLI::App& command) {
  std::ostringstream out;
  const std::string name = pageNameOf(command);
  std::string title = name;
  for (char& c : title)
    c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  out << fmt::format(".TH {} 1 {} \"{} {}\" \"User Commands\"\n", escaped(title), releaseDate,
                     programOf(command).get_name(), version);
  out << ".SH NAME\n" << escaped(name) << " \\- " << escaped(command.get_description()) << '\n';
  out << ".SH SYNOPSIS\n" << escaped(usageOf(command)) << '\n';
  writeArguments(command, out);
  writeCommands(command, out);
  writeOptions(command, out);
  if (!command.get_footer().empty()) {
    out << ".SH DESCRIPTION\n";
    writeText(command.get_footer(), out);
  }
  writeSeeAlso(command, out);
  return std::move(out).str();
}

void writeManPages(const CLI::App& program, const std::filesystem::path& folder) {
  std::vector<const CLI::App*> commands = listedCommands(program);
  commands.insert(commands.begin(), &program);
  std::filesystem::create_directories(folder);
  for (const CLI::App* command : commands) {
    const std::filesystem::path file = folder / (pageNameOf(*command) + ".1");
    std::ofstream page(file, std::ios::binary);
    page << manPage(*command);
    page.close();
    if (!page) throw Failure(fmt::format("{}: could not be written", file.string()));
  }
}

}  // namespace velt::tool
