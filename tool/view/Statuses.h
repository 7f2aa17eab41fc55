/** @file
  Components whose status somebody chose.
**/

#pragma once

#include <map>
#include <string>

#include "host/portable/Host.h"

namespace board_view {

/// From now on the host answers for these components what is chosen here, with the lines that it
/// would tell otherwise. For the only host of the process.
void ChooseStatuses(obv_host::Host *host, const std::map<std::string, EFI_STATUS> &statuses);

}  // namespace board_view
