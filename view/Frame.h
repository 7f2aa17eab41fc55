/** @file
  What frames the board: screen, rules and picture.
**/

#pragma once

/// The screen's background and the rules above and below the board.
void BuildScreenAndRules();

/// The board picture; an empty image when there is none.
void BuildBoardPicture();
