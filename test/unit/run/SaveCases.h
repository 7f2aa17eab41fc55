/** @file
  On SaveRun: many visits on which something happens while the screen is saved, each in a child that
  goes on from F12.
**/

#pragma once

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <cstdio>

#include "test/unit/run/SaveRun.h"

class SaveCases : public testing::Test {
 protected:
  SaveCases()
      : Expected(
            static_cast<SavedPicture *>(mmap(nullptr, sizeof(SavedPicture), PROT_READ | PROT_WRITE,
                                             MAP_SHARED | MAP_ANONYMOUS, -1, 0))) {}
  ~SaveCases() override { munmap(Expected, sizeof(SavedPicture)); }

  /// A save without a failure, which tells what can fail.
  void SetUp() override {
    fake::ChildResult child = fake::RunInChild([this](std::string *) {
      fake::Firmware machine;
      return SaveRun(machine, Expected).LearnCalls();
    });
    ASSERT_TRUE(child.Succeeded) << child.Summary();
  }
  uint64_t CallsOf(fake::Service service) const {
    return Expected->Calls[static_cast<size_t>(service)];
  }

  /// For each of `cases` a child that goes on from F12 with it.
  void TryEach(size_t cases, const std::function<void(SaveRun &, fake::Firmware &, size_t)> &plan,
               const std::function<std::string(size_t)> &name) {
    fake::Firmware machine;
    SaveRun run(machine, Expected);
    bool inChild = false;
    std::string complaints;
    run.AtF12 = [&] {
      for (size_t i = 0; i < cases; i++) {
        fake::ChildResult child;
        inChild = fake::GoOnInChild(&child);
        if (inChild) {
          plan(run, machine, i);
          return;
        }
        complaints += child.Succeeded ? "" : name(i) + ": " + child.Summary();
      }
    };
    int code = run.RunAndCheck();
    if (inChild) {
      fake::EndChild(code);
    }
    EXPECT_EQ(complaints, "");
    EXPECT_EQ(code, 0);
    EXPECT_GT(cases, 0u);
    std::printf("%zu cases\n", cases);
  }

  SavedPicture *Expected;
};
