/** @file
  Leader lines from the components to their callouts.
**/

#pragma once

/// Builds the normal and then the emphasised line of every component, hidden.
void BuildLeaderLines();
