#include "resources/Resampler.h"

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

namespace {

constexpr UINTN kPixelBytes = 4;
constexpr UINTN kBlendedBytes = 4 * sizeof(UINT16);

/// A column's fraction depends on the low 8 bits of its number alone.
constexpr UINTN kBlockColumns = 256;

/// Up to this step it pays to blend whole rows; beyond it, only the pixels that
/// a column uses.
constexpr UINTN kWholeRowStep = 400;

/// The columns of a block: a block's last column lies less than one step per
/// column to the right of its first, and needs a right neighbour.
constexpr UINTN kBlendedPixels = kWholeRowStep + 2;

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
  /// The high bytes of the bottom row's lanes.
  __m128i BottomBias;
};

struct Picture {
  const UINT8 *Pixels;
  UINTN Width;
  UINTN Height;
};

/// Whether the pixels' bytes can be counted, and the sizes taken times 256.
bool IsCountable(UINTN width, UINTN height) {
  return width <= MAX_UINTN / 256 / height;
}

void PlanColumns(UINTN step, UINTN unit, ColumnPlan *plan) {
  for (UINTN column = 0; column < kBlockColumns; ++column) {
    UINTN position = column * step;
    INT16 fraction = static_cast<INT16>(position & 255);
    plan->Offsets[column] = (position >> 8) * unit;
    for (UINTN lane = 0; lane < 8; lane += 2) {
      plan->Weights[column][lane] = 256 - fraction;
      plan->Weights[column][lane + 1] = fraction;
    }
  }
}

RowPlan PlanRow(const Picture &source, UINTN position) {
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
  plan.BottomBias = _mm_set1_epi8(static_cast<INT8>(128 >> __builtin_ctz(fraction)));
  return plan;
}

__m128i LoadPixels4(const UINT8 *from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
}

__m128i Load8(const UINT8 *from) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i *>(from));
}

__m128i LoadPixel(const UINT8 *from) {
  INT32 pixel;
  __builtin_memcpy(&pixel, from, sizeof(pixel));
  return _mm_cvtsi32_si128(pixel);
}

/// Blends the low two pixels of two rows.
__m128i BlendLow(const RowPlan &row, __m128i top, __m128i bottom) {
  __m128i upper = _mm_unpacklo_epi8(top, _mm_setzero_si128());
  __m128i lower = _mm_unpacklo_epi8(bottom, row.BottomBias);
  return _mm_add_epi16(_mm_mullo_epi16(upper, row.TopWeight),
                       _mm_mullo_epi16(lower, row.BottomWeight));
}

/// Blends the high two pixels of two rows.
__m128i BlendHigh(const RowPlan &row, __m128i top, __m128i bottom) {
  __m128i upper = _mm_unpackhi_epi8(top, _mm_setzero_si128());
  __m128i lower = _mm_unpackhi_epi8(bottom, row.BottomBias);
  return _mm_add_epi16(_mm_mullo_epi16(upper, row.TopWeight),
                       _mm_mullo_epi16(lower, row.BottomWeight));
}

/// The pixels from the sums of four columns.
__m128i PackPixels(__m128i sum0, __m128i sum1, __m128i sum2, __m128i sum3) {
  __m128i low = _mm_packs_epi32(_mm_srai_epi32(sum0, 16), _mm_srai_epi32(sum1, 16));
  __m128i high = _mm_packs_epi32(_mm_srai_epi32(sum2, 16), _mm_srai_epi32(sum3, 16));
  return _mm_xor_si128(_mm_packs_epi16(low, high), _mm_set1_epi8(-128));
}

/// Fills a block of a target row; sumOf gives the sums of one of its columns.
template <typename SumOf>
void FillColumns(UINTN count, UINT8 *target, SumOf sumOf) {
  UINTN column = 0;
  for (; column + 4 <= count; column += 4) {
    __m128i pixels = PackPixels(sumOf(column), sumOf(column + 1), sumOf(column + 2),
                                sumOf(column + 3));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(target + column * kPixelBytes), pixels);
  }
  for (; column < count; ++column) {
    __m128i sum = sumOf(column);
    INT32 pixel = _mm_cvtsi128_si32(PackPixels(sum, sum, sum, sum));
    __builtin_memcpy(target + column * kPixelBytes, &pixel, sizeof(pixel));
  }
}

