#include "embedded/automation/dimensions/DimensionStyle.h"

#include "dxf/Numbers.h"
#include "embedded/automation/dimensions/StyleOverrides.h"
#include "embedded/database/NamedObjects.h"

namespace velt::automation {

DimensionStyle::DimensionStyle(const Subject& subject) : entity_(subject.lens()) {
  const database::TableEntry* const entry = subject.drawing().dimStyles().find(name());
  if (entry != nullptr && !entry->isImplied()) style_.emplace(subject.drawing(), entry->record);
}

std::wstring DimensionStyle::name() const {
  constexpr int code = 3;
  return entity_.name(code, dxf::anySubclass, L"Standard");
}

std::optional<std::string_view> DimensionStyle::overriding(const StyleVariable& variable) const {
  const std::optional<StyleOverrides> list = findOverrides(entity_);
  if (!list) return std::nullopt;
  const dxf::RecordView& view = entity_.view();
  for (std::size_t name = list->begin; name < list->end; name += 2) {
    if (dxf::parseInteger<int>(view.value(name)) == variable.code) return view.value(name + 1);
  }
  return std::nullopt;
}

std::optional<std::string_view> DimensionStyle::value(const StyleVariable& variable) const {
  const std::optional<std::string_view> own = overriding(variable);
  if (own || !style_) return own;
  return style_->value(variable.code, dimensionStyleSubclass);
}

double DimensionStyle::real(const StyleVariable& variable) const {
  const auto text = value(variable);
  return text ? dxf::parseReal(*text).value_or(variable.usual) : variable.usual;
}

double DimensionStyle::realOfStyle(const StyleVariable& variable) const {
  return style_ ? style_->real(variable.code, dimensionStyleSubclass, variable.usual) : variable.usual;
}

std::int64_t DimensionStyle::integer(const StyleVariable& variable) const {
  const auto usual = static_cast<std::int64_t>(variable.usual);
  const auto text = value(variable);
  return text ? dxf::parseInteger<std::int64_t>(*text).value_or(usual) : usual;
}

std::wstring DimensionStyle::text(const StyleVariable& variable) const {
  const auto text = value(variable);
  return text ? entity_.drawing().decode(*text) : std::wstring();
}

std::wstring DimensionStyle::entryName(const StyleVariable& variable, const database::Table& table) const {
  const auto text = value(variable);
  return database::entryName(entity_.drawing(), table, text ? dxf::parseHandle(*text).value_or(0) : 0);
}

std::wstring DimensionStyle::blockName(const StyleVariable& handle, const StyleVariable& oldName) const {
  const std::wstring named = entryName(handle, entity_.drawing().blocks());
  if (!named.empty() || value(handle)) return named;
  const auto old = value(oldName);
  return old ? entity_.drawing().decode(dxf::trimmed(*old)) : std::wstring();
}

}  // namespace velt::automation
