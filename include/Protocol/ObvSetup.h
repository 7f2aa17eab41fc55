/** @file
  The interface between the reference host and a setup that shows its options.

  The setup's driver publishes one OBV_SETUP_PROTOCOL and starts the board view
  from one of its pages. When the user chooses a component there, the host looks
  the component's token up in the installed formsets and hands the place over;
  the setup opens it as soon as the view has ended. Plain C.
**/

#ifndef BOARDSCOPE_OBV_SETUP_H_
#define BOARDSCOPE_OBV_SETUP_H_

#include <Uefi.h>

#include <Protocol/ObvLayout.h>

#define OBV_SETUP_PROTOCOL_GUID                                          \
  {                                                                      \
    0x2C9B6F14, 0x71A3, 0x4E0D,                                          \
    {                                                                    \
      0xB8, 0x52, 0x3F, 0x96, 0x0A, 0xD4, 0x17, 0xCE                     \
    }                                                                    \
  }

/// The reference setup's pages.
#define OBV_SETUP_FORMSET_GUID                                           \
  {                                                                      \
    0x94D0E3A7, 0x5B28, 0x4C61,                                          \
    {                                                                    \
      0x8F, 0x13, 0xE6, 0x70, 0x2B, 0x4A, 0x9D, 0x35                     \
    }                                                                    \
  }

/// Vendor of the variable that keeps the reference setup's values.
#define OBV_SETUP_VARIABLE_GUID                                          \
  {                                                                      \
    0x6E41B8C2, 0x0FD7, 0x4A95,                                          \
    {                                                                    \
      0xA7, 0x6C, 0x18, 0xD3, 0x5E, 0x82, 0xF0, 0x4B                     \
    }                                                                    \
  }

#define OBV_SETUP_VARIABLE_NAME  L"ObvSetup"

/// A larger variable is not the setup's.
#define OBV_SETUP_VARIABLE_LIMIT  512

/// Values of OBV_SETUP_LOOK.Contrast.
#define OBV_CONTRAST_STANDARD  0
#define OBV_CONTRAST_HIGH      1

/// Values of OBV_SETUP_LOOK.TextSize.
#define OBV_LETTERS_STANDARD  0
#define OBV_LETTERS_LARGE     1

/// How the variable begins. Whoever administers the operating system can write
/// it: check its size and every value.
typedef struct {
  UINT16    Layout;     ///< Names the values that follow; they are the setup's alone.
  UINT8     Contrast;   ///< OBV_CONTRAST_*.
  UINT8     TextSize;   ///< OBV_LETTERS_*.
} OBV_SETUP_LOOK;

/// A question in an installed formset.
typedef struct {
  EFI_GUID    FormSet;
  UINT16      FormId;
  UINT16      QuestionId;
} OBV_SETUP_OPTION;

typedef struct _OBV_SETUP_PROTOCOL OBV_SETUP_PROTOCOL;

/// Opens the option once the view, which the setup has started, has ended. The
/// option is copied; NULL says that no page has the option that the user chose.
/// EFI_NOT_READY when no page of the setup waits for the view.
typedef EFI_STATUS (EFIAPI *OBV_SETUP_OPEN_OPTION)(
  IN OBV_SETUP_PROTOCOL      *This,
  IN CONST OBV_SETUP_OPTION  *Option OPTIONAL
  );

struct _OBV_SETUP_PROTOCOL {
  OBV_SETUP_OPEN_OPTION    OpenOption;
  /// The setup's own pages: an option that is there and elsewhere is theirs.
  EFI_GUID                 FormSet;
};

OBV_ASSERT_OFFSET (OBV_SETUP_LOOK, Contrast, 2);
OBV_ASSERT_OFFSET (OBV_SETUP_LOOK, TextSize, 3);
OBV_ASSERT_SIZE (OBV_SETUP_LOOK, 4);
OBV_ASSERT_OFFSET (OBV_SETUP_PROTOCOL, FormSet, 8);

#endif
