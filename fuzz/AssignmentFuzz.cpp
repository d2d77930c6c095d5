// The parser of assignments and values, on one entity of every class. Any text is either refused with a reason, or it is a
// value that its row shows as a text of the same meaning.
//
// An input is a line with the number of an entity, which goes round, and the text of an assignment after it.

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "embedded/database/Drawing.h"
#include "palette/Palette.h"
#include "samples/Gallery.h"
#include "tool/Assignment.h"
#include "tool/Failure.h"

namespace {

using namespace velt;

void require(bool condition, const char* what, const std::string& text) {
  if (condition) return;
  std::fprintf(stderr, "not so: %s: %s\n", what, text.c_str());
  std::abort();
}

// The rows of one entity of each class, for all inputs.
class Gallery {
 public:
  static Gallery& theOnly() {
    static Gallery& gallery = *new Gallery;
    return gallery;
  }
  const std::vector<palette::Row>& rows(std::size_t entity) const {
    return selections_[entity % selections_.size()].rows();
  }

 private:
  Gallery() : drawing_(database::Drawing::parse(samples::galleryDrawing(), "gallery.dxf")) {
    std::set<std::string> types;
    for (const VkDbObjectId& id : drawing_->entities()) {
      const std::uint32_t record = database::resolve(id)->record;
      if (!types.emplace(drawing_->document().type(record)).second) continue;
      selections_.emplace_back(std::span(&id, 1));
      selections_.back().query();
    }
  }

  std::unique_ptr<database::Drawing> drawing_;
  std::vector<palette::Selection> selections_;
};

void tryOn(const std::string& text, const std::vector<palette::Row>& rows) {
  const tool::Assignment assignment = tool::parseAssignment(text);
  require(assignment.text == text, "an assignment keeps its text", text);
  const palette::Row row = tool::rowFor(assignment, rows);
  require(row.isEditable(), "only rows that can be edited are assigned to", text);
  // What follows from the present value needs an entity to be written to.
  if (assignment.relation) return;
  const palette::Value value = row.parse(assignment.value);
  const std::string shown = row.textOf(value);
  require(row.textOf(row.parse(shown)) == shown, "what is shown of a value means that value", text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  std::size_t entity = 0;
  const auto [end, error] = std::from_chars(bytes.data(), bytes.data() + bytes.size(), entity);
  const std::size_t line = bytes.find('\n');
  if (error != std::errc() || line == std::string_view::npos) return 0;
  try {
    tryOn(std::string(bytes.substr(line + 1)), Gallery::theOnly().rows(entity));
  } catch (const tool::Failure& failure) {
    require(failure.what()[0] != '\0', "a refusal has a reason", "");
  } catch (const palette::Error& failure) {
    require(failure.what()[0] != '\0', "a refusal has a reason", "");
  } catch (const tool::UsageFailure& failure) {
    require(failure.what()[0] != '\0', "a refusal has a reason", "");
  }
  return 0;
}
