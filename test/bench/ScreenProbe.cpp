#include "test/bench/ScreenProbe.h"

#include "test/bench/Probes.h"
#include "test/bench/Timing.h"

namespace bench {

namespace {

EFI_GRAPHICS_OUTPUT_PROTOCOL_BLT gRealBlt;

EFI_STATUS EFIAPI ProbedBlt(EFI_GRAPHICS_OUTPUT_PROTOCOL *self,
                            EFI_GRAPHICS_OUTPUT_BLT_PIXEL *buffer,
                            EFI_GRAPHICS_OUTPUT_BLT_OPERATION operation, UINTN sourceX,
                            UINTN sourceY, UINTN targetX, UINTN targetY, UINTN width, UINTN height,
                            UINTN delta) {
  Stopwatch stopwatch;
  EFI_STATUS status =
      gRealBlt(self, buffer, operation, sourceX, sourceY, targetX, targetY, width, height, delta);
  gProbes.TransferSeconds += stopwatch.Elapsed();
  gProbes.TransferPixels += width * height;
  return status;
}

}  // namespace

ScreenProbe::ScreenProbe(EFI_GRAPHICS_OUTPUT_PROTOCOL *output) {
  gRealBlt = output->Blt;
  output->Blt = ProbedBlt;
}

}  // namespace bench
