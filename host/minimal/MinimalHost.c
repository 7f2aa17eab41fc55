/** @file
  The least that shows a view: one font, a picture, three components that never change. A real host
  asks its hardware in QueryComponentStatus and opens its setup in FindBiosOption.
**/

#include <Uefi.h>

#include <Library/BaseLib.h>
#include <Library/BaseMemoryLib.h>
#include <Library/DebugLib.h>
#include <Library/HiiLib.h>
#include <Library/UefiBootServicesTableLib.h>
#include <Protocol/ObvProtocol.h>

#define WHITE "255,255,255"
#define GREY "150,150,150"
#define DARK "60,60,60"
#define BLACK "0,0,0"
#define AMBER "255,219,75"

/// The message boxes ask for a font of this name.
#define FACE_NAME "DroidSans"

/// How long the processor's clock is watched to learn its speed.
#define CALIBRATION_MILLISECONDS 5
#define CALIBRATION_ROUNDS 5

// In MinimalFiles.nasm, which host/minimal/files.py writes.
extern UINT8 MinimalHostPictureStart[], MinimalHostPictureEnd[];
extern UINT8 MinimalHostFontStart[], MinimalHostFontEnd[];

/// In pixels of the picture. The line from the middle ends where the callout's left edge begins.
typedef struct {
  CONST CHAR16 *Name;
  UINT32 Type;
  UINT16 Left, Top, Right, Bottom;
  UINT16 CalloutX, CalloutY;
  CONST CHAR16 *Installed;  ///< NULL: nothing is plugged in.
} PART;

STATIC CONST PART mParts[] = {
    {L"CPU", OBV_TYPE_PROCESSOR, 320, 160, 480, 320, 410, 110, L"A processor"},
    {L"DIMM_1", OBV_TYPE_MEMORY, 540, 150, 570, 390, 640, 300, L"A memory module"},
    {L"SATA_1", OBV_TYPE_SATA, 760, 430, 820, 470, 800, 390, NULL},
};

/// Identifiers of the texts in MinimalHostStrings.uni, in the order in which they are numbered.
STATIC CONST EFI_STRING_ID mTexts[OBV_STRING_COUNT] = {
    STRING_TOKEN(STR_TITLE),      STRING_TOKEN(STR_KEYS),        STRING_TOKEN(STR_FOOTER),
    STRING_TOKEN(STR_CLOSE_HINT), STRING_TOKEN(STR_FILTER_HINT), STRING_TOKEN(STR_DRIVE_TITLE),
    STRING_TOKEN(STR_DRIVE_TEXT), STRING_TOKEN(STR_SAVED_TITLE), STRING_TOKEN(STR_SAVED_TEXT),
    STRING_TOKEN(STR_FAILURE),    STRING_TOKEN(STR_NO_DRIVE),    STRING_TOKEN(STR_PROTECTED),
    STRING_TOKEN(STR_NOT_SAVED),  STRING_TOKEN(STR_OK),          STRING_TOKEN(STR_CANCEL),
};

STATIC OBV_COMPONENT_STYLE mUsual = {WHITE, DARK, AMBER, GREY, 1, 3};
STATIC OBV_COMPONENT_STYLE mFocused = {BLACK, AMBER, BLACK, WHITE, 1, 3};

STATIC OBV_COMPONENT mComponents[ARRAY_SIZE(mParts)];
STATIC OBV_CONFIG mLook;
STATIC OBV_SHARED_STATE mShared = {.Config = &mLook, .ViewColorText = AMBER};
STATIC UINT64 mTicksPerMillisecond;

/// A wait can only come out too long, so the shortest of some is the truth.
STATIC VOID MeasureClock(VOID) {
  UINT64 Shortest = MAX_UINT64;

  for (UINTN Round = 0; Round < CALIBRATION_ROUNDS; Round++) {
    UINT64 Start = AsmReadTsc();

    gBS->Stall(CALIBRATION_MILLISECONDS * 1000);
    Shortest = MIN(Shortest, AsmReadTsc() - Start);
  }
  mTicksPerMillisecond = Shortest / CALIBRATION_MILLISECONDS + 1;
}

/// Asked at every turn of the main loop, so it must cost next to nothing.
STATIC UINT64 EFIAPI GetTime(OBV_PROTOCOL *This) { return AsmReadTsc() / mTicksPerMillisecond; }

/// The output of the console, in EDK2 the one that stands for all monitors. Under a UEFI Shell the
/// console is the shell's own and has none; then the first output that there is.
STATIC EFI_STATUS EFIAPI GetGop(OBV_PROTOCOL *This, EFI_GRAPHICS_OUTPUT_PROTOCOL **Gop) {
  EFI_STATUS Status =
      gBS->HandleProtocol(gST->ConsoleOutHandle, &gEfiGraphicsOutputProtocolGuid, (VOID **)Gop);

  return EFI_ERROR(Status)
             ? gBS->LocateProtocol(&gEfiGraphicsOutputProtocolGuid, NULL, (VOID **)Gop)
             : Status;
}

