// The reference host: what a question for a component's state costs.

#pragma once

namespace bench {

bool RunHostBench();

}  // namespace bench
