#pragma once

// What a window shows and does, without the window: a drawing, the selection, the writes with their undoing, and the file
// that it all comes from. Nothing of a graphical library is in it.
//
// Failures are exceptions: palette::Error of the layer and the host; of files dxf::Error, dxf::FileChanged and
// std::system_error. What fails changes nothing, unless its comment says so.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"

namespace velt::desktop {

class Session {
 public:
  // Opens the drawing; nothing is selected.
  explicit Session(std::filesystem::path file, const dxf::Progress& progress = {});
  // For a drawing without a file, which can be saved under a name only.
  explicit Session(std::unique_ptr<database::Drawing> drawing);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  ~Session();

  [[nodiscard]] database::Drawing& drawing() { return *drawing_; }
  [[nodiscard]] const palette::NumberStyle& numberStyle() const { return style_; }

  // --- the selection ------------------------------------------------------------------------------------------------

  // Selects these entities and asks for their rows. When the rows cannot be asked for, or the user cancels, the entities
  // are selected, there are no rows, and problem() says why.
  void select(std::vector<VkDbObjectId> entities);
  // Shows and writes to some of the selected entities only; whole() stays, so that there is a way back: widen().
  void narrow(std::vector<VkDbObjectId> entities);
  void widen();
  [[nodiscard]] bool isNarrowed() const { return selected_.size() != whole_.size(); }
  // What was selected.
  [[nodiscard]] std::span<const VkDbObjectId> whole() const { return whole_; }
  // Those of it that are shown and written to.
  [[nodiscard]] std::span<const VkDbObjectId> selected() const { return selected_; }
  // Null when nothing is selected.
  [[nodiscard]] const palette::Selection* selection() const { return selection_ ? &*selection_ : nullptr; }
  // Valid until the next select(), narrow(), widen(), write(), undo(), redo() or goTo().
  [[nodiscard]] std::span<const palette::Row> rows() const;
  [[nodiscard]] const std::string& problem() const { return problem_; }
  // While it selects, writes or undoes, rows must not be looked at: a window that handles events meanwhile may ask.
  [[nodiscard]] bool isAtWork() const { return isAtWork_; }
  // How many of the selected entities no write changes, because they are on locked layers.
  [[nodiscard]] std::size_t lockedCount() const;

  // --- writing ------------------------------------------------------------------------------------------------------

  // Writes what the text means to the row at that index of rows(), to every selected entity, and asks for the rows anew.
  // The text is a value, or says how it follows from the present one: *=2, +=5, ~s/OLD/NEW/. An entity that refuses keeps
  // its value, and the others are written. Throws palette::Error for a text that means nothing to the row.
  palette::Report write(std::size_t row, std::string_view text);

  [[nodiscard]] bool canUndo() const { return position_ > 0; }
  [[nodiscard]] bool canRedo() const { return position_ < history_.size(); }
  void undo();
  void redo();
  // Undoes or does again until that many steps of the history are done.
  void goTo(std::size_t done);
  // What was done, as people say it ("Layer = Walls"), the oldest first; undone() of the last ones have been undone.
  [[nodiscard]] std::vector<std::string> history() const;
  [[nodiscard]] std::size_t undone() const { return history_.size() - position_; }

  // --- the file -----------------------------------------------------------------------------------------------------

  // Empty for a drawing without one.
  [[nodiscard]] const std::filesystem::path& file() const { return file_; }
  // Whether the drawing differs from what was read or saved last.
  [[nodiscard]] bool isChanged() const { return savedPosition_ != position_; }
  // What somebody else's change of the file means to a save: it is refused with dxf::FileChanged, or lost.
  enum class OthersChanges { areKept, areOverwritten };
  // Whole or not at all. Answers what the file lacks now, and who keeps the old one, in sentences; mostly nothing.
  std::vector<std::string> save(OthersChanges changes = OthersChanges::areKept);
  // The drawing's file is this one from now on.
  std::vector<std::string> saveAs(const std::filesystem::path& file, bool replace,
                                  OthersChanges changes = OthersChanges::areKept);

 private:
  struct Step {
    std::string text;
    // Undoes the step or, once it has been undone, does it again.
    database::Changes changes;
  };
  void show(std::vector<VkDbObjectId> entities);
  void ask();
  void step(std::size_t index);

  std::filesystem::path file_;
  std::unique_ptr<database::Drawing> drawing_;
  palette::NumberStyle style_;
  std::vector<VkDbObjectId> whole_;
  std::vector<VkDbObjectId> selected_;
  // Ends before the drawing.
  std::optional<palette::Selection> selection_;
  std::string problem_;
  bool isAtWork_ = false;
  std::vector<Step> history_;
  // Steps before it are done, those after it are undone.
  std::size_t position_ = 0;
  // Nothing when no number of undone steps leads there any more.
  std::optional<std::size_t> savedPosition_ = 0;
};

}  // namespace velt::desktop
