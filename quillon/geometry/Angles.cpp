#include "quillon/geometry/Angles.h"

#include <algorithm>
#include <cmath>

namespace quillon {

float clampedAsin(float s, float c) {
    const float angle = std::asin(std::clamp(s, -1.0F, 1.0F));
    return c < 0.0F ? pi - angle : angle;
}

} // namespace quillon
