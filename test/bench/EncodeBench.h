#pragma once

namespace bench {

/// A screenshot's encoding, time and bytes, beside other encoders. False when one of them failed.
bool RunEncodeBench();

}  // namespace bench
