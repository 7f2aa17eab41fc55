#include "app/base/HostClient.h"

HostState gHost;

UINT64 HostTime() { return gHost.Protocol->GetTime(gHost.Protocol); }
