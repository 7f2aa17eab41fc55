/** @file
  Logo, title, footer and key-help line.
**/

#pragma once

void BuildHeaderAndFooter();
