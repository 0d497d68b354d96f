#pragma once

#include "quillon/core/LmArray.h"
#include "quillon/geometry/EulerAngles.h"
#include "quillon/geometry/Vec3.h"

namespace quillon {

/// How `nearestEuler` chooses between the two Euler solutions of a rotation.
enum EulerContinuityMode : int {
    EulerNearestByDistance = 0, ///< the smaller sum of squared differences from the reference
    EulerNearestByQuadrant = 1, ///< the middle angle on the reference's side of a quarter turn
};

/// The process-wide choice of method; `EulerNearestByQuadrant` at program start.
int getEulerContinuityMode();

/// Sets the process-wide choice of method, one of `EulerContinuityMode`: with another number the result of
/// `nearestEuler` means nothing.
void setEulerContinuityMode(int mode);

/// out = of the triple `angles` and its flipped triple (A + pi, pi - B, C + pi in the sequence of `order`),
/// both moved by whole turns, the one nearest to `reference` by the process-wide method.
/// All are radians, indexed by axis; `order` holds 1 to 3 only. `out` may be one of the inputs.
void nearestEuler(LmVec3& out, const LmVec3& reference, const LmVec3& angles, const LmEulerOrder& order);

/// The same on arrays of at least 3 elements each; `out` must hold its elements already.
void nearestEuler(LmArray<float>& out, const LmArray<float>& reference, const LmArray<float>& angles,
                  const LmArray<int>& order);

} // namespace quillon
