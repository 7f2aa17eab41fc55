/** @file
  Component records that a host hands to Boardscope in ParseComponents.

  The host owns the array; the application writes the status flags, the
  information table (through QueryComponentStatus) and the placed callout
  rectangle. Offsets and widths are part of the contract. Plain C.
**/

#ifndef BOARDSCOPE_OBV_COMPONENT_H_
#define BOARDSCOPE_OBV_COMPONENT_H_

#include <Uefi.h>

#include <Protocol/ObvLayout.h>

#define OBV_INFO_CAPACITY          20
#define OBV_INFO_LABEL_LENGTH      32
#define OBV_INFO_VALUE_LENGTH      256
#define OBV_NAME_LENGTH            60
#define OBV_VERTEX_CAPACITY        40
#define OBV_LEADER_POINT_CAPACITY  20

/// Values of OBV_COMPONENT_INFO.Kind; lines of other kinds are never shown.
#define OBV_INFO_DESCRIPTION  0
#define OBV_INFO_SIDE_LIST    1

/// Values of OBV_COMPONENT.Type.
#define OBV_TYPE_UNCATEGORISED  0
#define OBV_TYPE_USB            1
#define OBV_TYPE_SATA           2
#define OBV_TYPE_M2             3
#define OBV_TYPE_PCIE           4
#define OBV_TYPE_REAR           5
#define OBV_TYPE_PROCESSOR      6
#define OBV_TYPE_MEMORY         7
#define OBV_TYPE_FAN            8
#define OBV_TYPE_AUDIO          9

/// Values of OBV_COMPONENT.CalloutSide: where the leader line's end touches the
/// callout. Any other value keeps the callout where the record puts it.
#define OBV_CALLOUT_KEEP          0
#define OBV_CALLOUT_RIGHT         1
#define OBV_CALLOUT_BOTTOM_RIGHT  2
#define OBV_CALLOUT_BOTTOM        3
#define OBV_CALLOUT_BOTTOM_LEFT   4
#define OBV_CALLOUT_LEFT          5
#define OBV_CALLOUT_TOP_LEFT      6
#define OBV_CALLOUT_TOP           7
#define OBV_CALLOUT_TOP_RIGHT     8

/// Values of OBV_COMPONENT.TextAlign.
#define OBV_TEXT_LEFT    0
#define OBV_TEXT_CENTER  1
#define OBV_TEXT_RIGHT   2

/// Width and height of a status dot's picture. The view zooms it by ScaleX about
/// its middle, so that its centre stays where it is at every scale.
#define OBV_DOT_SIZE  11

/// Look of a callout in one state.
typedef struct {
  CHAR8    TextColor[OBV_COLOR_TEXT_SIZE];
  CHAR8    BackgroundColor[OBV_COLOR_TEXT_SIZE];
  CHAR8    MarkColor[OBV_COLOR_TEXT_SIZE];         ///< Colour of the " *" and " **" marks.
  CHAR8    BorderColor[OBV_COLOR_TEXT_SIZE];
  UINT8    BorderWidth;                            ///< Pixels; 0 for no border.
  UINT8    CornerRadius;                           ///< Pixels.
} OBV_COMPONENT_STYLE;

/// One information line.
typedef struct {
  UINT32    Kind;                           ///< OBV_INFO_*.
  CHAR16    Label[OBV_INFO_LABEL_LENGTH];   ///< NUL-terminated, may be empty.
  CHAR16    Value[OBV_INFO_VALUE_LENGTH];   ///< NUL-terminated.
} OBV_COMPONENT_INFO;

/// Outline vertex in view pixels.
typedef struct {
  UINT16    X;
  UINT16    Y;
} OBV_VERTEX;

/// Leader line point in view pixels.
typedef struct {
  INT16    X;
  INT16    Y;
} OBV_POINT;

