#pragma once

namespace bench {

/// Start-up, main loop, redraw and memory of the application. False when a run failed.
bool RunViewBench();

}  // namespace bench
