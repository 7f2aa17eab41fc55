/** @file
  The interface between Boardscope and its host.

  The host is a driver that is resident in the firmware before Boardscope is
  started. It publishes one OBV_PROTOCOL; the protocol carries the functions
  that the application calls and a pointer to the OBV_SHARED_STATE record
  through which both sides exchange state.

  Both structures are fixed contracts between separately built images: slot
  order, argument order, offsets and widths are checked below and never change.
  All integers are little-endian. Plain C, so that any host can include it.
**/

#ifndef BOARDSCOPE_OBV_PROTOCOL_H_
#define BOARDSCOPE_OBV_PROTOCOL_H_

#include <Uefi.h>

#include <Protocol/GraphicsOutput.h>

#include <Protocol/ObvComponent.h>
#include <Protocol/ObvConfig.h>
#include <Protocol/ObvLayout.h>

#define OBV_PROTOCOL_GUID                                                \
  {                                                                      \
    0xFC5C2BFE, 0x9898, 0x4AC6,                                          \
    {                                                                    \
      0x8E, 0x5B, 0x6A, 0x18, 0x1C, 0x03, 0x5F, 0x3F                     \
    }                                                                    \
  }

/// HII package list that holds the texts named by OBV_SHARED_STATE.StringIds.
#define OBV_STRING_PACKAGE_LIST_GUID                                     \
  {                                                                      \
    0xB1DA0ADF, 0x4F77, 0x4070,                                          \
    {                                                                    \
      0xA8, 0x8E, 0xBF, 0xFE, 0x1C, 0x60, 0x52, 0x9A                     \
    }                                                                    \
  }

/// The two levels of DebugPrint that the application uses.
#define OBV_LOG_INFO   0x00000040U
#define OBV_LOG_ERROR  0x80000000U

#define OBV_SYSTEM_INFO_COUNT        7
#define OBV_SYSTEM_INFO_TEXT_LENGTH  128
#define OBV_STRING_COUNT             15

/// Largest width and height of the board picture.
#define OBV_MAX_PICTURE_SIZE  4095

/// A host must not describe more: FocusIndex encodes callouts as 1 to 99.
#define OBV_MAX_COMPONENTS  99

/// Values of OBV_SHARED_STATE.RecolorMode; any other value recolours nothing.
#define OBV_RECOLOR_ALL_CHANNELS_INSIDE  1
#define OBV_RECOLOR_ANY_CHANNEL_INSIDE   2

