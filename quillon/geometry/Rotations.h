#pragma once

// All of the rotations: the header to start from.
#include "quillon/geometry/Angles.h"
#include "quillon/geometry/EulerAngles.h"
#include "quillon/geometry/NearestEuler.h"
#include "quillon/geometry/Orthonormalize.h"
#include "quillon/geometry/Quaternion.h"
#include "quillon/geometry/RotationVector.h"