STATIC EFI_STATUS EFIAPI GetPicture(OBV_PROTOCOL *This, VOID **Data, UINTN *Size) {
  *Data = MinimalHostPictureStart;
  *Size = MinimalHostPictureEnd - MinimalHostPictureStart;
  return EFI_SUCCESS;
}

/// One font does for all three faces.
STATIC EFI_STATUS EFIAPI GetFont(OBV_PROTOCOL *This, UINT8 FontIndex, CHAR8 **Name, VOID **Data,
                                 UINTN *Size) {
  *Name = FACE_NAME;
  *Data = MinimalHostFontStart;
  *Size = MinimalHostFontEnd - MinimalHostFontStart;
  return EFI_SUCCESS;
}

/// From a pixel of the picture to one of the view. The picture is scaled with a truncated step, not
/// with the ratio of the sizes.
STATIC UINT16 ToView(UINT16 Pixel, UINT16 PictureSize, UINT32 ShownSize) {
  return (UINT16)(Pixel * 256U / (PictureSize * 256U / ShownSize));
}

STATIC VOID SetOutline(OBV_COMPONENT *Component, UINT16 Left, UINT16 Top, UINT16 Right,
                       UINT16 Bottom) {
  Component->HotspotVertexCount = 4;
  Component->HotspotVertices[0] = (OBV_VERTEX){Left, Top};
  Component->HotspotVertices[1] = (OBV_VERTEX){Right, Top};
  Component->HotspotVertices[2] = (OBV_VERTEX){Right, Bottom};
  Component->HotspotVertices[3] = (OBV_VERTEX){Left, Bottom};
}

/// From the component's middle, on which its dot stands, to the callout.
STATIC VOID SetLine(OBV_COMPONENT *Component, OBV_POINT Middle, OBV_POINT End) {
  Component->LeaderPointCount = 2;
  Component->LeaderPoints[0] = Middle;
  Component->LeaderPoints[1] = End;
  Component->CalloutSide = OBV_CALLOUT_LEFT;
  Component->MarkerX = Middle.X - OBV_DOT_SIZE / 2;
  Component->MarkerY = Middle.Y - OBV_DOT_SIZE / 2;
}

STATIC EFI_STATUS EFIAPI ParseComponents(OBV_PROTOCOL *This, OBV_COMPONENT **Components,
                                         UINT16 PictureHeight, UINT16 PictureWidth,
                                         UINT16 ViewHeight, UINT16 ViewWidth, double PictureShare,
                                         double ScaleX, double ScaleY) {
  // The picture stands at the left edge, half way up, and takes three quarters each way.
  UINT32 Width = ViewWidth * 3U / 4;
  UINT32 Height = ViewHeight * 3U / 4;
  UINT16 Start = ViewHeight / 8;

  // Takes back, too, what an earlier run wrote into the records.
  ZeroMem(mComponents, sizeof(mComponents));
  for (UINTN Index = 0; Index < ARRAY_SIZE(mParts); Index++) {
    CONST PART *Part = &mParts[Index];
    OBV_COMPONENT *Component = &mComponents[Index];
    UINT16 Left = ToView(Part->Left, PictureWidth, Width);
    UINT16 Right = ToView(Part->Right, PictureWidth, Width);
    UINT16 Top = Start + ToView(Part->Top, PictureHeight, Height);
    UINT16 Bottom = Start + ToView(Part->Bottom, PictureHeight, Height);
    OBV_POINT Middle = {(INT16)((Left + Right) / 2), (INT16)((Top + Bottom) / 2)};
    OBV_POINT End = {(INT16)ToView(Part->CalloutX, PictureWidth, Width),
                     (INT16)(Start + ToView(Part->CalloutY, PictureHeight, Height))};

    StrCpyS(Component->Name, OBV_NAME_LENGTH, Part->Name);
    Component->Type = Part->Type;
    Component->TextAlign = OBV_TEXT_CENTER;
    Component->DefaultStyle = &mUsual;
    Component->FocusStyle = &mFocused;
    SetOutline(Component, Left, Top, Right, Bottom);
    SetLine(Component, Middle, End);
  }
  mShared.ComponentCount = ARRAY_SIZE(mParts);
  *Components = mComponents;
  return EFI_SUCCESS;
}

STATIC EFI_STATUS EFIAPI FinishParse(OBV_PROTOCOL *This) { return EFI_SUCCESS; }

/// The entries beyond the count stay as they are: zero, as ParseComponents has left them.
STATIC EFI_STATUS EFIAPI QueryComponentStatus(OBV_PROTOCOL *This, CHAR16 *Name, UINT32 Type,
                                              UINTN Capacity, UINT64 *InfoCount,
                                              OBV_COMPONENT_INFO *Info) {
  *InfoCount = 0;
  for (UINTN Index = 0; Index < ARRAY_SIZE(mParts); Index++) {
    if (StrCmp(mParts[Index].Name, Name) == 0 && mParts[Index].Installed != NULL) {
      Info[0].Kind = OBV_INFO_DESCRIPTION;
      StrCpyS(Info[0].Label, OBV_INFO_LABEL_LENGTH, L"Installed");
      StrCpyS(Info[0].Value, OBV_INFO_VALUE_LENGTH, mParts[Index].Installed);
      *InfoCount = 1;
      return EFI_SUCCESS;
    }
  }
  return EFI_NOT_FOUND;
}

