#include "test/bench/Peers.h"

#include <libyuv/cpu_id.h>
#include <libyuv/scale_argb.h>
#include <pixman.h>
#include <memory>
#include <opencv2/imgproc.hpp>

namespace bench {

namespace {

/// Firmware does not save the state of AVX.
constexpr int kFirmwareFlags = libyuv::kCpuInitialized | libyuv::kCpuHasX86 | libyuv::kCpuHasSSE2 |
                               libyuv::kCpuHasSSSE3 | libyuv::kCpuHasSSE41 | libyuv::kCpuHasSSE42;

struct ImageDeleter {
  void operator()(pixman_image_t *image) const { pixman_image_unref(image); }
};
using Image = std::shared_ptr<pixman_image_t>;

Image MakeImage(uint8_t *pixels, size_t width, size_t height) {
  int row = static_cast<int>(width * 4);
  return {
      pixman_image_create_bits(PIXMAN_a8r8g8b8, static_cast<int>(width), static_cast<int>(height),
                               reinterpret_cast<uint32_t *>(pixels), row),
      ImageDeleter()};
}

pixman_fixed_t Ratio(size_t source, size_t target) {
  return pixman_double_to_fixed(static_cast<double>(source) / static_cast<double>(target));
}

std::function<void()> Pixman(const Scaling &scaling) {
  Image source = MakeImage(scaling.Source, scaling.SourceWidth, scaling.SourceHeight);
  Image target = MakeImage(scaling.Target, scaling.TargetWidth, scaling.TargetHeight);
  pixman_transform_t transform;
  pixman_transform_init_scale(&transform, Ratio(scaling.SourceWidth, scaling.TargetWidth),
                              Ratio(scaling.SourceHeight, scaling.TargetHeight));
  pixman_image_set_transform(source.get(), &transform);
  pixman_image_set_filter(source.get(), PIXMAN_FILTER_BILINEAR, nullptr, 0);
  pixman_image_set_repeat(source.get(), PIXMAN_REPEAT_PAD);
  int width = static_cast<int>(scaling.TargetWidth);
  int height = static_cast<int>(scaling.TargetHeight);
  return [=] {
    pixman_image_composite32(PIXMAN_OP_SRC, source.get(), nullptr, target.get(), 0, 0, 0, 0, 0, 0,
                             width, height);
  };
}

std::function<void()> Libyuv(const Scaling &s, int flags) {
  return [s, flags] {
    libyuv::SetCpuFlags(flags);
    libyuv::ARGBScale(s.Source, static_cast<int>(s.SourceWidth * 4),
                      static_cast<int>(s.SourceWidth), static_cast<int>(s.SourceHeight), s.Target,
                      static_cast<int>(s.TargetWidth * 4), static_cast<int>(s.TargetWidth),
                      static_cast<int>(s.TargetHeight), libyuv::kFilterBilinear);
  };
}

std::function<void()> HeldLibyuv(const Scaling &scaling) {
  return Libyuv(scaling, libyuv::InitCpuFlags() & kFirmwareFlags);
}

std::function<void()> FreeLibyuv(const Scaling &scaling) {
  return Libyuv(scaling, libyuv::InitCpuFlags());
}

std::function<void()> OpenCv(const Scaling &s) {
  cv::setNumThreads(1);
  cv::Mat source(static_cast<int>(s.SourceHeight), static_cast<int>(s.SourceWidth), CV_8UC4,
                 s.Source);
  cv::Mat target(static_cast<int>(s.TargetHeight), static_cast<int>(s.TargetWidth), CV_8UC4,
                 s.Target);
  return [=]() mutable { cv::resize(source, target, target.size(), 0, 0, cv::INTER_LINEAR); };
}

}  // namespace

void PlainResample(const Scaling &s) {
  size_t rowStep = s.SourceHeight * 256 / s.TargetHeight;
  size_t columnStep = s.SourceWidth * 256 / s.TargetWidth;
  uint8_t *to = s.Target;
  for (size_t r = 0; r < s.TargetHeight; r++) {
    size_t y = r * rowStep >> 8;
    int fy = static_cast<int>(r * rowStep & 255);
    const uint8_t *top = s.Source + y * s.SourceWidth * 4;
    const uint8_t *bottom = y < s.SourceHeight - 1 ? top + s.SourceWidth * 4 : top;
    for (size_t c = 0; c < s.TargetWidth; c++) {
      size_t left = (c * columnStep >> 8) * 4;
      size_t right = left < (s.SourceWidth - 1) * 4 ? left + 4 : left;
      int fx = static_cast<int>(c * columnStep & 255);
      for (size_t byte = 0; byte < 4; byte++, left++, right++) {
        int upper = top[left] * 256 + (top[right] - top[left]) * fx;
        int lower = bottom[left] * 256 + (bottom[right] - bottom[left]) * fx;
        *to++ = static_cast<uint8_t>((upper * 256 + (lower - upper) * fy) >> 16);
      }
    }
  }
}

std::vector<Peer> ResamplerPeers() {
  std::vector<Peer> peers = {
      {"pixman", Pixman, true}, {"libyuv without AVX", HeldLibyuv, true}, {"OpenCV", OpenCv, true}};
  if ((libyuv::InitCpuFlags() & libyuv::kCpuHasAVX2) != 0) {
    peers.push_back({"libyuv with AVX2", FreeLibyuv, false});
  }
  return peers;
}

}  // namespace bench
