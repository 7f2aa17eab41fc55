/** @file
  The callouts: small buttons with the components' names.
**/

#pragma once

/// Sets up the two styles of every component's callout.
void InitializeCalloutStyles();

/// Builds every callout and places it at the end of its leader line.
void BuildCallouts();
