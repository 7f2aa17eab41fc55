#include "resources/Resampler.h"

#include "app/base/Firmware.h"
#include "resources/ResamplerPlan.h"

using namespace resampler;

namespace {

constexpr UINTN kCacheLine = 64;

/// A block spans less than one step per column, its last column needs a right
/// neighbour, and four pixels are blended at a time.
constexpr UINTN kBlendedPixels = kWholeRowStep + 4;

struct BlendedRows {
  alignas(16) UINT8 Pixels[2][kBlendedPixels * kBlendedBytes];
};

/// Four pixels, 16 bits for each byte.
struct WidePixels {
  __m128i Low;
  __m128i High;
};

/// Whether the pixels' bytes can be counted, and the sizes taken times 256.
bool IsCountable(UINTN width, UINTN height) { return width <= MAX_UINTN / 256 / height; }

__m128i LoadFour(const UINT8 *from) {
  return _mm_loadu_si128(reinterpret_cast<const __m128i *>(from));
}

/// Four pixels of a row, with the row's last one for those beyond it.
__m128i LoadLast(const UINT8 *row, UINTN pixel, UINTN width) {
  INT32 pixels[4];
  for (UINTN i = 0; i < 4; ++i) {
    __builtin_memcpy(&pixels[i], row + MIN(pixel + i, width - 1) * kPixelBytes, kPixelBytes);
  }
  return _mm_setr_epi32(pixels[0], pixels[1], pixels[2], pixels[3]);
}

__m128i LoadHalf(const UINT8 *from) {
  return _mm_loadl_epi64(reinterpret_cast<const __m128i *>(from));
}

WidePixels Widen(__m128i pixels, __m128i bias) {
  return {_mm_unpacklo_epi8(pixels, bias), _mm_unpackhi_epi8(pixels, bias)};
}

__m128i Blend(const RowPlan &row, __m128i top, __m128i bottom) {
  return _mm_add_epi16(_mm_mullo_epi16(top, row.TopWeight),
                       _mm_mullo_epi16(bottom, row.BottomWeight));
}

void StoreBlend(const RowPlan &row, const WidePixels &top, const WidePixels &bottom, UINT8 *to) {
  __m128i *blended = reinterpret_cast<__m128i *>(to);
  _mm_store_si128(blended, Blend(row, top.Low, bottom.Low));
  _mm_store_si128(blended + 1, Blend(row, top.High, bottom.High));
}

/// Blends four pixels for one target row, or for two that share a source row.
template <bool kTwo, typename Load>
void BlendFour(const RowPlan *rows, UINTN to, BlendedRows *blended, Load load) {
  WidePixels top = Widen(load(rows[0].Top), rows[0].TopBias);
  WidePixels middle = Widen(load(rows[0].Bottom), rows[0].BottomBias);
  StoreBlend(rows[0], top, middle, blended->Pixels[0] + to);
  if constexpr (kTwo) {
    WidePixels bottom = Widen(load(rows[1].Bottom), rows[1].BottomBias);
    StoreBlend(rows[1], middle, bottom, blended->Pixels[1] + to);
  }
}

/// Blends count pixels from the given one on. The row's last pixel is repeated.
template <bool kTwo>
void BlendRows(const RowPlan *plans, UINTN first, UINTN count, UINTN width, BlendedRows *blended) {
  // Copies, which no store can change.
  const RowPlan rows[2] = {plans[0], plans[1]};
  UINTN inside = MIN(count, (width - first) / 4 * 4);
  UINTN pixel = 0;
  for (; pixel < inside; pixel += 4) {
    BlendFour<kTwo>(
        rows, pixel * kBlendedBytes, blended,
        [from = (first + pixel) * kPixelBytes](const UINT8 *row) { return LoadFour(row + from); });
  }
  for (; pixel < count; pixel += 4) {
    BlendFour<kTwo>(rows, pixel * kBlendedBytes, blended,
                    [=](const UINT8 *row) { return LoadLast(row, first + pixel, width); });
  }
}

/// Blends two pixels that lie side by side. The result, once shifted right by
/// 16, is 128 too low.
__m128i BlendColumns(__m128i pixels, const INT16 *weights) {
  __m128i pairs = _mm_unpacklo_epi16(pixels, _mm_shuffle_epi32(pixels, 0xEE));
  return _mm_madd_epi16(pairs, *reinterpret_cast<const __m128i *>(weights));
}

/// The pixels from the sums of four columns. Packed as if they were twice as
/// many numbers of 16 bits, the sums leave their result in every other byte.
__m128i PackPixels(__m128i sum0, __m128i sum1, __m128i sum2, __m128i sum3) {
  __m128i low = _mm_srli_epi16(_mm_packs_epi16(sum0, sum1), 8);
  __m128i high = _mm_srli_epi16(_mm_packs_epi16(sum2, sum3), 8);
  return _mm_xor_si128(_mm_packus_epi16(low, high), _mm_set1_epi8(-128));
}

/// Fills a part of a target row; sumOf blends the four neighbours of a column.
template <typename SumOf>
void FillColumns(UINTN count, UINT8 *target, SumOf sumOf) {
  UINTN column = 0;
#pragma GCC unroll 4
  for (; column + 4 <= count; column += 4) {
    __m128i pixels =
        PackPixels(sumOf(column), sumOf(column + 1), sumOf(column + 2), sumOf(column + 3));
    _mm_storeu_si128(reinterpret_cast<__m128i *>(target + column * kPixelBytes), pixels);
  }
  for (; column < count; ++column) {
    __m128i sum = sumOf(column);
    INT32 pixel = _mm_cvtsi128_si32(PackPixels(sum, sum, sum, sum));
    __builtin_memcpy(target + column * kPixelBytes, &pixel, kPixelBytes);
  }
}

void FillFromBlendedRow(const ColumnPlan &plan, const UINT8 *blended, UINTN count, UINT8 *target) {
  FillColumns(count, target, [&](UINTN column) {
    const UINT8 *left = blended + plan.Offsets[column];
    __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i *>(left));
    return BlendColumns(pixels, plan.Weights[column]);
  });
}

