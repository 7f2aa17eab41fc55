// The fake firmware gives the answers that the real one gives; see test/contract.

#include <gtest/gtest.h>

#include <fstream>

#include "test/contract/Contract.h"
#include "test/firmware/Run.h"

namespace {

std::vector<std::string> ExpectedLines() {
  std::ifstream file(BOARDSCOPE_SOURCE_DIR "/test/contract/expected.txt");
  std::vector<std::string> lines;
  for (std::string line; std::getline(file, line);) {
    lines.push_back(line);
  }
  return lines;
}

TEST(FirmwareContract, TheFakeAnswersAsRealFirmwareDoes) {
  fake::Firmware machine;
  machine.AddOutput({{640, 480}, {800, 600}});
  fake::Volume &volume = machine.AddVolume({.Label = u"CONTRACT"});
  fake::RunLibraryConstructors(machine);
  EFI_FILE_PROTOCOL *root = nullptr;
  ASSERT_EQ(volume.Protocol()->OpenVolume(volume.Protocol(), &root), EFI_SUCCESS);

  std::vector<std::string> lines;
  auto keep = [](void *context, const CHAR8 *line) {
    static_cast<std::vector<std::string> *>(context)->emplace_back(line);
  };
  contract::PutAllQuestions({keep, &lines}, root);
  root->Close(root);

  std::vector<std::string> expected = ExpectedLines();
  ASSERT_GT(expected.size(), 100u);
  for (size_t i = 0; i < std::min(lines.size(), expected.size()); i++) {
    EXPECT_EQ(lines[i], expected[i]) << "line " << i + 1;
  }
  EXPECT_EQ(lines.size(), expected.size());
  // The questions ask for refusals, which the fake holds against them.
  machine.ForgetProblems();
  EXPECT_EQ(machine.Leftovers(), "");
}

}  // namespace
