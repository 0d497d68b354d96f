#include "quillon/model/LqBodyDefData.h"

#include "quillon/core/Fatal.h"
#include "quillon/core/LmListView.h"
#include "quillon/problem/LqProblemDefData.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace quillon {

namespace {

using Markers = LmDArray<LqBDMarker*>;

/// The arrays in which markers are looked up, in that order. Global direction markers are in no file and are
/// left out of look-ups, counts and comparison.
constexpr std::array<Markers LqBodyDefData::*, 4> fileMarkerArrays = {
    &LqBodyDefData::realMarkers, &LqBodyDefData::fixMarkers, &LqBodyDefData::doubleMarkers,
    &LqBodyDefData::artificialMarkers};

constexpr std::array<Markers LqBodyDefData::*, 5> allMarkerArrays = {
    &LqBodyDefData::realMarkers, &LqBodyDefData::globalDirectionMarkers, &LqBodyDefData::fixMarkers,
    &LqBodyDefData::doubleMarkers, &LqBodyDefData::artificialMarkers};

/// Base matrices are written with six decimals; elements that differ by less than this count as equal.
constexpr double transformTolerance = 0.0005;

/// The records in front of the first null slot.
template <class T>
std::span<T* const> storedIn(const LmArray<T*>& records) {
    std::size_t stored = 0;
    const std::span<T* const> slots(records.data(), static_cast<std::size_t>(records.count()));
    while (stored < slots.size() && slots[stored] != nullptr) {
        ++stored;
    }
    return slots.first(stored);
}

template <class T>
void freeRecords(LmDArray<T*>& records) {
    for (T* record : storedIn(records)) {
        delete record;
    }
    records.setLength(0);
}

/// Puts copies of the given records in the place of those of the array. The given array may be this one, or
/// may lead to records of this one in another order.
template <class T>
void replaceByCopies(LmDArray<T*>& records, const LmArray<T*>& source) {
    if (&records == &source) {
        return;
    }
    const std::span<T* const> stored = storedIn(records);
    const std::vector<const T*> replaced(stored.begin(), stored.end());
    records.setLengthZeroed(source.count());
    int slot = 0;
    for (const T* record : storedIn(source)) {
        records[slot++] = new T(*record);
    }
    for (const T* record : replaced) {
        delete record;
    }
}

/// Frees the records that `isRemoved` picks and closes the gaps; null slots behind the records go too.
template <class T, class Predicate>
void removeIf(LmDArray<T*>& records, const Predicate& isRemoved) {
    int kept = 0;
    for (T* record : storedIn(records)) {
        if (isRemoved(*record)) {
            delete record;
        } else {
            records[kept++] = record;
        }
    }
    records.setLength(kept);
}

template <class T, class Equal>
bool equalRecords(const LmArray<T*>& a, const LmArray<T*>& b, const Equal& areEqual) {
    const std::span<T* const> as = storedIn(a);
    const std::span<T* const> bs = storedIn(b);
    return a.count() == b.count() && std::equal(as.begin(), as.end(), bs.begin(), bs.end(),
                                                [&](const T* x, const T* y) { return areEqual(*x, *y); });
}

bool equalMarkers(const LqBDMarker& a, const LqBDMarker& b) {
    return a.id == b.id && a.position == b.position;
}

bool equalBodies(const LqBDBody& a, const LqBDBody& b) {
    const auto isNear = [](float x, float y) {
        return std::fabs(static_cast<double>(x) - static_cast<double>(y)) < transformTolerance;
    };
    return a.name == b.name &&
           std::equal(a.baseTransform.begin(), a.baseTransform.end(), b.baseTransform.begin(), isNear) &&
           a.vectorLength == b.vectorLength && a.vectorDirection == b.vectorDirection;
}

bool equalIncludes(const LmDoubleLinkedList& a, const LmDoubleLinkedList& b) {
    const LmListView<const LqBDInclude> as(a);
    const LmListView<const LqBDInclude> bs(b);
    auto other = bs.begin();
    for (const LqBDInclude* include : as) {
        if (other == bs.end() || include->fileName != (*other)->fileName ||
            include->bodyNameSuffix != (*other)->bodyNameSuffix) {
            return false;
        }
        ++other;
    }
    return other == bs.end();
}

/// The id raised by 1; the largest id wraps around instead of overflowing.
std::int32_t raised(std::int32_t id) {
    return static_cast<std::int32_t>(static_cast<std::uint32_t>(id) + 1U);
}

void raiseIds(Markers& markers, int from = 0) {
    for (int i = from; i < markers.count(); ++i) {
        markers[i]->id = raised(markers[i]->id);
    }
}

LqBDBody* bodyNamed(const LqBodyDefData& model, const LmStr& name) {
    for (LqBDBody* body : model.storedBodies()) {
        if (body->name == name) {
            return body;
        }
    }
    return nullptr;
}

LqBDMarker* markerWithId(const LqBodyDefData& model, std::int32_t id) {
    for (const auto markers : fileMarkerArrays) {
        for (LqBDMarker* marker : model.*markers) {
            if (marker->id == id) {
                return marker;
            }
        }
    }
    return nullptr;
}

/// How a model's count compares with the definition's: -1, 0 or 1.
int compareCounts(int modelCount, int definitionCount) {
    return (modelCount > definitionCount ? 1 : 0) - (modelCount < definitionCount ? 1 : 0);
}

const LqProblemDefData& existing(const LqProblemDefData* definition) {
    if (definition == nullptr) {
        endByMemoryFault();
    }
    return *definition;
}

} // namespace

