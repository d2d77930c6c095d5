#include "embedded/automation/model/HelpText.h"

namespace velt::automation {
namespace {

// A sentence after a colon. Sentences here begin with words, and never with a name.
std::wstring continued(std::wstring sentence) {
  if (!sentence.empty() && sentence[0] >= L'A' && sentence[0] <= L'Z') sentence[0] += L'a' - L'A';
  return sentence;
}

}  // namespace

std::wstring helpText(const PropertyRow& row) {
  const Writability& writability = row.writability;
  if (writability.never != nullptr) {
    return row.help + (L" Read-only: " + continued(writability.never->sentence));
  }
  if (writability.obstacle != nullptr) {
    return row.help + (std::wstring(L" Read-only where ") + writability.obstacle->where);
  }
  return row.help;
}

}  // namespace velt::automation
