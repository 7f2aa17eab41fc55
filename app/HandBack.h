/** @file
  Handing screen and choice back to the setup.
**/

#pragma once

/// Closes the hot-plug detector, saves the state of a view that stood, has the host find a chosen
/// option, and puts modes and setup screen back. The LVGL objects stay as they are, for the pool's
/// leak report, unless the firmware has no memory left for the way back.
void HandBack(bool viewStood);