// --- Life ----------------------------------------------------------------------------------------

LqBodyDefData::LqBodyDefData(const LqBodyDefData& other) {
    copyFrom(other);
}

LqBodyDefData& LqBodyDefData::operator=(const LqBodyDefData& other) {
    if (this != &other) {
        clear();
        copyFrom(other);
    }
    return *this;
}

LqBodyDefData::~LqBodyDefData() {
    clear();
}

void LqBodyDefData::copyFrom(const LqBodyDefData& other) {
    problemDef = other.problemDef;
    cameraCount = other.cameraCount;
    strictMatch = other.strictMatch;
    replaceByCopies(bodies, other.bodies);
    for (const auto markers : allMarkerArrays) {
        replaceByCopies(this->*markers, other.*markers);
    }
    for (const LqBDInclude* include : LmListView<const LqBDInclude>(other.includes)) {
        includes.append(new LqBDInclude(*include));
    }
}

void LqBodyDefData::clear() {
    freeRecords(bodies);
    for (const auto markers : allMarkerArrays) {
        freeRecords(this->*markers);
    }
    clearIncludes();
}

void LqBodyDefData::clearIncludes() {
    while (includes.count() != 0) {
        delete static_cast<LqBDInclude*>(includes.removeNode(includes.lastLive()));
    }
}

// --- Look-ups ------------------------------------------------------------------------------------

std::span<LqBDBody* const> LqBodyDefData::storedBodies() const {
    return storedIn(bodies);
}

LqBDBody* LqBodyDefData::findBody(const LmStr& name) {
    return bodyNamed(*this, name);
}

const LqBDBody* LqBodyDefData::findBody(const LmStr& name) const {
    return bodyNamed(*this, name);
}

LqBDMarker* LqBodyDefData::findMarker(std::int32_t id) {
    return markerWithId(*this, id);
}

const LqBDMarker* LqBodyDefData::findMarker(std::int32_t id) const {
    return markerWithId(*this, id);
}

std::vector<const LqBDBody*> LqBodyDefData::duplicateBodies() const {
    std::unordered_map<std::string_view, std::vector<const LqBDBody*>> bodiesByName;
    for (const LqBDBody* body : storedBodies()) {
        bodiesByName[body->name.view()].push_back(body);
    }
    std::unordered_map<std::string_view, std::size_t> seen;
    std::vector<const LqBDBody*> duplicates;
    for (const LqBDBody* body : storedBodies()) {
        const std::vector<const LqBDBody*>& sameName = bodiesByName[body->name.view()];
        const std::size_t place = seen[body->name.view()]++;
        if (place + 1 < sameName.size()) {
            duplicates.insert(duplicates.end(), sameName.begin() + static_cast<std::ptrdiff_t>(place),
                              sameName.end());
        }
    }
    return duplicates;
}

bool LqBodyDefData::isEmpty() const {
    return bodies.count() == 0 && std::all_of(allMarkerArrays.begin(), allMarkerArrays.end(),
                                              [this](auto markers) { return (this->*markers).count() == 0; });
}

bool LqBodyDefData::isBlank() const {
    return includes.count() == 0 && isEmpty();
}

std::int32_t LqBodyDefData::highestMarkerId() const {
    std::optional<std::int32_t> highest;
    for (const auto markers : fileMarkerArrays) {
        for (const LqBDMarker* marker : this->*markers) {
            highest = std::max(highest.value_or(marker->id), marker->id);
        }
    }
    return highest.value_or(0);
}

std::int32_t LqBodyDefData::lastRealMarkerId() const {
    return realMarkers.count() == 0 ? 0 : realMarkers[realMarkers.count() - 1]->id;
}

int LqBodyDefData::markerCount() const {
    int count = 0;
    for (const auto markers : fileMarkerArrays) {
        count += (this->*markers).count();
    }
    return count;
}

int LqBodyDefData::compareMarkerCount(const LqProblemDefData& definition) const {
    return compareCounts(markerCount(), definition.markerCount());
}

int LqBodyDefData::compareBodyCount(const LqProblemDefData& definition) const {
    return compareCounts(bodies.count(), definition.bodies.count());
}

int LqBodyDefData::compareMarkerCount() const {
    return compareMarkerCount(existing(problemDef));
}