/// The record that host and application share for the whole run. The host
/// allocates it, fills it before the application starts and reads it after the
/// application ended.
typedef struct {
  /// 1 when the user chose a component to jump to. The host sees it in
  /// FindBiosOption and, unless that failed, in AfterAppLife; the application
  /// clears it after a failed search, and always once AfterAppLife has returned.
  UINT8                            JumpRequested;
  /// 1 after the application stored FocusIndex, SelectedCategory and Pointer*.
  UINT8                            UiStateSaved;
  /// Host setting: non-zero puts the saved setup screen back on every output.
  UINT8                            RestoreAllOutputsA;
  /// Host setting: 0 refreshes component status every 2 s, otherwise 10 s.
  UINT8                            SlowRefresh;
  UINT8                            Reserved4;
  /// Host setting, as RestoreAllOutputsA; either one suffices.
  UINT8                            RestoreAllOutputsB;
  /// Host setting: non-zero recolours the board picture at 1024 x 768.
  UINT8                            RecolorEnabled;
  /// OBV_RECOLOR_*.
  UINT8                            RecolorMode;
  /// Index of the chosen component, valid with JumpRequested.
  UINT16                           JumpComponentIndex;
  /// Focus at the end: 0 none, 1 to 99 component index + 1, 101 to 106 filter
  /// button + 101.
  UINT16                           FocusIndex;
  UINT16                           Reserved12;
  /// Number of component records; written by the host in ParseComponents.
  UINT16                           ComponentCount;
  /// Category filter at the end, one of 0, 1, 2, 3, 4, 8. No other value is
  /// restored.
  UINT32                           SelectedCategory;
  /// SearchTokenId of the chosen component, valid with JumpRequested.
  UINT16                           JumpSearchTokenId;
  UINT8                            Reserved22[2];
  /// Type of the chosen component, valid with JumpRequested.
  UINT32                           JumpComponentType;
  /// Pointer at the end, in pixels of the setup screen's mode.
  UINT16                           PointerX;
  UINT16                           PointerY;
  /// Output to draw on; NULL lets the application ask GetGop.
  EFI_GRAPHICS_OUTPUT_PROTOCOL     *Gop;
  /// Colour text of the close button's keyboard-focus background.
  CONST CHAR8                      *ViewColorText;
  /// Set by the application when SystemInfo[2] is not empty: an ASCII copy
  /// of at most 49 characters, owned by the application, valid while it runs.
  /// The text is a print format without arguments: "%%" gives one percent sign.
  CHAR8                            *InfoBuffer;
  /// Look of the view.
  OBV_CONFIG                       *Config;
  /// Exclusive bounds of the recoloured band, and its replacement.
  CHAR8                            RecolorLowText[OBV_COLOR_TEXT_SIZE];
  CHAR8                            RecolorHighText[OBV_COLOR_TEXT_SIZE];
  CHAR8                            RecolorNewText[OBV_COLOR_TEXT_SIZE];
  /// Texts of the system summary, NUL-terminated.
  CHAR16                           SystemInfo[OBV_SYSTEM_INFO_COUNT][OBV_SYSTEM_INFO_TEXT_LENGTH];
  /// HII string identifiers of the localized texts.
  UINT16                           StringIds[OBV_STRING_COUNT];
} OBV_SHARED_STATE;

typedef struct _OBV_PROTOCOL OBV_PROTOCOL;

/// Milliseconds of a free-running clock.
typedef UINT64 (EFIAPI *OBV_GET_TIME)(IN OBV_PROTOCOL *This);

/// Builds the component array for the given geometry and sets
/// OBV_SHARED_STATE.ComponentCount. The array stays the host's.
/// PictureShare is the part of the view that the board picture covers in each
/// direction (0.75).
typedef EFI_STATUS (EFIAPI *OBV_PARSE_COMPONENTS)(
  IN  OBV_PROTOCOL   *This,
  OUT OBV_COMPONENT  **Components,
  IN  UINT16         PictureHeight,
  IN  UINT16         PictureWidth,
  IN  UINT16         ViewHeight,
  IN  UINT16         ViewWidth,
  IN  double         PictureShare,
  IN  double         ScaleX,
  IN  double         ScaleY
  );

/// Called once after the first status query of every component.
typedef EFI_STATUS (EFIAPI *OBV_FINISH_PARSE)(IN OBV_PROTOCOL *This);

/// The board picture: a PNG file in memory, owned by the host. Its samples are
/// stored blue, green, red, alpha, the order of the frame buffer.
typedef EFI_STATUS (EFIAPI *OBV_GET_RESOURCE_DATA)(
  IN  OBV_PROTOCOL  *This,
  OUT VOID          **Data,
  OUT UINTN         *Size
  );

/// Font file FontIndex (0 to 2) in memory and its ASCII face name, both owned
/// by the host. Called once for every size.
typedef EFI_STATUS (EFIAPI *OBV_GET_FONT_DATA)(
  IN  OBV_PROTOCOL  *This,
  IN  UINT8         FontIndex,
  OUT CHAR8         **Name,
  OUT VOID          **Data,
  OUT UINTN         *Size
  );

/// The output to draw on, asked for when OBV_SHARED_STATE.Gop is NULL.
typedef EFI_STATUS (EFIAPI *OBV_GET_GOP)(
  IN  OBV_PROTOCOL                  *This,
  OUT EFI_GRAPHICS_OUTPUT_PROTOCOL  **Gop
  );

