// Two processes that change the same drawing in place, at once and again and again. Whatever one of them was told to be
// saved is in the file at the end, and whatever was not is told.

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#include "dxf/Document.h"
#include "dxf/FileReplacement.h"
#include "tests/dxf/Drawings.h"
#include "tests/dxf/Folders.h"

namespace velt::dxf {
namespace {

constexpr int entityCount = 1000;
constexpr int textCode = 1;

std::string handleOf(int entity) {
  return std::to_string(1000 + entity);
}

std::string drawing() {
  std::string bytes = testing::pairs({"0|SECTION", "2|ENTITIES"});
  for (int entity = 0; entity < entityCount; ++entity)
    bytes +=
        testing::pairs({"0|TEXT", "5|" + handleOf(entity), "8|0", "10|0.0", "20|0.0", "40|1.0", "1|old"});
  return bytes + testing::pairs({"0|ENDSEC", "0|EOF"});
}

std::map<std::string, std::string> textsOf(const Document& document) {
  std::map<std::string, std::string> texts;
  for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
    const RecordView view = document.view(record);
    if (view.type() == "TEXT") texts[std::string(view.handle())] = view.text(textCode, anySubclass).value();
  }
  return texts;
}

// Counts how often a save was refused because the other process had been faster.
int change(const std::filesystem::path& file, const std::string& handle, const std::string& text) {
  for (int refused = 0;; ++refused) {
    Document document = Document::open(file);
    for (std::uint32_t record = 0; record < document.recordCount(); ++record) {
      if (document.view(record).handle() == handle) document.set(record, textCode, anySubclass, text);
    }
    try {
      save(document, file);
      return refused;
    } catch (const FileChanged&) {}
  }
}

// How often each process changes the drawing: 50 times, or as VELT_SAVES says.
int changes() {
  const char* const asked = std::getenv("VELT_SAVES");
  return asked != nullptr ? std::atoi(asked) : 50;
}

class SimultaneousSaves : public testing::FolderTest {};

TEST_F(SimultaneousSaves, LoseNoChangeThatWasSaved) {
  testing::putFile(file, drawing());
  constexpr int processes = 2;
  pid_t children[processes];
  for (int process = 0; process < processes; ++process) {
    children[process] = ::fork();
    ASSERT_GE(children[process], 0);
    if (children[process] != 0) continue;
    testing::runAsChild([&] {
      int refused = 0;
      // Each its own entities, so that no change is meant to be written over.
      for (int i = 0; i < changes(); ++i)
        refused += change(file, handleOf((processes * i + process) % entityCount),
                          std::to_string(process) + "-" + std::to_string(i));
      std::cout << "process " << process << ": " << changes() << " saved, " << refused
                << " refused because of the other's and made again" << std::endl;
    });
  }
  for (const pid_t child : children) {
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);
  }

  std::map<std::string, std::string> expected;
  for (int entity = 0; entity < entityCount; ++entity)
    expected[handleOf(entity)] = "old";
  for (int i = 0; i < changes(); ++i) {
    for (int process = 0; process < processes; ++process)
      expected[handleOf((processes * i + process) % entityCount)] =
          std::to_string(process) + "-" + std::to_string(i);
  }
  EXPECT_EQ(textsOf(Document::open(file)), expected);
  EXPECT_EQ(testing::filesIn(folder), 1U);
}

}  // namespace
}  // namespace velt::dxf
