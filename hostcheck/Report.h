/** @file
  What the host check has found, point by point.
**/

#pragma once

#include "app/base/Firmware.h"

namespace hostcheck {

/// From the best to the worst.
enum class Verdict : UINT8 {
  kGood,
  kWarning,   ///< The view does without, or looks other than intended.
  kLeftOut,   ///< Not looked at: something else must be right first.
  kMistake,   ///< The contract is broken.
  kBlocking,  ///< The same, and what builds on it is not looked at.
};

/// Findings of one point that are kept; the others are counted.
inline constexpr UINTN kMostFindings = 6;
inline constexpr UINTN kMostPoints = 20;
inline constexpr UINTN kFindingSize = 320;

struct Finding {
  Verdict Grade;
  CHAR8 Text[kFindingSize];  ///< What is wrong, and what to do.
};

struct PointReport {
  const CHAR8 *Name;
  Verdict Grade;  ///< The worst of its findings.
  UINTN Kept;
  UINTN Dropped;
  Finding Findings[kMostFindings];
};

struct Report {
  PointReport Points[kMostPoints];
  UINTN PointCount;
  UINTN Mistakes;
  UINTN Warnings;
};

/// Adds a point. What is found from now on belongs to it.
void BeginPoint(Report *report, const CHAR8 *name);

/// Findings in EDK2's print format: a sentence with the figures that says what is wrong, and one
/// that says what to do. EFIAPI because EDK2's print library takes that convention's arguments.
void EFIAPI Warn(Report *report, const CHAR8 *format, ...);
void EFIAPI Complain(Report *report, const CHAR8 *format, ...);
/// A mistake on which later points build.
void EFIAPI Block(Report *report, const CHAR8 *format, ...);
/// Something that cannot be looked at.
void EFIAPI LeaveOut(Report *report, const CHAR8 *format, ...);

/// Whether anything of the point in hand is of this grade or worse.
[[nodiscard]] bool IsAtLeast(const Report &report, Verdict grade);

}  // namespace hostcheck
