/** @file
  On ResourceStage: scaling of pictures for a view of 1920 x 1080.
**/

#pragma once

#include "test/firmware/Png.h"
#include "test/unit/stage/ResourceStage.h"

#include "app/base/Geometry.h"
#include "resources/BoardImage.h"

using Bytes = std::vector<uint8_t>;

class BoardImageStage : public ResourceStage {
 protected:
  BoardImageStage() {
    gGeometry.ViewWidth = 1920;
    gGeometry.ViewHeight = 1080;
  }

  struct Scaled {
    EFI_STATUS Status;
    Bytes Pixels;
    UINT8 HasAlpha;
  };
  static Scaled Scale(const Bytes &png, UINT32 width, UINT32 height) {
    VOID *buffer = nullptr;
    UINTN size = 0;
    Scaled result{0, {}, 9};
    result.Status =
        ScaleImage(png.data(), png.size(), width, height, &buffer, &size, &result.HasAlpha);
    if (!EFI_ERROR(result.Status)) {
      auto *bytes = static_cast<const uint8_t *>(buffer);
      result.Pixels.assign(bytes, bytes + size);
    }
    return result;
  }
};
