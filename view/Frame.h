/** @file
  What frames the board: screen, rules, picture, header, footer, close button.
**/

#pragma once

/// Reads the background that the close button shows with keyboard focus.
void InitializeCloseFocusColor();

/// The screen's background and the rules above and below the board.
void BuildScreenAndRules();

/// The board picture; an empty image when there is none.
void BuildBoardPicture();

/// Logo, title, footer and key-help line.
void BuildHeaderAndFooter();

/// The close button and the info text that explains it.
void BuildCloseButtonAndInfoText();
