/** @file
  What the records of the interface have in common: the sizes of their texts,
  and the checks of their layout. Plain C.
**/

#ifndef BOARDSCOPE_OBV_LAYOUT_H_
#define BOARDSCOPE_OBV_LAYOUT_H_

#include <Uefi.h>

/// Bytes of a colour text: three comma-separated numbers (red, green, blue),
/// NUL-terminated.
#define OBV_COLOR_TEXT_SIZE  20

/// Bytes of a font's face name; a shorter name is NUL-terminated.
#define OBV_FONT_NAME_SIZE  20

/// Fail the compilation when a record is not laid out as the interface says.
#define OBV_ASSERT_OFFSET(Record, Field, Offset) \
  STATIC_ASSERT (OFFSET_OF (Record, Field) == (Offset), #Record "." #Field " must be at " #Offset)
#define OBV_ASSERT_SIZE(Record, Size) \
  STATIC_ASSERT (sizeof (Record) == (Size), #Record " must have a size of " #Size)

#endif