typedef struct {
  /// Status flags, kept by the application from QueryComponentStatus. NotReady
  /// and NoMapping stay set once they are set.
  UINT8                  NotReady;
  /// Host: non-zero disables the callout. It looks as DefaultStyle says.
  UINT8                  NotSelectable;
  /// Host: passes a category filter of 254, which neither a button nor a saved
  /// state selects.
  UINT8                  InSpecialGroup;
  UINT8                  NoMapping;
  UINT8                  Available;
  UINT8                  DeviceError;
  UINT8                  Reserved6[2];
  /// Setup option to jump to; 0 for none.
  UINT16                 SearchTokenId;
  UINT16                 HotspotVertexCount;
  UINT16                 LeaderPointCount;
  /// Callout rectangle: initial values from the host, placed by the view.
  UINT16                 CalloutHeight;
  UINT16                 CalloutWidth;
  UINT8                  Reserved18[6];
  /// Category, OBV_TYPE_*.
  UINT32                 Type;
  INT32                  CalloutSide;   ///< OBV_CALLOUT_*.
  INT32                  TextAlign;     ///< OBV_TEXT_*; not seen, as the callout fits its text.
  INT16                  CalloutX;
  INT16                  CalloutY;
  /// Top left corner of both status dots before the zoom: half of OBV_DOT_SIZE
  /// left of and above their centre.
  INT16                  MarkerX;
  INT16                  MarkerY;
  UINT8                  Reserved44[4];
  UINT64                 InfoCount;
  OBV_COMPONENT_INFO     Info[OBV_INFO_CAPACITY];
  UINT8                  Reserved11656[40];
  /// Display name and key of the status query; a name of 20 characters or more is not shown.
  CHAR16                 Name[OBV_NAME_LENGTH];
  /// The view draws at most 20 of these vertices.
  OBV_VERTEX             HotspotVertices[OBV_VERTEX_CAPACITY];
  /// From the component to the callout; the last point anchors the callout.
  OBV_POINT              LeaderPoints[OBV_LEADER_POINT_CAPACITY];
  OBV_COMPONENT_STYLE    *DefaultStyle;
  OBV_COMPONENT_STYLE    *FocusStyle;
  UINT8                  Reserved12072[16];
} OBV_COMPONENT;

OBV_ASSERT_OFFSET (OBV_COMPONENT_STYLE, BackgroundColor, 0x14);
OBV_ASSERT_OFFSET (OBV_COMPONENT_STYLE, MarkColor, 0x28);
OBV_ASSERT_OFFSET (OBV_COMPONENT_STYLE, BorderColor, 0x3C);
OBV_ASSERT_OFFSET (OBV_COMPONENT_STYLE, BorderWidth, 0x50);
OBV_ASSERT_OFFSET (OBV_COMPONENT_STYLE, CornerRadius, 0x51);

OBV_ASSERT_OFFSET (OBV_COMPONENT_INFO, Label, 4);
OBV_ASSERT_OFFSET (OBV_COMPONENT_INFO, Value, 68);
OBV_ASSERT_SIZE (OBV_COMPONENT_INFO, 580);

OBV_ASSERT_OFFSET (OBV_COMPONENT, NotReady, 0);
OBV_ASSERT_OFFSET (OBV_COMPONENT, NotSelectable, 1);
OBV_ASSERT_OFFSET (OBV_COMPONENT, InSpecialGroup, 2);
OBV_ASSERT_OFFSET (OBV_COMPONENT, NoMapping, 3);
OBV_ASSERT_OFFSET (OBV_COMPONENT, Available, 4);
OBV_ASSERT_OFFSET (OBV_COMPONENT, DeviceError, 5);
OBV_ASSERT_OFFSET (OBV_COMPONENT, SearchTokenId, 8);
OBV_ASSERT_OFFSET (OBV_COMPONENT, HotspotVertexCount, 10);
OBV_ASSERT_OFFSET (OBV_COMPONENT, LeaderPointCount, 12);
OBV_ASSERT_OFFSET (OBV_COMPONENT, CalloutHeight, 14);
OBV_ASSERT_OFFSET (OBV_COMPONENT, CalloutWidth, 16);
OBV_ASSERT_OFFSET (OBV_COMPONENT, Type, 24);
OBV_ASSERT_OFFSET (OBV_COMPONENT, CalloutSide, 28);
OBV_ASSERT_OFFSET (OBV_COMPONENT, TextAlign, 32);
OBV_ASSERT_OFFSET (OBV_COMPONENT, CalloutX, 36);
OBV_ASSERT_OFFSET (OBV_COMPONENT, CalloutY, 38);
OBV_ASSERT_OFFSET (OBV_COMPONENT, MarkerX, 40);
OBV_ASSERT_OFFSET (OBV_COMPONENT, MarkerY, 42);
OBV_ASSERT_OFFSET (OBV_COMPONENT, InfoCount, 48);
OBV_ASSERT_OFFSET (OBV_COMPONENT, Info, 56);
OBV_ASSERT_OFFSET (OBV_COMPONENT, Name, 11696);
OBV_ASSERT_OFFSET (OBV_COMPONENT, HotspotVertices, 11816);
OBV_ASSERT_OFFSET (OBV_COMPONENT, LeaderPoints, 11976);
OBV_ASSERT_OFFSET (OBV_COMPONENT, DefaultStyle, 12056);
OBV_ASSERT_OFFSET (OBV_COMPONENT, FocusStyle, 12064);
OBV_ASSERT_SIZE (OBV_COMPONENT, 12088);

#endif