/// Goes where the platform's DebugLib writes to. A RELEASE build usually has none.
STATIC VOID EFIAPI Log(UINTN ErrorLevel, CONST CHAR8 *Format, ...) {
  VA_LIST Marker;

  VA_START(Marker, Format);
  DebugVPrint(ErrorLevel, Format, Marker);
  VA_END(Marker);
}

/// The slots that are left out may be NULL.
STATIC OBV_PROTOCOL mHost = {
    .GetTime = GetTime,
    .ParseComponents = ParseComponents,
    .FinishParse = FinishParse,
    .GetResourceData = GetPicture,
    .GetFontData = GetFont,
    .GetGop = GetGop,
    .QueryComponentStatus = QueryComponentStatus,
    .DebugPrint = Log,
    .SharedState = &mShared,
};

STATIC VOID SetColor(CHAR8 *Field, CONST CHAR8 *Color) {
  AsciiStrCpyS(Field, OBV_COLOR_TEXT_SIZE, Color);
}

STATIC VOID SetFont(OBV_FONT_CHOICE *Font, UINT8 Size) {
  AsciiStrCpyS(Font->Name, OBV_FONT_NAME_SIZE, FACE_NAME);
  Font->Size = Size;
}

STATIC VOID SetButton(OBV_FILTER_BUTTON_LOOK *Button, CONST CHAR8 *Text, CONST CHAR8 *Background) {
  SetColor(Button->TextColor, Text);
  SetColor(Button->BackgroundColor, Background);
  SetColor(Button->BorderColor, GREY);
  SetFont(&Button->Font, 15);
  Button->BorderWidth = 1;
  Button->CornerRadius = 4;
}

STATIC VOID SetPanel(OBV_PANEL_LOOK *Panel, CONST CHAR8 *Color, UINT8 Size) {
  SetColor(Panel->Color, Color);
  SetFont(&Panel->Font, Size);
}

STATIC VOID FillLook(VOID) {
  mLook.Logo = OBV_LOGO_NONE;
  SetColor(mLook.TitleColor, WHITE);
  SetColor(mLook.KeyHelpKeyColor, AMBER);
  SetColor(mLook.KeyHelpColor, WHITE);
  SetColor(mLook.FooterColor, GREY);
  SetColor(mLook.LeaderColor, GREY);
  SetColor(mLook.FocusLeaderColor, AMBER);
  SetColor(mLook.HotspotColor, AMBER);
  // Title, keys and footer have boxes of fixed height, which these sizes fit.
  SetFont(&mLook.TitleFont, 18);
  SetFont(&mLook.KeyHelpFont, 15);
  SetFont(&mLook.FooterFont, 13);
  SetFont(&mLook.CalloutFont, 14);
  SetFont(&mLook.CloseFocusFont, 14);
  SetButton(&mLook.Filter, WHITE, DARK);
  SetButton(&mLook.FocusFilter, BLACK, AMBER);
  SetPanel(&mLook.Heading, AMBER, 20);
  SetPanel(&mLook.InfoLabel, AMBER, 16);
  SetPanel(&mLook.InfoText, WHITE, 16);
  SetPanel(&mLook.SideLabel, AMBER, 15);
  SetPanel(&mLook.SideText, WHITE, 15);
}

/// EFI_ALREADY_STARTED beside another host: the application takes the first that it finds.
EFI_STATUS EFIAPI MinimalHostEntryPoint(EFI_HANDLE ImageHandle, EFI_SYSTEM_TABLE *SystemTable) {
  VOID *Other;
  EFI_HANDLE Handle = NULL;

  if (!EFI_ERROR(gBS->LocateProtocol(&gObvProtocolGuid, NULL, &Other))) {
    return EFI_ALREADY_STARTED;
  }
  // EDK2's build makes MinimalHostStrings of the .uni file: the module's BASE_NAME and "Strings".
  EFI_HII_HANDLE Texts =
      HiiAddPackages(&gObvStringPackageListGuid, ImageHandle, MinimalHostStrings, NULL);
  if (Texts == NULL) {
    return EFI_OUT_OF_RESOURCES;
  }
  CopyMem(mShared.StringIds, mTexts, sizeof(mTexts));
  MeasureClock();
  FillLook();
  EFI_STATUS Status =
      gBS->InstallProtocolInterface(&Handle, &gObvProtocolGuid, EFI_NATIVE_INTERFACE, &mHost);
  if (EFI_ERROR(Status)) {
    HiiRemovePackages(Texts);
  }
  return Status;
}
