/** @file
  The firmware setup's event handler, from which Boardscope reads the selection
  of an earlier visit.

  The table is byte-packed and its two functions are deliberately not aligned;
  only they are used. Plain C.
**/

#ifndef BOARDSCOPE_VELT_SETUP_EVENT_HANDLER_H_
#define BOARDSCOPE_VELT_SETUP_EVENT_HANDLER_H_

#include <Uefi.h>

#include <Protocol/ObvLayout.h>

#define VELT_SETUP_EVENT_HANDLER_PROTOCOL_GUID                           \
  {                                                                      \
    0x68293EF9, 0x8EDE, 0x4B8C,                                          \
    {                                                                    \
      0xB4, 0x29, 0x86, 0x35, 0xA1, 0x9D, 0x24, 0x6D                     \
    }                                                                    \
  }

extern EFI_GUID  gVeltSetupEventHandlerProtocolGuid;

#define VELT_EVENT_KEY_SIZE   24
#define VELT_EVENT_DATA_SIZE  104

/// Key, type and size of the saved selection.
#define VELT_SELECTION_KEY        "Cairnledger"
#define VELT_SELECTION_TYPE       7
#define VELT_SELECTION_DATA_SIZE  42

/// Characters of the component's name in a selection; a shorter name is
/// NUL-terminated.
#define VELT_SELECTION_NAME_LENGTH  20

/// Reads the event stored under Key (NUL-padded). Reserved is all zero. Data
/// has room for VELT_EVENT_DATA_SIZE bytes.
typedef EFI_STATUS (EFIAPI *VELT_GET_EVENT_DATA)(
  IN     CHAR8   Key[VELT_EVENT_KEY_SIZE],
  IN     UINT8   Reserved[VELT_EVENT_KEY_SIZE],
  IN OUT UINT32  *Type,
  IN OUT UINT32  *DataSize,
  OUT    VOID    *Data
  );

/// Called once after every successful VELT_GET_EVENT_DATA.
typedef EFI_STATUS (EFIAPI *VELT_END_EVENT_DATA)(VOID);

#pragma pack(1)
typedef struct {
  UINT8                  Reserved0[52];
  VELT_GET_EVENT_DATA    GetEventData;
  VELT_END_EVENT_DATA    EndEventData;
} VELT_SETUP_EVENT_HANDLER_PROTOCOL;

/// The saved selection.
typedef struct {
  UINT16    Category;                                    ///< Category to show; 0 for all.
  CHAR16    ComponentName[VELT_SELECTION_NAME_LENGTH];   ///< Component to focus; empty for none.
} VELT_SELECTION;
#pragma pack()

OBV_ASSERT_OFFSET (VELT_SETUP_EVENT_HANDLER_PROTOCOL, GetEventData, 52);
OBV_ASSERT_OFFSET (VELT_SETUP_EVENT_HANDLER_PROTOCOL, EndEventData, 60);
OBV_ASSERT_SIZE (VELT_SELECTION, VELT_SELECTION_DATA_SIZE);

#endif
