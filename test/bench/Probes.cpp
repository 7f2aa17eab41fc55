#include "test/bench/Probes.h"
#include "test/bench/Timing.h"

#include "app/base/Firmware.h"

// A wrapped function is reached by its symbol alone; the names here stand for the two symbols that
// the linker makes of it.
EFI_STATUS RealIntake() asm("__real__Z16GetComponentDatav");
EFI_STATUS ProbedIntake() asm("__wrap__Z16GetComponentDatav");
unsigned RealDecode(UINT8 **out, unsigned *width, unsigned *height, const UINT8 *data,
                    size_t size) asm("__real_lodepng_decode32");
unsigned ProbedDecode(UINT8 **out, unsigned *width, unsigned *height, const UINT8 *data,
                      size_t size) asm("__wrap_lodepng_decode32");
EFI_STATUS RealResample(const UINT8 *, UINTN, UINTN, UINT8 *, UINTN,
                        UINTN) asm("__real__Z16ResampleBilinearPKhyyPhyy");
EFI_STATUS ProbedResample(const UINT8 *, UINTN, UINTN, UINT8 *, UINTN,
                          UINTN) asm("__wrap__Z16ResampleBilinearPKhyyPhyy");
void RealHotspots() asm("__real__Z13BuildHotspotsv");
void ProbedHotspots() asm("__wrap__Z13BuildHotspotsv");
void RealFonts() asm("__real__Z9LoadFontsv");
void ProbedFonts() asm("__wrap__Z9LoadFontsv");
void RealView() asm("__real__Z14BuildBoardViewv");
void ProbedView() asm("__wrap__Z14BuildBoardViewv");
UINT32 RealTurn() asm("__real_lv_timer_handler");
UINT32 ProbedTurn() asm("__wrap_lv_timer_handler");

namespace bench {

ProbeState gProbes;

namespace {

class Timed {
 public:
  explicit Timed(Step step) : step_(step) {}
  ~Timed() { gProbes.Steps[static_cast<size_t>(step_)] += stopwatch_.Elapsed(); }

 private:
  Step step_;
  Stopwatch stopwatch_;
};

}  // namespace

double StepSeconds(Step step) { return gProbes.Steps[static_cast<size_t>(step)]; }

}  // namespace bench

using bench::gProbes;
using bench::Step;
using bench::Timed;

EFI_STATUS ProbedIntake() {
  Timed timed(Step::Intake);
  return RealIntake();
}

unsigned ProbedDecode(UINT8 **out, unsigned *width, unsigned *height, const UINT8 *data,
                      size_t size) {
  Timed timed(Step::Decode);
  return RealDecode(out, width, height, data, size);
}

EFI_STATUS ProbedResample(const UINT8 *source, UINTN sourceWidth, UINTN sourceHeight, UINT8 *target,
                          UINTN targetWidth, UINTN targetHeight) {
  Timed timed(Step::Resample);
  return RealResample(source, sourceWidth, sourceHeight, target, targetWidth, targetHeight);
}

void ProbedHotspots() {
  Timed timed(Step::Hotspots);
  RealHotspots();
}

void ProbedFonts() {
  Timed timed(Step::Fonts);
  RealFonts();
}

void ProbedView() {
  Timed timed(Step::View);
  RealView();
}

UINT32 ProbedTurn() {
  if (gProbes.Turns.empty()) {
    gProbes.LoopStart = gProbes.Whole.Elapsed() - gProbes.TransferSeconds;
  }
  gProbes.TransferSeconds = 0;
  gProbes.TransferPixels = 0;
  bench::Stopwatch stopwatch;
  UINT32 result = RealTurn();
  double seconds = stopwatch.Elapsed() - gProbes.TransferSeconds;
  gProbes.Turns.push_back({seconds, gProbes.TransferPixels});
  return result;
}
