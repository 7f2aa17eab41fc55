/** @file
  A source: what can tell of one kind of hardware. One file each, one row each in
  the table of Sources.cpp.
**/

#pragma once

#include "host/portable/Board.h"
#include "host/portable/Facts.h"
#include "host/sources/SourceFirmware.h"

namespace obv_host {

/// What stands for a device while it is there: its interface on its handle. Handle
/// is NULL for what cannot leave while the firmware runs, as a record of the
/// SMBIOS tables.
struct Presence {
  EFI_HANDLE Handle;
  const EFI_GUID *Protocol;
  VOID *Interface;
};

/// Looks for the hardware of this name and reads it. facts and presence are zeroed
/// before. The answers, and no others:
/// - EFI_SUCCESS: it is there and well;
/// - EFI_DEVICE_ERROR: it is there and failing; a line of the facts says why;
/// - EFI_NOT_READY: it is there, its driver still brings it up;
/// - EFI_NOT_FOUND: it is not there; nothing was told.
/// Every answer but the last sets presence for what can leave.
using ReadHardware = EFI_STATUS (*)(const BoardHardware &hardware, Facts *facts,
                                    Presence *presence);

struct Source {
  ReadHardware Read;
  /// Whose arrival makes another look worth while; NULL for what cannot arrive.
  const EFI_GUID *Arrives;
  HardwareKind Kind;
  /// Whether what it tells changes by itself, as a temperature does.
  bool Ages;
};

/// The source for a kind; NULL for kHardwareNeedsProcessor and unknown numbers.
const Source *SourceOf(UINT16 kind);

inline constexpr UINTN kSourceCount = kHardwareKindLimit - 1;
extern const Source kSources[kSourceCount];

/// One for each kind, in the files of their names.
EFI_STATUS ReadProcessor(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadMemory(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadMemoryTotal(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadPcie(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadNvme(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadSata(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadUsb(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadNetwork(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadAudio(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadDisplay(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadFan(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadProbe(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadSlot(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadPort(const BoardHardware &hardware, Facts *facts, Presence *presence);
EFI_STATUS ReadSensor(const BoardHardware &hardware, Facts *facts, Presence *presence);

/// Whether the boot processor's brand string contains this text, letter for
/// letter: the condition of kHardwareNeedsProcessor.
bool BrandContains(const CHAR8 *text);

/// Connects the drivers of the controllers that the board names, in its order;
/// each once since the host was loaded, and never again what failed.
void ConnectHardware(const Board &board);

/// Fills those of the shared state's SystemInfo texts that the description leaves
/// empty: what boots first, the display, and board, firmware and serial number.
void FillSystemTexts(const Board &board, OBV_SHARED_STATE *shared);

}  // namespace obv_host
