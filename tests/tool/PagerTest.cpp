#include "tool/Pager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/time.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <sstream>

#include "tests/support/Files.h"
#include "tool/Failure.h"

namespace velt::tool {
namespace {

class PagerTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const char* const set = std::getenv("PAGER")) before_ = set;
  }
  void TearDown() override { before_ ? setenv("PAGER", before_->c_str(), 1) : unsetenv("PAGER"); }
  static std::string paged(const std::string& pager, const std::string& text) {
    setenv("PAGER", pager.c_str(), 1);
    std::ostringstream terminal;
    Pager out(terminal, 3);
    out << text;
    out.finish();
    EXPECT_TRUE(out.good());
    return terminal.str();
  }

 private:
  std::optional<std::string> before_;
};

TEST_F(PagerTest, ShortOutputStaysOnTheTerminal) {
  EXPECT_EQ(paged("false", "1\n2\n3\n"), "1\n2\n3\n");
}

TEST_F(PagerTest, WhatNobodyFinishedGoesOutAtTheEnd) {
  std::ostringstream terminal;
  Pager(terminal, 3) << "1\n2\n";
  EXPECT_EQ(terminal.str(), "1\n2\n");
}

TEST_F(PagerTest, LongOutputGoesThroughThePager) {
  const tests::TemporaryFolder folder;
  const std::string file = folder.path("paged");
  EXPECT_EQ(paged("cat > " + file, "1\n2\n3\n4\n5\n"), "");
  EXPECT_EQ(tests::contentOf(file), "1\n2\n3\n4\n5\n");
}

TEST_F(PagerTest, WhatStandsBeforeThePagerAndWhatStaysHereIsFlushed) {
  struct Counting : std::stringbuf {
    int flushes = 0;
    int sync() override { return ++flushes, 0; }
  } buffer;
  std::ostream terminal(&buffer);
  setenv("PAGER", "cat > /dev/null", 1);
  Pager out(terminal, 3);
  out << "1\n2\n3\n4\n5\n";
  EXPECT_EQ(buffer.flushes, 1);
  out.finish();
  EXPECT_EQ(buffer.flushes, 2);
}

