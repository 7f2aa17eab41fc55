/** @file
  What the host knows of its board's hardware.

  A question is answered from here. A device is read when it is asked for the
  first time and again when something arrived that may stand in its place (told
  by the firmware), when it left (the handle database is asked at each question,
  as firmware tells of arrivals alone), or when what it tells ages.
**/

#pragma once

#include "host/portable/HostRecord.h"
#include "host/sources/Source.h"

namespace obv_host {

/// What a source told is taken again when it is this old, in milliseconds.
inline constexpr UINT64 kFactsAge = 30'000;
/// Between two readings for age alone: a turn of the view asks for many
/// components, and pays for one.
inline constexpr UINT64 kAgePause = 1'000;

/// What is known of one component's hardware.
struct KnownComponent {
  bool Read;
  bool Ages;  ///< Of one of the sources that were asked.
  UINT64 ReadTime;
  /// Arrivals of what its sources wait for, when it was read.
  UINT64 Arrivals;
  EFI_STATUS Status;
  Presence Where;
  Facts Told;
};

/// Counts the arrivals of what one source waits for.
struct ArrivalWatch {
  EFI_EVENT Event;
  VOID *Registration;
  UINT64 Count;
};

struct Knowledge {
  const HostServices *Services;
  const Board *ActiveBoard;
  KnownComponent *Components;
  ArrivalWatch Arrivals[kSourceCount];  ///< In the order of kSources.
  UINT64 LastForAge;
};

/// Begins to know about board, which must outlive it, as must services. Without
/// hardware in the board it does nothing. EFI_OUT_OF_RESOURCES: nothing was begun.
[[nodiscard]] EFI_STATUS StartKnowledge(const HostServices &services, const Board &board,
                                        Knowledge *knowledge);

/// Ends it: no event, no memory is left. Harmless where nothing was begun.
void StopKnowledge(Knowledge *knowledge);

/// At the start of a view: reads everything that was not read yet or is old, as the view asks again
/// for some categories only.
void ReadHardwareAtStart(Knowledge *knowledge);

/// HostServices.AskHardware. component is an index into the board.
EFI_STATUS AskKnowledge(Knowledge *knowledge, UINTN component, Facts *facts);

}  // namespace obv_host
