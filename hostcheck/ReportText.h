/** @file
  The report as text for a console of 80 columns.
**/

#pragma once

#include "hostcheck/Report.h"

namespace hostcheck {

/// Takes a line, without line feed.
using LineSink = void (*)(void *context, const CHAR8 *line);

/// A line for each point, then what was found, then the sum.
void WriteReport(const Report &report, LineSink sink, void *context);

}  // namespace hostcheck
