// The GUIDs that the fake firmware publishes or knows by name. Own constants, so that the fake
// does not depend on which GUID definitions a program links.

#pragma once

#include "test/firmware/Edk2.h"

extern "C" {
#include <Protocol/ObvProtocol.h>
#include <Protocol/VeltSetupEventHandler.h>
}

namespace fake {

inline constexpr EFI_GUID kGraphicsOutputGuid = EFI_GRAPHICS_OUTPUT_PROTOCOL_GUID;
inline constexpr EFI_GUID kDevicePathGuid = EFI_DEVICE_PATH_PROTOCOL_GUID;
inline constexpr EFI_GUID kSimplePointerGuid = EFI_SIMPLE_POINTER_PROTOCOL_GUID;
inline constexpr EFI_GUID kAbsolutePointerGuid = EFI_ABSOLUTE_POINTER_PROTOCOL_GUID;
inline constexpr EFI_GUID kSimpleTextInGuid = EFI_SIMPLE_TEXT_INPUT_PROTOCOL_GUID;
inline constexpr EFI_GUID kSimpleTextOutGuid = EFI_SIMPLE_TEXT_OUTPUT_PROTOCOL_GUID;
inline constexpr EFI_GUID kSimpleFileSystemGuid = EFI_SIMPLE_FILE_SYSTEM_PROTOCOL_GUID;
inline constexpr EFI_GUID kHiiStringGuid = EFI_HII_STRING_PROTOCOL_GUID;
inline constexpr EFI_GUID kHiiDatabaseGuid = EFI_HII_DATABASE_PROTOCOL_GUID;
inline constexpr EFI_GUID kHiiConfigRoutingGuid = EFI_HII_CONFIG_ROUTING_PROTOCOL_GUID;
inline constexpr EFI_GUID kHiiFontGuid = EFI_HII_FONT_PROTOCOL_GUID;
inline constexpr EFI_GUID kHiiImageGuid = EFI_HII_IMAGE_PROTOCOL_GUID;
inline constexpr EFI_GUID kHobListGuid = HOB_LIST_GUID;
inline constexpr EFI_GUID kGlobalVariableGuid = EFI_GLOBAL_VARIABLE;
inline constexpr EFI_GUID kFileInfoGuid = EFI_FILE_INFO_ID;
inline constexpr EFI_GUID kFileSystemInfoGuid = EFI_FILE_SYSTEM_INFO_ID;
inline constexpr EFI_GUID kVolumeLabelGuid = EFI_FILE_SYSTEM_VOLUME_LABEL_ID;
inline constexpr EFI_GUID kObvProtocolGuid = OBV_PROTOCOL_GUID;
inline constexpr EFI_GUID kObvStringListGuid = OBV_STRING_PACKAGE_LIST_GUID;
inline constexpr EFI_GUID kSetupEventHandlerGuid = VELT_SETUP_EVENT_HANDLER_PROTOCOL_GUID;

bool SameGuid(const EFI_GUID &a, const EFI_GUID &b);

/// Short name of one of the GUIDs above, or null.
const char *KnownGuidName(const EFI_GUID &guid);

}  // namespace fake
