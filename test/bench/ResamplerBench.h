#pragma once

namespace bench {

/// Our resampler beside pixman, libyuv, OpenCV and a plain loop, in one thread. False when its
/// result is not the plain loop's.
bool RunResamplerBench();

}  // namespace bench
