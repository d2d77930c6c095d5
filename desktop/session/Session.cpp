#include "desktop/session/Session.h"

#include <fmt/format.h>

#include <exception>
#include <unordered_map>
#include <utility>

#include "dxf/FileReplacement.h"
#include "embedded/database/Entity.h"
#include "embedded/database/Layer.h"
#include "tool/OpenDrawing.h"
#include "tool/RowChange.h"

namespace velt::desktop {

namespace {

class AtWork {
 public:
  explicit AtWork(bool& isAtWork) : isAtWork_(isAtWork) { isAtWork_ = true; }
  AtWork(const AtWork&) = delete;
  AtWork& operator=(const AtWork&) = delete;
  ~AtWork() { isAtWork_ = false; }

 private:
  bool& isAtWork_;
};

}  // namespace

Session::Session(std::filesystem::path file, const dxf::Progress& progress)
    : file_(std::move(file)),
      drawing_(database::Drawing::open(file_, progress)),
      style_(tool::numberStyleOf(*drawing_)) {}

Session::Session(std::unique_ptr<database::Drawing> drawing)
    : drawing_(std::move(drawing)), style_(tool::numberStyleOf(*drawing_)) {}

Session::~Session() = default;

// --- the selection ------------------------------------------------------------------------------------------

void Session::select(std::vector<VkDbObjectId> entities) {
  std::vector<VkDbObjectId> whole = entities;
  show(std::move(entities));
  whole_ = std::move(whole);
}

void Session::narrow(std::vector<VkDbObjectId> entities) {
  show(std::move(entities));
}

void Session::widen() {
  show(whole_);
}

void Session::show(std::vector<VkDbObjectId> entities) {
  const AtWork atWork(isAtWork_);
  std::optional<palette::Selection> selection;
  std::string problem;
  try {
    if (!entities.empty()) selection.emplace(entities);
  } catch (const palette::Cancelled& cancelled) {
    problem = cancelled.what();
  }
  selected_ = std::move(entities);
  selection_ = std::move(selection);
  ask();
  if (!problem.empty()) problem_ = std::move(problem);
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

// Each layer is asked once, however many entities are on it.
std::size_t Session::lockedCount() const {
  std::size_t count = 0;
  std::unordered_map<const database::TableEntry*, bool> isLocked;
  for (const VkDbObjectId entity : selected_) {
    const auto object = database::resolve(entity);
    const database::TableEntry* const layer = object ? database::Entity(*object).layer() : nullptr;
    if (layer == nullptr) continue;
    const auto [found, isNew] = isLocked.try_emplace(layer);
    if (isNew) found->second = database::Layer(*drawing_, layer->record).isLocked();
    if (found->second) ++count;
  }
  return count;
}

// --- writing ------------------------------------------------------------------------------------------------

palette::Report Session::write(std::size_t row, std::string_view text) {
  const AtWork atWork(isAtWork_);
  const palette::Row& written = rows()[row];
  const tool::RowChange change = tool::rowChangeIn(written, text);
  Step made{fmt::format("{} {}{}", written.label(), change.relation ? "" : "= ", text), {}};
  // Room first: what was written must be in the history, also when the write ends by an exception.
  history_.reserve(position_ + 1);
  palette::Report report;
  std::exception_ptr failure;
  try {
    drawing_->record(made.changes, [&] {
      report = tool::write(*selection_, written, change, {.keepGoing = true, .style = style_});
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
  const AtWork atWork(isAtWork_);
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

void Session::goTo(std::size_t done) {
  while (position_ > done && canUndo())
    undo();
  while (position_ < done && canRedo())
    redo();
}

std::vector<std::string> Session::history() const {
  std::vector<std::string> texts;
  for (const Step& step : history_)
    texts.push_back(step.text);
  return texts;
}

// --- the file -----------------------------------------------------------------------------------------------

std::vector<std::string> Session::save(OthersChanges changes) {
  std::vector<std::string> losses;
  drawing_->save(file_, {.overwriteChanges = changes == OthersChanges::areOverwritten,
                         .tell = [&](std::string_view loss) { losses.emplace_back(loss); }});
  savedPosition_ = position_;
  return losses;
}

std::vector<std::string> Session::saveAs(const std::filesystem::path& file, bool replace,
                                         OthersChanges changes) {
  std::vector<std::string> losses;
  drawing_->save(file, {.overwriteChanges = changes == OthersChanges::areOverwritten,
                        .onlyNew = !replace,
                        .tell = [&](std::string_view loss) { losses.emplace_back(loss); }});
  file_ = file;
  savedPosition_ = position_;
  return losses;
}

}  // namespace velt::desktop
