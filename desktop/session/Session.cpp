#include "desktop/session/Session.h"

#include <fmt/format.h>

#include <exception>
#include <utility>

#include "dxf/FileReplacement.h"
#include "tool/OpenDrawing.h"

namespace velt::desktop {

Session::Session(std::filesystem::path file, const dxf::Progress& progress)
    : file_(std::move(file)),
      drawing_(database::Drawing::open(file_, progress)),
      style_(tool::numberStyleOf(*drawing_)) {}

Session::Session(std::unique_ptr<database::Drawing> drawing)
    : drawing_(std::move(drawing)), style_(tool::numberStyleOf(*drawing_)) {}

Session::~Session() = default;

// --- the selection ------------------------------------------------------------------------------------------

void Session::select(std::vector<VkDbObjectId> entities) {
  std::optional<palette::Selection> selection;
  if (!entities.empty()) selection.emplace(entities);
  selected_ = std::move(entities);
  selection_ = std::move(selection);
  ask();
}

void Session::ask() {
  problem_.clear();
  if (!selection_) return;
  try {
    selection_->query();
  } catch (const palette::Error& error) {
    problem_ = error.what();
  }
}

std::span<const palette::Row> Session::rows() const {
  return selection_ ? std::span<const palette::Row>(selection_->rows()) : std::span<const palette::Row>();
}

std::size_t Session::lockedCount() const {
  return selection_ ? selection_->lockedEntities().size() : 0;
}

// --- writing ------------------------------------------------------------------------------------------------

palette::Report Session::write(std::size_t row, std::string_view text) {
  const palette::Row& written = rows()[row];
  Step made{fmt::format("{} = {}", written.label(), text), {}};
  // Room first: what was written must be in the history, also when the write ends by an exception.
  history_.reserve(position_ + 1);
  palette::Report report;
  std::exception_ptr failure;
  try {
    drawing_->record(made.changes, [&] {
      report = selection_->writeText(written, text, {.keepGoing = true, .style = style_});
    });
  } catch (...) {
    failure = std::current_exception();
  }
  if (!made.changes.isEmpty()) {
    if (savedPosition_ && *savedPosition_ > position_) savedPosition_.reset();
    history_.erase(history_.begin() + static_cast<std::ptrdiff_t>(position_), history_.end());
    history_.push_back(std::move(made));
    ++position_;
  }
  if (failure) std::rethrow_exception(failure);
  ask();
  return report;
}

void Session::step(std::size_t index) {
  database::Changes& changes = history_[index].changes;
  changes = drawing_->undo(std::move(changes));
  ask();
}

void Session::undo() {
  if (canUndo()) step(--position_);
}

void Session::redo() {
  if (canRedo()) step(position_++);
}

std::vector<std::string> Session::history() const {
  std::vector<std::string> texts;
  for (const Step& step : history_)
    texts.push_back(step.text);
  return texts;
}

// --- the file -----------------------------------------------------------------------------------------------

void Session::save() {
  drawing_->save(file_);
  savedPosition_ = position_;
}

void Session::saveAs(const std::filesystem::path& file, bool replace) {
  drawing_->save(file, {.onlyNew = !replace});
  file_ = file;
  savedPosition_ = position_;
}

}  // namespace velt::desktop