int LqBodyDefData::compareBodyCount() const {
    return compareBodyCount(existing(problemDef));
}

bool LqBodyDefData::equals(const LqBodyDefData& other) const {
    if (this == &other) {
        return true;
    }
    return equalRecords(bodies, other.bodies, equalBodies) &&
           std::all_of(
               fileMarkerArrays.begin(), fileMarkerArrays.end(),
               [&](auto markers) { return equalRecords(this->*markers, other.*markers, equalMarkers); }) &&
           equalIncludes(includes, other.includes);
}

// --- Editing -------------------------------------------------------------------------------------

void LqBodyDefData::addBody(const LqBDBody& body) {
    // Null slots stand only behind the bodies, so those of a read that ended early make room.
    if (bodies.count() != 0 && bodies[bodies.count() - 1] == nullptr) {
        bodies.setLength(static_cast<std::int64_t>(storedBodies().size()));
    }
    bodies.append(new LqBDBody(body));
}

void LqBodyDefData::addRealMarker(const LqBDMarker& marker) {
    realMarkers.append(new LqBDMarker(marker));
}

void LqBodyDefData::addGlobalDirectionMarker(const LqBDMarker& marker) {
    globalDirectionMarkers.append(new LqBDMarker(marker));
}

void LqBodyDefData::addArtificialPair(const LqBDMarker& first, const LqBDMarker& second) {
    artificialMarkers.append(new LqBDMarker(first));
    artificialMarkers.append(new LqBDMarker(second));
}

void LqBodyDefData::insertRealMarker(const LqBDMarker& marker) {
    const auto isNotBelow = [&](const LqBDMarker* present) { return present->id >= marker.id; };
    const auto place = std::find_if(realMarkers.begin(), realMarkers.end(), isNotBelow) - realMarkers.begin();
    realMarkers.insert(static_cast<int>(place), 1, new LqBDMarker(marker));
    raiseIds(realMarkers, static_cast<int>(place) + 1);
    raiseIds(fixMarkers);
    raiseIds(doubleMarkers);
    raiseIds(artificialMarkers);
}

void LqBodyDefData::removeRealMarker(std::int32_t id) {
    bool isRemoved = false;
    removeIf(realMarkers, [&](const LqBDMarker& marker) {
        if (isRemoved || marker.id != id) {
            return false;
        }
        isRemoved = true;
        return true;
    });
}

void LqBodyDefData::removeLastRealMarker() {
    const int count = realMarkers.count();
    if (count != 0) {
        delete realMarkers[count - 1];
        realMarkers.setLength(count - 1);
    }
}

void LqBodyDefData::removeMarkers(const LmArray<int>& ids) {
    const std::unordered_set<int> removed(ids.begin(), ids.end());
    for (const auto markers : allMarkerArrays) {
        removeIf(this->*markers, [&](const LqBDMarker& marker) { return removed.count(marker.id) != 0; });
    }
}

void LqBodyDefData::removeBodies(const LmArray<LmStr>& names) {
    std::unordered_set<std::string_view> removed;
    for (const LmStr& name : names) {
        removed.insert(name.view());
    }
    removeIf(bodies, [&](const LqBDBody& body) { return removed.count(body.name.view()) != 0; });
}

void LqBodyDefData::setBodies(const LmArray<LqBDBody*>& source) {
    replaceByCopies(bodies, source);
}

void LqBodyDefData::setRealMarkers(const LmArray<LqBDMarker*>& source) {
    replaceByCopies(realMarkers, source);
}

void LqBodyDefData::setGlobalDirectionMarkers(const LmArray<LqBDMarker*>& source) {
    replaceByCopies(globalDirectionMarkers, source);
}

void LqBodyDefData::setFixMarkers(const LmArray<LqBDMarker*>& source) {
    replaceByCopies(fixMarkers, source);
}

void LqBodyDefData::setDoubleMarkers(const LmArray<LqBDMarker*>& source) {
    replaceByCopies(doubleMarkers, source);
}

void LqBodyDefData::setArtificialMarkers(const LmArray<LqBDMarker*>& source) {
    replaceByCopies(artificialMarkers, source);
}

void LqBodyDefData::applyMarkerIdTable(const LmArray<int>& table) {
    for (const auto array : allMarkerArrays) {
        Markers& markers = this->*array;
        for (LqBDMarker* marker : markers) {
            if (marker->id >= 1 && marker->id <= table.count()) {
                marker->id = table[marker->id - 1];
            }
        }
        std::stable_sort(markers.begin(), markers.end(),
                         [](const LqBDMarker* a, const LqBDMarker* b) { return a->id < b->id; });
    }
}

void LqBodyDefData::appendToIncludeSuffixes(const LmStr& suffix) {
    for (LqBDInclude* include : LmListView<LqBDInclude>(includes)) {
        include->bodyNameSuffix += suffix;
    }
}

} // namespace quillon
