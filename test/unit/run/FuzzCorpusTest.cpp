// Replays what fuzzing has found worth keeping: each target over each input of its corpus. The
// targets' sources are part of this program; each target's function has the name of its file.

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "test/firmware/Child.h"

#define TARGET(Name) extern "C" int Name(const std::uint8_t *data, std::size_t size);
BOARDSCOPE_FUZZ_TARGETS
#undef TARGET

namespace {

namespace fs = std::filesystem;

struct Target {
  const char *Name;
  int (*Run)(const std::uint8_t *data, std::size_t size);
};

void PrintTo(const Target &target, std::ostream *out) { *out << target.Name; }

fs::path CorpusFolder() { return fs::path(BOARDSCOPE_SOURCE_DIR) / "test/fuzz/corpus"; }

std::vector<std::uint8_t> BytesOf(const fs::path &path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// In the order of their names: folders have no order of their own.
std::set<fs::path> InputsOf(const Target &target) {
  fs::directory_iterator entries(CorpusFolder() / target.Name);
  return {fs::begin(entries), fs::end(entries)};
}

class FuzzCorpus : public testing::TestWithParam<Target> {};

TEST_P(FuzzCorpus, EveryInputPasses) {
  std::set<fs::path> inputs = InputsOf(GetParam());
  for (const fs::path &input : inputs) {
    std::vector<std::uint8_t> bytes = BytesOf(input);
    // In a child, so that a failing input has a name and the others are still tried.
    fake::ChildResult result =
        fake::RunInChild([&](std::string *) { return GetParam().Run(bytes.data(), bytes.size()); });
    EXPECT_TRUE(result.Succeeded) << input.filename() << ": " << result.Summary();
  }
  EXPECT_FALSE(inputs.empty());
}

constexpr Target kTargets[] = {
#define TARGET(Name) {#Name, Name},
    BOARDSCOPE_FUZZ_TARGETS
#undef TARGET
};

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCorpus, testing::ValuesIn(kTargets),
                         [](const testing::TestParamInfo<Target> &info) {
                           return std::string(info.param.Name);
                         });

}  // namespace
