/** @file
  The points of a host check, one function each. The host's protocol is known in gHost, and what a
  function needs is there: see the table in HostCheck.cpp.
**/

#pragma once

#include "hostcheck/Report.h"

namespace hostcheck {

/// Slots that may not be empty. Nothing is called.
void CheckSlots(Report *report);
/// GetTime goes on, in milliseconds.
void CheckClock(Report *report);
/// The output to draw on.
void CheckOutput(Report *report);
/// The board picture: it decodes to what its header says.
void CheckPicture(Report *report);
/// The fifteen texts in each language, and their print formats.
void CheckTexts(Report *report);
/// The records that ParseComponents builds: counts, names, types, styles.
void CheckComponents(Report *report);
/// The fields of the shared state that the host fills, and those that it leaves zero.
void CheckSharedState(Report *report);
/// Colours and choices of the appearance record.
void CheckAppearance(Report *report);
/// The font files: FreeType opens them, at every size.
void CheckFontFiles(Report *report);
/// The fonts that the appearance record asks for: their names and, in each view, their sizes.
void CheckFontChoices(Report *report);
/// Outlines, leader lines and callouts: inside the screen in each view.
void CheckPlaces(Report *report);
/// QueryComponentStatus: what it writes, and how long it takes.
void CheckStatus(Report *report);
/// A second ParseComponents gives the same records, without what the first run left in them.
void CheckSecondParse(Report *report);

}  // namespace hostcheck
