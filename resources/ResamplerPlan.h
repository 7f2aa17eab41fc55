/** @file
  What the resampler works out before it touches a pixel: the weights of a block of columns, and of
  a pair of rows.
**/

#pragma once

#include "app/base/Types.h"

// <emmintrin.h> would bring in the hosted allocator for two functions that
// nobody calls here.
#define _MM_MALLOC_H_INCLUDED
#define __MM_MALLOC_H
#include <emmintrin.h>

// The result of a pixel is the sum of its four neighbours, each weighted by two
// of 256 - fx, fx, 256 - fy and fy, shifted right by 16. Nothing is cut off
// before that shift, so the rows may be blended before the columns without
// changing a bit, and that is the cheaper order: a blend of two rows takes 16
// bits, and 16-bit lanes are the widest that SSE2 multiplies well.
//
// The columns are blended by a multiply-add of signed lanes. The blended rows
// are therefore kept 32768 too low, which lowers a result by exactly 128.

namespace resampler {

inline constexpr UINTN kPixelBytes = 4;
inline constexpr UINTN kBlendedBytes = 4 * sizeof(UINT16);

/// A column's fraction depends on the low 8 bits of its number alone.
inline constexpr UINTN kBlockColumns = 256;

/// Up to this step it pays to blend whole rows; beyond it, only the pixels that
/// a column uses.
inline constexpr UINTN kWholeRowStep = 448;

struct ColumnPlan {
  /// 256 - fx and fx, for each of the four bytes of a pixel.
  alignas(16) INT16 Weights[kBlockColumns][8];
  /// From the block's first source pixel to the column's left neighbour, in bytes.
  UINTN Offsets[kBlockColumns];
};

struct RowPlan {
  const UINT8 *Top;
  const UINT8 *Bottom;
  __m128i TopWeight;
  __m128i BottomWeight;
  /// The high bytes of the lanes, where the rows' bytes are widened.
  __m128i TopBias;
  __m128i BottomBias;
};

struct Picture {
  const UINT8 *Pixels;
  UINTN Width;
  UINTN Height;
};

/// unit is the size of the pixels that the columns will be taken from.
inline void PlanColumns(UINTN step, UINTN unit, ColumnPlan *plan) {
  for (UINTN column = 0; column < kBlockColumns; ++column) {
    UINTN position = column * step;
    INT16 fraction = static_cast<INT16>(position & 255);
    plan->Offsets[column] = (position >> 8) * unit;
    for (UINTN lane = 0; lane < 8; lane += 2) {
      plan->Weights[column][lane] = static_cast<INT16>(256 - fraction);
      plan->Weights[column][lane + 1] = fraction;
    }
  }
}

inline RowPlan PlanRow(const Picture &source, UINTN position) {
  UINTN row = position >> 8;
  INT32 fraction = position & 255;
  RowPlan plan;
  plan.Top = source.Pixels + row * source.Width * kPixelBytes;
  plan.Bottom = plan.Top;
  if (fraction == 0) {
    // The top row alone is the same as half of it and half of it.
    fraction = 128;
  } else if (row < source.Height - 1) {
    plan.Bottom += source.Width * kPixelBytes;
  }
  plan.TopWeight = _mm_set1_epi16(static_cast<INT16>(256 - fraction));
  plan.BottomWeight = _mm_set1_epi16(static_cast<INT16>(fraction));
  // A high byte that the fraction multiplies to 128, modulo 256: this is where
  // the 32768 comes from, at no cost.
  plan.TopBias = _mm_setzero_si128();
  plan.BottomBias = _mm_set1_epi8(static_cast<INT8>(128 >> __builtin_ctz(fraction)));
  return plan;
}

/// Has the second row's top taken over as the first row's bottom was widened.
/// The difference of the two biases is what counts, as the weights add up to 256.
inline void ShareMiddleRow(RowPlan *rows) {
  rows[1].TopBias = rows[0].BottomBias;
  rows[1].BottomBias = _mm_add_epi8(rows[1].BottomBias, rows[0].BottomBias);
}

}  // namespace resampler
