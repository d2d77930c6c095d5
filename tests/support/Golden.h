#pragma once

// Golden files: what a test produced, compared with what was accepted once.
//
// A golden file stands below tests/. When the text differs from it, or there is none yet, the text is left in the
// build folder, where `make accept-golden` finds it, shows the difference and takes it over when told to. When the
// two agree, what an earlier run left there is removed.

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace velt::tests {

struct GoldenPlaces {
  std::filesystem::path accepted;  // the folder that holds the golden files
  std::filesystem::path produced;  // the folder for what came out instead
};

// The places of this build: tests/ in the tree, golden/ in the build folder.
GoldenPlaces goldenPlaces();

// `path` is relative to tests/, such as "embedded/automation/classes/Line.txt". The failure names the first line that
// differs. An unreadable or unwritable file is a failure too, never an exception.
::testing::AssertionResult matchesGolden(const std::filesystem::path& path, const std::string& text,
                                         const GoldenPlaces& places = goldenPlaces());

}  // namespace velt::tests