/// Blends count pixels of two rows.
void BlendRows(const RowPlan &row, UINTN offset, UINTN count, UINT8 *blended) {
  const UINT8 *top = row.Top + offset;
  const UINT8 *bottom = row.Bottom + offset;
  UINTN pixel = 0;
  for (; pixel + 4 <= count; pixel += 4) {
    __m128i upper = LoadPixels4(top + pixel * kPixelBytes);
    __m128i lower = LoadPixels4(bottom + pixel * kPixelBytes);
    __m128i *to = reinterpret_cast<__m128i *>(blended + pixel * kBlendedBytes);
    _mm_store_si128(to, BlendLow(row, upper, lower));
    _mm_store_si128(to + 1, BlendHigh(row, upper, lower));
  }
  for (; pixel < count; ++pixel) {
    __m128i upper = LoadPixel(top + pixel * kPixelBytes);
    __m128i lower = LoadPixel(bottom + pixel * kPixelBytes);
    _mm_storel_epi64(reinterpret_cast<__m128i *>(blended + pixel * kBlendedBytes),
                     BlendLow(row, upper, lower));
  }
}

/// Fills a block of a target row from whole blended rows. The block starts at
/// source pixel first; the row has width pixels.
void FillFromWholeRows(const ColumnPlan &plan, const RowPlan &row, UINTN first, UINTN width,
                       UINTN count, UINT8 *target) {
  alignas(16) UINT8 blended[kBlendedPixels * kBlendedBytes];
  UINTN lastOffset = plan.Offsets[count - 1] + kBlendedBytes;
  UINTN pixels = MIN(lastOffset / kBlendedBytes + 1, width - first);
  BlendRows(row, first * kPixelBytes, pixels, blended);
  if (pixels * kBlendedBytes == lastOffset) {
    __builtin_memcpy(blended + lastOffset, blended + lastOffset - kBlendedBytes, kBlendedBytes);
  }
  FillColumns(count, target, [&](UINTN column) {
    const UINT8 *left = blended + plan.Offsets[column];
    return _mm_madd_epi16(_mm_unpacklo_epi16(Load8(left), Load8(left + kBlendedBytes)),
                          *reinterpret_cast<const __m128i *>(plan.Weights[column]));
  });
}

/// Fills a block of a target row from just the pixels that it uses. The step
/// is above 256, so that every column has a right neighbour.
void FillFromNeighbours(const ColumnPlan &plan, const RowPlan &row, UINTN first, UINTN count,
                        UINT8 *target) {
  const UINT8 *top = row.Top + first * kPixelBytes;
  const UINT8 *bottom = row.Bottom + first * kPixelBytes;
  FillColumns(count, target, [&](UINTN column) {
    UINTN offset = plan.Offsets[column];
    __m128i blend = BlendLow(row, Load8(top + offset), Load8(bottom + offset));
    return _mm_madd_epi16(_mm_unpacklo_epi16(blend, _mm_unpackhi_epi64(blend, blend)),
                          *reinterpret_cast<const __m128i *>(plan.Weights[column]));
  });
}

void Resample(const Picture &source, UINT8 *target, UINTN targetWidth, UINTN targetHeight) {
  UINTN rowStep = source.Height * 256 / targetHeight;
  UINTN columnStep = source.Width * 256 / targetWidth;
  bool wholeRows = columnStep <= kWholeRowStep;
  ColumnPlan plan;
  PlanColumns(columnStep, wholeRows ? kBlendedBytes : kPixelBytes, &plan);
  for (UINTN row = 0; row < targetHeight; ++row) {
    RowPlan rowPlan = PlanRow(source, row * rowStep);
    UINTN first = 0;
    for (UINTN column = 0; column < targetWidth; column += kBlockColumns) {
      UINTN count = MIN(targetWidth - column, kBlockColumns);
      if (wholeRows) {
        FillFromWholeRows(plan, rowPlan, first, source.Width, count, target);
      } else {
        FillFromNeighbours(plan, rowPlan, first, count, target);
      }
      target += count * kPixelBytes;
      first += columnStep;
    }
  }
}

}  // namespace

EFI_STATUS ResampleBilinear(const UINT8 *source, UINTN sourceWidth, UINTN sourceHeight,
                            UINT8 *target, UINTN targetWidth, UINTN targetHeight) {
  if (source == nullptr || target == nullptr || sourceWidth == 0 || sourceHeight == 0 ||
      targetWidth == 0 || targetHeight == 0) {
    return EFI_INVALID_PARAMETER;
  }
  if (!IsCountable(sourceWidth, sourceHeight) || !IsCountable(targetWidth, targetHeight)) {
    return EFI_INVALID_PARAMETER;
  }
  if (sourceWidth == targetWidth && sourceHeight == targetHeight) {
    CopyMem(target, source, targetWidth * targetHeight * kPixelBytes);
    return EFI_SUCCESS;
  }
  Resample({source, sourceWidth, sourceHeight}, target, targetWidth, targetHeight);
  return EFI_SUCCESS;
}
