#pragma once

#include "quillon/core/LmStr.h"

#include <cstdint>
#include <utility>

namespace quillon {

/// A marker of a problem definition, for code that holds markers of several kinds by their base. The readers,
/// writers and checks walk one array per kind instead of asking.
class LqPDDMarker {
public:
    virtual ~LqPDDMarker() = default;

    virtual bool isFixMarker() const = 0;        ///< whether it is of this kind itself
    virtual bool isRealMarker() const = 0;       ///< whether it is of this kind itself
    virtual bool isDoubleMarker() const = 0;     ///< whether it is of this kind itself
    virtual bool isArtificialMarker() const = 0; ///< whether it is of this kind itself

protected:
    LqPDDMarker() = default;
    LqPDDMarker(const LqPDDMarker&) = default;
    LqPDDMarker& operator=(const LqPDDMarker&) = default;
};

/// A marker that is fixed to its body; also what the other kinds have in common.
class LqPDDFixMarker : public LqPDDMarker {
public:
    LqPDDFixMarker() : bodyName("") {}
    /// A marker on that body.
    LqPDDFixMarker(std::int32_t newId, float newWeight, LmStr body)
        : id(newId), weight(newWeight), bodyName(std::move(body)) {}

    bool isFixMarker() const override { return true; }
    bool isRealMarker() const override { return false; }
    bool isDoubleMarker() const override { return false; }
    bool isArtificialMarker() const override { return false; }

    std::int32_t id = -1; ///< counts from 1 in a valid definition
    float weight = 0.0F;  ///< in the solver
    LmStr bodyName;       ///< a body, or for some kinds `referenceSystemName`
};

/// A marker that the capture system sees.
class LqPDDRealMarker : public LqPDDFixMarker {
public:
    LqPDDRealMarker() = default;
    /// A marker on that body.
    LqPDDRealMarker(std::int32_t newId, std::int32_t prediction, float newWeight, LmStr body)
        : LqPDDFixMarker(newId, newWeight, std::move(body)), predictionType(prediction) {}

    bool isFixMarker() const override { return false; }
    bool isRealMarker() const override { return true; }

    std::int32_t predictionType = 0; ///< stored for the solver; not interpreted here
};

/// A marker with a second id.
class LqPDDDoubleMarker : public LqPDDFixMarker {
public:
    LqPDDDoubleMarker() = default;
    /// A marker on that body.
    LqPDDDoubleMarker(std::int32_t newId, std::int32_t secondId, float newWeight, LmStr body)
        : LqPDDFixMarker(newId, newWeight, std::move(body)), doubleId(secondId) {}

    bool isFixMarker() const override { return false; }
    bool isDoubleMarker() const override { return true; }

    std::int32_t doubleId = 0; ///< stored for the solver; not interpreted here, and never renumbered
};

/// A pair of marker points, which takes two marker ids.
class LqPDDArtificialMarker : public LqPDDFixMarker {
public:
    LqPDDArtificialMarker() : otherBodyName("") {}
    /// A pair on these two bodies.
    LqPDDArtificialMarker(std::int32_t newId, std::int32_t newOtherId, float newWeight, LmStr body,
                          LmStr otherBody)
        : LqPDDFixMarker(newId, newWeight, std::move(body)), otherId(newOtherId),
          otherBodyName(std::move(otherBody)) {}

    bool isFixMarker() const override { return false; }
    bool isArtificialMarker() const override { return true; }

    std::int32_t otherId = -1; ///< of the second point
    LmStr otherBodyName;       ///< of the second point
};

/// A plain record numbered between the real and the fix markers. No file holds such markers; they enter
/// through `LqProblemDefData::addGlobalDirectionMarker` alone.
struct LqPDDGlobalDirectionMarker {
    LqPDDGlobalDirectionMarker() : bodyName("") {}
    /// A marker on that body.
    LqPDDGlobalDirectionMarker(std::int32_t newId, float newWeight, LmStr body)
        : id(newId), weight(newWeight), bodyName(std::move(body)) {}

    std::int32_t id = -1; ///< counts from 1 in a valid definition
    float weight = 0.0F;  ///< in the solver
    LmStr bodyName;       ///< a body
};

} // namespace quillon
