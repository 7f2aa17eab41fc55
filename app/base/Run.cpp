#include "app/base/Run.h"

RunState gRun;