/// Fills a part of a target row, blending just the pixels that it uses. The
/// step is above 256, so that every column has a right neighbour.
void FillFromNeighbours(const ColumnPlan &plan, const RowPlan &row, UINTN first, UINTN count,
                        UINT8 *target) {
  const UINT8 *top = row.Top + first * kPixelBytes;
  const UINT8 *bottom = row.Bottom + first * kPixelBytes;
  FillColumns(count, target, [&](UINTN column) {
    UINTN offset = plan.Offsets[column];
    __m128i upper = _mm_unpacklo_epi8(LoadHalf(top + offset), row.TopBias);
    __m128i lower = _mm_unpacklo_epi8(LoadHalf(bottom + offset), row.BottomBias);
    return BlendColumns(Blend(row, upper, lower), plan.Weights[column]);
  });
}

/// Asks for bytes before they are used. They may lie outside of any buffer.
void Prefetch(const UINT8 *from, UINTN distance, UINTN bytes) {
  UINTN address = reinterpret_cast<UINTN>(from) + distance;
  for (UINTN i = 0; i < bytes; i += kCacheLine) {
    _mm_prefetch(reinterpret_cast<const char *>(address + i), _MM_HINT_T0);
  }
}

/// Fills one target row, or two that share a source row.
void FillRows(const ColumnPlan &plan, const RowPlan *rows, bool two, UINTN step, UINTN width,
              UINT8 *target, UINTN targetWidth) {
  BlendedRows blended;
  UINTN first = 0;
  for (UINTN column = 0; column < targetWidth; column += kBlockColumns, first += step) {
    UINTN count = MIN(targetWidth - column, kBlockColumns);
    UINTN used = plan.Offsets[count - 1] / kBlendedBytes + 2;
    UINT8 *to = target + column * kPixelBytes;
    // The processor does not see rows coming that are visited block by block.
    for (UINTN row = 0; row < (two ? 2 : 1); ++row) {
      Prefetch(to, row * targetWidth * kPixelBytes, count * kPixelBytes);
      Prefetch(rows[two].Bottom, (first + (row + 1) * width) * kPixelBytes, used * kPixelBytes);
    }
    (two ? BlendRows<true> : BlendRows<false>)(rows, first, used, width, &blended);
    FillFromBlendedRow(plan, blended.Pixels[0], count, to);
    if (two) {
      FillFromBlendedRow(plan, blended.Pixels[1], count, to + targetWidth * kPixelBytes);
    }
  }
}

void ResampleWholeRows(const Picture &source, UINTN columnStep, UINTN rowStep, UINT8 *target,
                       UINTN targetWidth, UINTN targetHeight) {
  ColumnPlan plan;
  PlanColumns(columnStep, kBlendedBytes, &plan);
  for (UINTN row = 0; row < targetHeight;) {
    RowPlan rows[2] = {PlanRow(source, row * rowStep)};
    bool two = false;
    if (row + 1 < targetHeight) {
      rows[1] = PlanRow(source, (row + 1) * rowStep);
      two = rows[1].Top == rows[0].Bottom;
      ShareMiddleRow(rows);
    }
    UINT8 *to = target + row * targetWidth * kPixelBytes;
    FillRows(plan, rows, two, columnStep, source.Width, to, targetWidth);
    row += two ? 2 : 1;
  }
}

void ResampleNeighbours(const Picture &source, UINTN columnStep, UINTN rowStep, UINT8 *target,
                        UINTN targetWidth, UINTN targetHeight) {
  ColumnPlan plan;
  PlanColumns(columnStep, kPixelBytes, &plan);
  for (UINTN row = 0; row < targetHeight; ++row) {
    RowPlan rowPlan = PlanRow(source, row * rowStep);
    UINTN first = 0;
    for (UINTN column = 0; column < targetWidth; column += kBlockColumns, first += columnStep) {
      UINTN count = MIN(targetWidth - column, kBlockColumns);
      FillFromNeighbours(plan, rowPlan, first, count, target);
      target += count * kPixelBytes;
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
  UINTN rowStep = sourceHeight * 256 / targetHeight;
  UINTN columnStep = sourceWidth * 256 / targetWidth;
  bool wholeRows = columnStep <= kWholeRowStep;
  (wholeRows ? ResampleWholeRows : ResampleNeighbours)(
      {source, sourceWidth, sourceHeight}, columnStep, rowStep, target, targetWidth, targetHeight);
  return EFI_SUCCESS;
}
