#include "view/ViewState.h"

#include "resources/ComponentIntake.h"

ViewState gView;

UINTN ViewComponentCount() { return MIN(static_cast<UINTN>(ComponentCount()), kMaxViewComponents); }
