/** @file
  The board view as a whole.
**/

#pragma once

/// Builds the whole view on the active screen. Called once, inside
/// RunGuardedFromLvgl, after the components are there.
void BuildBoardView();
