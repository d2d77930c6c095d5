#include "embedded/automation/model/Choices.h"

#include <array>
#include <string>

#include "embedded/automation/model/GradientNames.h"
#include "host/automation/ColorNames.h"

namespace velt::automation {
namespace {

const database::Table* tableOf(const Subject& subject, Choices choices) {
  switch (choices) {
    case Choices::Layers:
      return &subject.drawing().layers();
    case Choices::Linetypes:
      return &subject.drawing().linetypes();
    case Choices::TextStyles:
      return &subject.drawing().textStyles();
    case Choices::DimStyles:
      return &subject.drawing().dimStyles();
    default:
      return nullptr;
  }
}

}  // namespace

std::size_t choiceCount(const Subject& subject, const PropertyRow& row) {
  switch (row.choices) {
    case Choices::None:
      return 0;
    case Choices::Enumeration:
      return row.type.user->members.size();
    case Choices::Colors:
      return colorNames.size();
    case Choices::Gradients:
      return gradientNames.size();
    case Choices::OfClass:
      return row.access.names(subject).size();
    default:
      return tableOf(subject, row.choices)->entries().size();
  }
}

std::wstring choiceLabel(const Subject& subject, const PropertyRow& row, std::size_t index) {
  switch (row.choices) {
    case Choices::None:
      return {};
    case Choices::Enumeration:
      return row.type.user->members[index].label;
    case Choices::Colors:
      return std::wstring(colorNames[index].name);
    case Choices::Gradients:
      return gradientNames[index];
    case Choices::OfClass:
      return row.access.names(subject)[index];
    default:
      return tableOf(subject, row.choices)->entries()[index].name;
  }
}

Value choiceValue(const Subject& subject, const PropertyRow& row, std::size_t index) {
  switch (row.choices) {
    case Choices::Enumeration:
      return row.type.user->members[index].value;
    case Choices::Colors:
      return colorNames[index].index;
    default:
      return choiceLabel(subject, row, index);
  }
}

}  // namespace velt::automation