TEST_F(PagerTest, ThePagerTakesTheSignalsThatTheProgramWaitsFor) {
  const tests::TemporaryFolder folder;
  const std::string file = folder.path("survived");
  // Ignored when a shell started the tests in the background.
  std::signal(SIGINT, SIG_DFL);
  sigset_t interrupt;
  sigset_t before;
  sigemptyset(&interrupt);
  sigaddset(&interrupt, SIGINT);
  pthread_sigmask(SIG_BLOCK, &interrupt, &before);
  EXPECT_EQ(paged("kill -INT $$; : > " + file, "1\n2\n3\n4\n"), "");
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(PagerTest, SignalsOnTheWayCostNoText) {
  // Writing to a pager that does not read yet is interrupted again and again, before anything was written and in between.
  struct sigaction before {};
  struct sigaction ignoring {};
  ignoring.sa_handler = [](int) {};
  ASSERT_EQ(0, sigaction(SIGALRM, &ignoring, &before));
  const itimerval often{{0, 5000}, {0, 5000}};
  ASSERT_EQ(0, setitimer(ITIMER_REAL, &often, nullptr));
  const tests::TemporaryFolder folder;
  const std::string file = folder.path("paged");
  std::string text;
  for (int line = 0; line < 60'000; ++line)
    text += std::to_string(line) + "\n";
  EXPECT_EQ(paged("sleep 0.1; head -c 100000 > " + file + "; sleep 0.1; cat >> " + file, text), "");
  const itimerval never{};
  setitimer(ITIMER_REAL, &never, nullptr);
  sigaction(SIGALRM, &before, nullptr);
  EXPECT_TRUE(tests::contentOf(file) == text);
}

TEST_F(PagerTest, AnInterruptIsForThePager) {
  std::signal(SIGINT, SIG_DFL);
  // It would end this program.
  EXPECT_EQ(paged("read line; kill -INT $PPID; cat > /dev/null", "1\n2\n3\n4\n"), "");
  EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_DFL) << "afterwards it is for the program again";
}

TEST_F(PagerTest, NoPagerIsAskedForByAnEmptyOneAndByCat) {
  for (const char* const none : {"", "cat"})
    EXPECT_EQ(paged(none, "1\n2\n3\n4\n"), "1\n2\n3\n4\n");
}

TEST_F(PagerTest, AReaderWhoLeavesEarlyIsNoFailure) {
  EXPECT_EQ(paged("true", std::string(1'000'000, '\n')), "");
}

TEST_F(PagerTest, APagerThatDoesNotExistIsNamed) {
  try {
    paged("no-such-pager-at-all 2>/dev/null", "1\n2\n3\n4\n");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_THAT(failure.what(), testing::HasSubstr("no-such-pager-at-all"));
  }
}

TEST_F(PagerTest, WhatIsWrittenInPiecesArrivesWhole) {
  const tests::TemporaryFolder folder;
  const std::string file = folder.path("paged");
  setenv("PAGER", ("cat > " + file).c_str(), 1);
  std::ostringstream terminal;
  Pager out(terminal, 3);
  for (const char* const piece : {"a", "b\n", "\n", "c\n", "d\n", "e\n", "f"})
    out << piece;
  out.put('g');
  out.put('\n');
  EXPECT_TRUE(out.good());
  out.finish();
  EXPECT_EQ(terminal.str(), "");
  EXPECT_EQ(tests::contentOf(file), "ab\n\nc\nd\ne\nfg\n");
}

TEST_F(PagerTest, SingleCharactersAreTextToo) {
  setenv("PAGER", "false", 1);
  std::ostringstream terminal;
  Pager out(terminal, 3);
  for (const char c : std::string("ab\n\xc3\xbf\n"))
    out.put(c);
  EXPECT_TRUE(out.good());
  out.finish();
  EXPECT_EQ(terminal.str(), "ab\n\xc3\xbf\n");
}

TEST_F(PagerTest, WhatTheTerminalDoesNotTakeIsAFailure) {
  setenv("PAGER", "cat", 1);
  std::ostringstream terminal;
  terminal.setstate(std::ios::badbit);
  Pager letter(terminal, 3);
  letter.put('a');
  EXPECT_TRUE(letter.bad());
  Pager text(terminal, 3);
  text << "Walls";
  EXPECT_TRUE(text.bad());
}

TEST_F(PagerTest, LessIsToldToEndOnOnePageUnlessItHasOptionsAlready) {
  const tests::TemporaryFolder folder;
  const std::string file = folder.path("options");
  const char* const set = std::getenv("LESS");
  const std::optional<std::string> before = set != nullptr ? std::optional<std::string>(set) : std::nullopt;
  unsetenv("LESS");
  paged("cat > /dev/null; printf %s \"$LESS\" > " + file, "1\n2\n3\n4\n");
  EXPECT_EQ(tests::contentOf(file), "FRX");
  setenv("LESS", "S", 1);
  paged("cat > /dev/null; printf %s \"$LESS\" > " + file, "1\n2\n3\n4\n");
  EXPECT_EQ(tests::contentOf(file), "S");
  before ? setenv("LESS", before->c_str(), 1) : unsetenv("LESS");
}

TEST_F(PagerTest, AfterwardsTheSignalsAreThoseOfTheProgram) {
  setenv("PAGER", "cat > /dev/null", 1);
  std::signal(SIGINT, SIG_DFL);
  std::signal(SIGPIPE, SIG_DFL);
  std::ostringstream terminal;
  {
    Pager out(terminal, 3);
    out << "1\n2\n3\n4\n";
    EXPECT_EQ(std::signal(SIGPIPE, SIG_IGN), SIG_IGN) << "a reader who leaves does not end the program";
    out.finish();
    EXPECT_EQ(std::signal(SIGPIPE, SIG_IGN), SIG_DFL);
    EXPECT_EQ(std::signal(SIGINT, SIG_IGN), SIG_DFL);
  }
  EXPECT_EQ(std::signal(SIGPIPE, SIG_DFL), SIG_IGN) << "the end of what is finished changes nothing";
  EXPECT_EQ(std::signal(SIGINT, SIG_DFL), SIG_IGN);
}

// Programs on the path, each of which leaves what it is given in a file of its name.
class PagerOnThePath : public PagerTest {
 protected:
  void SetUp() override {
    PagerTest::SetUp();
    if (const char* const set = std::getenv("PATH")) path_ = set;
    std::filesystem::create_directory(folder_.path("first"));
    std::filesystem::create_directory(folder_.path("second"));
  }
  void TearDown() override {
    setenv("PATH", path_.c_str(), 1);
    PagerTest::TearDown();
  }
  void install(const std::string& program, bool isExecutable = true) {
    const std::string file =
        folder_.write(program, "#!/bin/sh\nexec /bin/cat > " + folder_.path("paged-by-")
                                   + std::filesystem::path(program).filename().string() + "\n");
    using std::filesystem::perms;
    std::filesystem::permissions(file, isExecutable ? perms::owner_all : perms::owner_read);
  }
  // Who was given the text; empty when it stayed on the terminal.
  std::string pagerFound() {
    unsetenv("PAGER");
    setenv("PATH", (folder_.path("first") + ":" + folder_.path("second")).c_str(), 1);
    std::ostringstream terminal;
    Pager out(terminal, 3);
    out << "1\n2\n3\n4\n";
    out.finish();
    std::string found;
    for (const std::string name : {"less", "more"}) {
      if (std::filesystem::exists(folder_.path("paged-by-" + name))) found += name;
    }
    EXPECT_EQ(terminal.str(), found.empty() ? "1\n2\n3\n4\n" : "");
    return found;
  }

 private:
  std::string path_;
  const tests::TemporaryFolder folder_;
};

TEST_F(PagerOnThePath, LessIsTakenWhereverItIs) {
  install("first/more");
  install("second/less");
  EXPECT_EQ(pagerFound(), "less");
}

TEST_F(PagerOnThePath, ElseMoreIs) {
  install("first/less", false);
  install("second/more");
  EXPECT_EQ(pagerFound(), "more");
}

TEST_F(PagerOnThePath, ElseThereIsNone) {
  EXPECT_EQ(pagerFound(), "");
  unsetenv("PAGER");
  unsetenv("PATH");
  std::ostringstream terminal;
  Pager(terminal, 3) << "1\n2\n3\n4\n";
  EXPECT_EQ(terminal.str(), "1\n2\n3\n4\n");
}

}  // namespace
}  // namespace velt::tool
