#include "app/base/Geometry.h"

GeometryState gGeometry;
