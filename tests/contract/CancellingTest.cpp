// Cancelling over the libraries as they ship: wherever a user says stop, what runs ends with an error of its own kind,
// nothing is half done, nothing leaks, and the next time all is there.

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "embedded/database/Drawing.h"
#include "embedded/platform/Ledger.h"
#include "embedded/platform/Watch.h"
#include "palette/Palette.h"
#include "samples/FloorPlan.h"
#include "samples/Gallery.h"
#include "tests/contract/Query.h"
#include "tests/embedded/com/Balance.h"
#include "tests/support/Files.h"

namespace velt::tests {
namespace {

using database::Drawing;
using palette::Fate;
using platform::Ledger;
using platform::Progress;
using platform::Watch;

constexpr std::chrono::milliseconds always{0};

// Answers false at the n-th call.
Watch cancelledAt(std::uint64_t n) {
  return Watch(
      [n](const Progress& done) { return done.objectsMade + done.valuesRead + done.valuesWritten < n; },
      always);
}

Ids firstOf(const Drawing& drawing, std::string_view type, std::size_t count) {
  Ids ids;
  for (const VkDbObjectId id : drawing.entities()) {
    if (ids.size() < count && drawing.view(database::resolve(id)->record).type() == type) ids.push_back(id);
  }
  return ids;
}

std::vector<std::string> textsOf(const palette::Selection& selection) {
  std::vector<std::string> texts;
  for (const palette::Row& row : selection.rows())
    texts.push_back(row.label() + " = " + row.text());
  return texts;
}

std::int64_t sum(const Ledger::Difference& losses) {
  std::int64_t all = 0;
  for (const auto& [account, count] : losses) {
    EXPECT_GE(count, 0) << account << " was given back too often";
    all += count;
  }
  return all;
}

class Cancelling : public testing::Test {
 protected:
  const std::unique_ptr<Drawing> drawing = Drawing::parse(samples::sampleFloorPlan(), "plan");
  const std::string content = drawing->document().bytes();
};

TEST_F(Cancelling, AWatchThatGoesOnChangesNothing) {
  const Ids ids = firstOf(*drawing, "LINE", 5);
  std::vector<std::string> unwatched;
  const Ledger::Snapshot first = Ledger::snapshot();
  {
    palette::Selection selection(ids);
    selection.query();
    unwatched = textsOf(selection);
  }
  const Ledger::Snapshot second = Ledger::snapshot();
  {
    const Watch watch([](const Progress&) { return true; }, always);
    palette::Selection selection(ids);
    selection.query();
    EXPECT_EQ(textsOf(selection), unwatched);
    EXPECT_EQ(watch.progress().objectsMade, 5U);
    EXPECT_GT(watch.progress().valuesRead, 5 * unwatched.size() / 2);
    EXPECT_EQ(watch.progress().valuesWritten, 0U);
  }
  const Ledger::Snapshot third = Ledger::snapshot();
  for (const auto& [account, count] : third) {
    const auto handedOut = [&name = account](const Ledger::Snapshot& at) {
      const auto found = at.find(name);
      return found == at.end() ? 0 : found->second.handedOut;
    };
    if (handedOut(first) == 0) continue;
    EXPECT_EQ(count.handedOut - handedOut(second), handedOut(second) - handedOut(first)) << account;
  }
}

// What the first entity had answered is in rows that nobody gets, at most one value for each row.
TEST_F(Cancelling, AQueryCancelledAnywhereEndsAndLeavesNoMoreThanTheValuesOfOneEntity) {
  const Ids ids = firstOf(*drawing, "LINE", 40);
  ASSERT_EQ(ids.size(), 40U);
  std::size_t rows = 0;
  std::vector<std::string> whole;
  {
    palette::Selection selection(ids);
    rows = selection.query().size();
    whole = textsOf(selection);
  }
  int cancelled = 0;
  for (std::uint64_t n = 1;; n += 37) {
    const Ledger::Snapshot before = Ledger::snapshot();
    bool isWhole = false;
    {
      std::optional<palette::Selection> selection;
      try {
        const Watch watch = cancelledAt(n);
        selection.emplace(ids);
        selection->query();
        isWhole = true;
      } catch (const palette::Cancelled& error) {
        EXPECT_EQ(std::string(error.what()), "The operation was cancelled.");
        ++cancelled;
        if (selection) {
          EXPECT_TRUE(selection->rows().empty());
          selection->query();
        }
      }
      if (selection) {
        EXPECT_EQ(textsOf(*selection), whole) << n;
      }
    }
    EXPECT_LE(sum(Ledger::difference(before, Ledger::snapshot())), static_cast<std::int64_t>(rows)) << n;
    if (isWhole) break;
  }
  EXPECT_GT(cancelled, 10);
  EXPECT_EQ(drawing->document().bytes(), content);
}

TEST_F(Cancelling, AWriteCancelledAnywhereTellsWhichEntitiesWereWrittenAndCanBePutBack) {
  const Ids ids = firstOf(*drawing, "LINE", 12);
  palette::Selection selection(ids);
  selection.query();
  const palette::Row scale = selection.row("Linetype scale");
  std::vector<std::string> before;
  for (const VkDbObjectId id : ids)
    before.push_back(pairsOf(*drawing, id));
  int partial = 0;
  for (std::uint64_t n = 1;; ++n) {
    SCOPED_TRACE(n);
    database::Changes changes;
    palette::Report report;
    bool isCancelled = false;
    drawing->record(changes, [&] {
      const Watch watch = cancelledAt(n);
      report = selection.writeText(scale, "0.25");
      isCancelled = watch.isCancelled();
    });
    EXPECT_EQ(report.isCancelled, isCancelled);
    ASSERT_EQ(report.fates.size(), ids.size());
    for (std::size_t i = 0; i < ids.size(); ++i) {
      EXPECT_TRUE(report.fates[i] == Fate::changed || report.fates[i] == Fate::notReached);
      EXPECT_EQ(report.fates[i] == Fate::changed, pairsOf(*drawing, ids[i]) != before[i]);
    }
    EXPECT_TRUE(report.reasons.empty());
    if (report.count(Fate::changed) > 0 && isCancelled) ++partial;
    static_cast<void>(drawing->undo(std::move(changes)));
    ASSERT_EQ(drawing->document().bytes(), content);
    if (!isCancelled) break;
  }
  EXPECT_GT(partial, 8);
}

TEST_F(Cancelling, AWriteRelativeToWhatIsThereIsCancelledAsAnyOther) {
  palette::Selection selection(firstOf(*drawing, "LINE", 3));
  selection.query();
  const Watch watch = cancelledAt(1);
  const palette::Report report =
      selection.writeRelative(selection.row("Linetype scale"), palette::Relation::times, "2");
  EXPECT_TRUE(report.isCancelled);
  EXPECT_EQ(report.summary(), "3 not reached");
  EXPECT_EQ(drawing->document().bytes(), content);
}

TEST_F(Cancelling, OneEntitysValueIsCancelledLikeThoseOfAll) {
  palette::Selection selection(firstOf(*drawing, "LINE", 2));
  selection.query();
  const palette::Row row = selection.row("Layer");
  const com::Balance balance;
  {
    const Watch watch = cancelledAt(1);
    EXPECT_THROW(static_cast<void>(selection.value(row, 0)), palette::Cancelled);
  }
  {
    const Watch watch = cancelledAt(2);
    EXPECT_THROW(static_cast<void>(selection.values(row)), palette::Cancelled);
  }
}

TEST_F(Cancelling, LookingForAMissingRowIsCancelledToo) {
  const auto gallery = Drawing::parse(samples::galleryDrawing(), "gallery");
  palette::Selection selection(Ids(gallery->entities().begin(), gallery->entities().begin() + 6));
  const Watch watch = cancelledAt(20);
  EXPECT_THROW(static_cast<void>(selection.whyAbsent("Radius")), palette::Cancelled);
}

TEST_F(Cancelling, ALoadThatIsCancelledMakesNoDrawing) {
  const com::Balance balance;
  const auto load = [&](int n) {
    int asked = 0;
    const Watch watch([&](const Progress&) { return ++asked < n; }, always);
    static_cast<void>(Drawing::parse(content, "plan"));
    return watch.progress();
  };
  EXPECT_THROW(load(1), platform::Cancelled);
  EXPECT_THROW(load(50), platform::Cancelled) << "while the database is made";
  const Progress all = load(1 << 30);
  EXPECT_EQ(all.bytesDone, content.size());
  EXPECT_EQ(all.bytesTotal, content.size());
}

TEST_F(Cancelling, ASaveThatIsCancelledLeavesTheFileAsItWas) {
  const TemporaryFolder folder;
  const std::string file = folder.write("plan.dxf", "old");
  {
    const Watch watch([](const Progress&) { return false; }, always);
    EXPECT_THROW(drawing->save(file), platform::Cancelled);
    EXPECT_THROW(drawing->save(folder.path("new.dxf")), platform::Cancelled);
  }
  EXPECT_EQ(contentOf(file), "old");
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1) << "nothing unfinished";
  const Watch watch([](const Progress&) { return true; }, always);
  drawing->save(file);
  EXPECT_EQ(contentOf(file), content);
  EXPECT_EQ(watch.progress().bytesDone, content.size());
}

TEST_F(Cancelling, NothingIsSavedOnceAWriteWasCancelled) {
  const TemporaryFolder folder;
  palette::Selection selection(firstOf(*drawing, "LINE", 4));
  selection.query();
  const Watch watch = cancelledAt(10);
  const palette::Report report = selection.writeText(selection.row("Linetype scale"), "0.25");
  EXPECT_TRUE(report.isCancelled);
  EXPECT_THROW(drawing->save(folder.path("plan.dxf")), platform::Cancelled);
}

}  // namespace
}  // namespace velt::tests
