#include <cstdio>
#include <sstream>

#include "test/bench/BenchHost.h"
#include "test/bench/EncodeBench.h"
#include "test/bench/EncodePeers.h"
#include "test/bench/MeasureInChild.h"
#include "test/bench/Report.h"
#include "test/bench/Timing.h"
#include "test/firmware/Run.h"

#include "platform/PngCodec.h"

// The application's allocator in native builds, where it is not called free.
extern "C" void BoardscopeFree(void *pointer);

namespace bench {

namespace {

constexpr Resolution kResolution = {1920, 1080};
// The view stands, and the first component has the focus.
constexpr int kPictureTurn = 60;
constexpr int kRounds = 5;

RgbaPicture PictureOf(const fake::GraphicsOutput &output) {
  RgbaPicture picture = {output.Width(), output.Height(), {}};
  for (UINT32 pixel : output.Picture()) {
    picture.Bytes.insert(picture.Bytes.end(),
                         {static_cast<uint8_t>(pixel >> 16), static_cast<uint8_t>(pixel >> 8),
                          static_cast<uint8_t>(pixel), 0xFF});
  }
  return picture;
}

/// lodepng on the application's memory, as a screenshot is saved.
std::vector<uint8_t> WithOurs(const RgbaPicture &picture) {
  std::vector<uint8_t> pixels = picture.Bytes;
  PngFile file = EncodePng({pixels.data(), picture.Width, picture.Height});
  std::vector<uint8_t> bytes(file.Data, file.Data + file.Size);
  BoardscopeFree(file.Data);
  return bytes;
}

/// Writes each encoder's time and bytes; false when one of them gave nothing.
bool MeasureEncoders(const RgbaPicture &picture, std::ostream *text) {
  std::vector<Encoder> encoders = EncodePeers();
  encoders.push_back({"ours", WithOurs});
  std::vector<Contender> contenders;
  for (const Encoder &encoder : encoders) {
    size_t size = encoder.Encode(picture).size();
    if (size == 0) {
      std::printf("%s gives no file\n", encoder.Name.c_str());
      return false;
    }
    *text << encoder.Name << "Bytes " << size << "\n";
    contenders.push_back({encoder.Name, [&] { (void)encoder.Encode(picture); }});
  }
  std::vector<double> seconds = Medians(contenders, kRounds);
  for (size_t i = 0; i < encoders.size(); i++) {
    *text << encoders[i].Name << " " << seconds[i] << "\n";
  }
  return true;
}

bool Measure(std::string *text) {
  fake::Firmware firmware;
  firmware.Pool.Poison = false;
  firmware.Calls.RecordAll(false);
  firmware.AddOutput({{kResolution.Width, kResolution.Height}});
  fake::TestHost host(firmware);
  if (!Furnish(&host)) {
    return false;
  }
  host.Install();
  std::ostringstream figures;
  bool measured = false;
  fake::RunOptions options;
  options.At(kPictureTurn, [&] {
    // While the application runs, so that its memory is there.
    measured = MeasureEncoders(PictureOf(firmware.Output()), &figures);
    firmware.Keyboard.Scan(SCAN_ESC);
  });
  fake::RunResult result = fake::RunApplication(firmware, options);
  *text = figures.str();
  return measured && result.Status == EFI_SUCCESS;
}

}  // namespace

bool RunEncodeBench() {
  Figures figures = MeasureInChild("The encoders", Measure);
  if (figures.empty()) {
    return false;
  }
  ReportGroup("Encoding the screen of " + std::to_string(kResolution.Width) + "x" +
              std::to_string(kResolution.Height) + " as a PNG file");
  for (const Encoder &peer : EncodePeers()) {
    Report("lodepng, time", figures["ours"], peer.Name, figures[peer.Name]);
    ReportBytes("lodepng, bytes", figures["oursBytes"], peer.Name, figures[peer.Name + "Bytes"]);
  }
  return true;
}

}  // namespace bench
