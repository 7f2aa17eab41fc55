/** @file
  On ConnectedHost: operations on graphics outputs, which tests add, and a saved setup screen.
**/

#pragma once

#include "test/unit/stage/ApplicationPool.h"
#include "test/unit/stage/ConnectedHost.h"

#include "app/base/Geometry.h"
#include "app/base/Run.h"
#include "platform/GraphicsOutput.h"

class OutputStage : public ConnectedHost {
 protected:
  ~OutputStage() override { ReportMemoryLeaks(); }

  static std::string Occurs(const std::string &operation, const std::string &status) {
    return "[" + operation + "] Error occurs: " + status + "\n";
  }
  /// The lines of an operation that found no output at all.
  LogLines NoOutput(const std::string &operation) {
    return {Error(Occurs("GetAllGopPrrotocol", "Not Found")),
            Error(Occurs(operation, "Not Found"))};
  }
  std::vector<std::string> Calls() {
    return Machine.Calls.Lines({fake::Service::GopSetMode, fake::Service::GopBlt});
  }
  /// Makes the last output refuse HandleProtocol at the next enumeration.
  void RefuseLastOutput() {
    Machine.FailCall(fake::Service::HandleProtocol, Machine.OutputCount(), EFI_ACCESS_DENIED);
  }
  std::vector<EFI_GRAPHICS_OUTPUT_PROTOCOL *> List(EFI_STATUS expected = EFI_SUCCESS) {
    GopList list = {};
    EXPECT_EQ(GetAllGopPrrotocol(&list), expected);
    auto end = std::find(std::begin(list.Outputs), std::end(list.Outputs), nullptr);
    EXPECT_TRUE(std::all_of(end, std::end(list.Outputs), [](auto *gop) { return gop == nullptr; }));
    return {std::begin(list.Outputs), end};
  }
  /// The setup screen that RecoverScreenContent puts back: every pixel of this colour.
  void SaveScreen(UINT16 width, UINT16 height, UINT32 color) {
    saved_.assign(size_t{width} * height, color);
    gGeometry.PreviousWidth = width;
    gGeometry.PreviousHeight = height;
    gRun.ScreenBackup = reinterpret_cast<EFI_GRAPHICS_OUTPUT_BLT_PIXEL *>(saved_.data());
  }
  static bool IsAll(fake::GraphicsOutput &output, UINT32 color) {
    std::vector<UINT32> picture = output.Picture();
    return std::all_of(picture.begin(), picture.end(), [=](UINT32 p) { return p == color; });
  }

  std::vector<UINT32> saved_;
};
