// Pictures that are none, cut, empty, or not what they claim.

#include "test/unit/hostcheck/HostCheckStage.h"

#include "test/firmware/Png.h"

namespace hostcheck {
namespace {

class PictureCheck : public HostCheckStage {
 protected:
  void HandOver(const VOID *data, UINTN size) {
    Host.OnGetResourceData = [data, size](VOID **out, UINTN *outSize) -> EFI_STATUS {
      *out = const_cast<VOID *>(data);
      *outSize = size;
      return EFI_SUCCESS;
    };
  }
};

TEST_F(PictureCheck, PictureThatIsNoneIsNamed) {
  Host.Picture.assign(1000, 0x55);
  ExpectTheMistake("picture: the picture's 1000 bytes are no PNG file.");
  EXPECT_EQ(GradeOf("components"), Verdict::kLeftOut);
}

TEST_F(PictureCheck, PictureThatIsCutIsNamed) {
  Host.Picture.resize(Host.Picture.size() / 2);
  ExpectTheMistake("picture: the picture's header says 192 x 108 pixels, but its ");
  EXPECT_EQ(GradeOf("components"), Verdict::kGood);
}

TEST_F(PictureCheck, PictureThatIsEmptyIsNamed) {
  HandOver(nullptr, 0);
  ExpectTheMistake("picture: GetResourceData answers Success with 0 bytes at 0");
}

TEST_F(PictureCheck, PictureShorterThanItsHeaderIsNamed) {
  HandOver(Host.Picture.data(), 23);
  ExpectTheMistake("picture: GetResourceData answers Success with 23 bytes at ");
}

TEST_F(PictureCheck, SizeBeyondThePicturesMemoryIsNamed) {
  std::vector<uint8_t> whole = Host.Picture;
  HandOver(whole.data(), whole.size() + 1);
  ExpectTheMistake("picture: GetResourceData answers " + std::to_string(whole.size() + 1) +
                   " bytes at ");
}

TEST_F(PictureCheck, PictureWithADamagedPixelIsNamed) {
  Host.Picture[Host.Picture.size() / 2] ^= 0x10;
  ExpectTheMistake("picture: the picture's header says 192 x 108 pixels, but its ");
}

// As of a file whose header was changed: its checksum no longer holds.
TEST_F(PictureCheck, PictureThatClaimsAnotherSizeIsNamed) {
  Host.Picture[19] = 200;
  ExpectTheMistake("picture: the picture's header says 200 x 108 pixels, but its ");
}

TEST_F(PictureCheck, PictureBeyondTheLimitIsNamed) {
  Host.Picture[18] = 0x10;
  Host.Picture[19] = 0;
  ExpectTheMistake("picture: the picture has 4096 x 108 pixels. Make it 1 to 4095");
}

TEST_F(PictureCheck, PictureWithoutAColumnIsNamed) {
  Host.Picture[19] = 0;
  ExpectTheMistake("picture: the picture has 0 x 108 pixels. Make it 1 to 4095");
}

TEST_F(PictureCheck, PictureWithoutARowIsNamed) {
  Host.Picture[23] = 0;
  ExpectTheMistake("picture: the picture has 192 x 0 pixels. Make it 1 to 4095");
}

TEST_F(PictureCheck, PictureThatIsTooHighIsNamed) {
  Host.Picture[22] = 0x10;
  ExpectTheMistake("picture: the picture has 192 x 4204 pixels. Make it 1 to 4095");
}

TEST_F(PictureCheck, HostWithoutAPictureIsNamed) {
  Host.OnGetResourceData = [](VOID **, UINTN *) -> EFI_STATUS { return EFI_NOT_FOUND; };
  ExpectTheMistake("picture: GetResourceData answers Not Found.");
}

}  // namespace
}  // namespace hostcheck
