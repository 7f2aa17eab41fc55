/** @file
  What the user looked at, kept across visits.
**/

#pragma once

/// Stores focus, category filter and pointer in the shared state.
void SaveUiState();

/// Brings back focus and category filter: those of the previous visit in this
/// boot from the shared state, then those that the setup's event handler keeps.
/// The view must be built.
void ReStoreUIState();
