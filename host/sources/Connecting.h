/** @file
  What ConnectHardware remembers.
**/

#pragma once

#include "host/sources/Source.h"

namespace obv_host {

/// The hardware whose drivers were connected, by its index in the board; a bit each.
struct ConnectionRecord {
  UINT8 Tried[(MAX_UINT16 + 1) / 8];
};

/// Since the host was loaded; zero before that.
extern ConnectionRecord gConnections;

}  // namespace obv_host
