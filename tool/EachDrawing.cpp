#include "tool/EachDrawing.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>

#include "tool/JsonOutput.h"

namespace velt::tool {

ExitCode onEachDrawing(const std::vector<std::string>& drawings, Sequence sequence, std::ostream& out,
                       std::ostream& err,
                       const std::function<ExitCode(const std::string&, std::ostream&)>& command) {
  if (drawings.size() == 1) return command(drawings.front(), out);
  ExitCode worst = succeeded;
  bool isFirst = true;
  if (sequence == Sequence::array) out << "[\n";
  for (const std::string& drawing : drawings) {
    // Collected, so that of a drawing that fails nothing is printed.
    std::ostringstream printed;
    try {
      worst = std::max(worst, command(drawing, printed));
    } catch (const UsageFailure&) {
      throw;
    } catch (...) {
      const std::string message = messageOfFailure();
      // Messages about a file begin with its name already.
      err << "veltprops: " << (message.starts_with(drawing) ? "" : drawing + ": ") << message << '\n';
      worst = std::max(worst, failed);
      if (sequence != Sequence::array) continue;
      printed = std::ostringstream();
      printJson({{"drawing", drawing}, {"error", message}}, printed);
    }
    if (!std::exchange(isFirst, false)) {
      if (sequence == Sequence::paragraphs) out << '\n';
      if (sequence == Sequence::array) out << ",\n";
    }
    std::string text = std::move(printed).str();
    // The comma follows on the same line.
    if (sequence == Sequence::array && text.ends_with('\n')) text.pop_back();
    out << text;
  }
  if (sequence == Sequence::array) out << "\n]\n";
  return worst;
}

}  // namespace velt::tool
