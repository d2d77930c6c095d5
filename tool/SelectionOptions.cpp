#include "tool/SelectionOptions.h"

#include "tool/Lists.h"

namespace velt::tool {

CLI::Option* addList(CLI::App& command, const std::string& name, std::vector<std::string>& list,
                     const std::string& description) {
  const auto add = [&list](const std::string& text) {
    for (std::string& one : splitList(text))
      list.push_back(std::move(one));
  };
  return command.add_option_function<std::string>(name, add, description)
      ->trigger_on_parse()
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void addSelection(CLI::App& command, SelectionRequest& selection, Layouts layouts) {
  command.add_flag("--all", selection.all, "Every entity of model space and the layouts");
  addList(command, "--handle", selection.handles, "Entities by handle, hexadecimal")->type_name("HANDLE");
  addList(command, "--layer", selection.layers, "Entities on a layer")->type_name("NAME");
  addList(command, "--type", selection.types, "Entities of a class (Line) or DXF type (LINE)")
      ->type_name("TYPE");
  if (layouts == Layouts::Select)
    addList(command, "--layout", selection.layouts, "Entities of a layout, or of Model")->type_name("NAME");
  addList(command, "--block", selection.blocks, "Entities inside the definition of a block")
      ->type_name("NAME");
  command
      .add_option("--where", selection.where,
                  "Entities whose properties fit: \"Radius>5 and Layer like 'W*'\"")
      ->type_name("CONDITION");
  command.add_flag("--not", selection.isInverted, "Those that the other options do not select");
  command.add_flag("--in-blocks", selection.inBlocks, "Also the entities inside block definitions");
}

}  // namespace velt::tool
