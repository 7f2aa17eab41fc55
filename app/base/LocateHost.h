/** @file
  Finding the host.
**/

#pragma once

#include "app/base/Types.h"

/// Locates the host, takes over its shared state and graphics output, records
/// the setup screen's size and loads the localized texts. Nothing else may use
/// the host before it. Returns the status of LocateProtocol, of GetGop or of
/// loading the texts.
[[nodiscard]] EFI_STATUS InitializeObvProtocol();