/// State and information lines of one component. Fills at most Capacity
/// entries of Info and leaves the entries beyond *InfoCount zeroed.
/// EFI_SUCCESS: present and working. EFI_DEVICE_ERROR: present and failing.
/// EFI_NOT_READY: not usable yet. EFI_NO_MAPPING: not usable with the installed
/// processor. Any other status: not present.
typedef EFI_STATUS (EFIAPI *OBV_QUERY_COMPONENT_STATUS)(
  IN  OBV_PROTOCOL        *This,
  IN  CHAR16              *Name,
  IN  UINT32              Type,
  IN  UINTN               Capacity,
  OUT UINT64              *InfoCount,
  OUT OBV_COMPONENT_INFO  *Info
  );

/// Log in an EDK2 print format at an EDK2 debug error level. Takes no This.
typedef VOID (EFIAPI *OBV_DEBUG_PRINT)(IN UINTN ErrorLevel, IN CONST CHAR8 *Format, ...);

/// Finds the setup option that OBV_SHARED_STATE.Jump* names. May be NULL.
typedef EFI_STATUS (EFIAPI *OBV_FIND_BIOS_OPTION)(IN OBV_PROTOCOL *This);

/// End-of-life hooks; the results are ignored. Either may be NULL.
typedef EFI_STATUS (EFIAPI *OBV_END_OF_LIFE_HOOK)(IN OBV_PROTOCOL *This);

/// A slot that the application never calls. May be NULL.
typedef VOID *OBV_UNUSED_SLOT;

struct _OBV_PROTOCOL {
  OBV_GET_TIME                  GetTime;
  OBV_PARSE_COMPONENTS          ParseComponents;
  OBV_FINISH_PARSE              FinishParse;
  OBV_GET_RESOURCE_DATA         GetResourceData;
  OBV_GET_FONT_DATA             GetFontData;
  OBV_GET_GOP                   GetGop;
  OBV_UNUSED_SLOT               Unused6;
  OBV_QUERY_COMPONENT_STATUS    QueryComponentStatus;
  OBV_UNUSED_SLOT               Unused8;
  OBV_DEBUG_PRINT               DebugPrint;             ///< May be NULL.
  OBV_UNUSED_SLOT               Unused10;
  OBV_UNUSED_SLOT               Unused11;
  OBV_FIND_BIOS_OPTION          FindBiosOption;
  OBV_END_OF_LIFE_HOOK          AfterAppLife;
  OBV_END_OF_LIFE_HOOK          UnsupportedResolution;
  OBV_SHARED_STATE              *SharedState;
};

STATIC_ASSERT (sizeof (VOID *) == 8, "The interface is defined for 64-bit firmware");

OBV_ASSERT_OFFSET (OBV_PROTOCOL, GetTime, 0x00);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, ParseComponents, 0x08);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, FinishParse, 0x10);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, GetResourceData, 0x18);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, GetFontData, 0x20);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, GetGop, 0x28);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, Unused6, 0x30);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, QueryComponentStatus, 0x38);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, Unused8, 0x40);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, DebugPrint, 0x48);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, Unused10, 0x50);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, Unused11, 0x58);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, FindBiosOption, 0x60);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, AfterAppLife, 0x68);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, UnsupportedResolution, 0x70);
OBV_ASSERT_OFFSET (OBV_PROTOCOL, SharedState, 0x78);
OBV_ASSERT_SIZE (OBV_PROTOCOL, 16 * 8);

OBV_ASSERT_OFFSET (OBV_SHARED_STATE, JumpRequested, 0);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, UiStateSaved, 1);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RestoreAllOutputsA, 2);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, SlowRefresh, 3);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RestoreAllOutputsB, 5);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RecolorEnabled, 6);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RecolorMode, 7);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, JumpComponentIndex, 8);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, FocusIndex, 10);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, ComponentCount, 14);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, SelectedCategory, 16);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, JumpSearchTokenId, 20);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, JumpComponentType, 24);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, PointerX, 28);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, PointerY, 30);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, Gop, 32);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, ViewColorText, 40);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, InfoBuffer, 48);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, Config, 56);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RecolorLowText, 64);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RecolorHighText, 84);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, RecolorNewText, 104);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, SystemInfo, 124);
OBV_ASSERT_OFFSET (OBV_SHARED_STATE, StringIds, 1916);

#endif
