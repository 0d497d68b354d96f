// Series of random edits, on a problem definition and on plain records that do the same by the shortest way.

#include "quillon/problem/LqProblemDefData.h"

#include "tests/problem/ProblemDefSamples.h"
#include "tests/support/RandomSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <sstream>

namespace quillon::test {
namespace {

struct PlainMarker {
    int id;
    std::string body;
    int otherId = 0; // of a pair alone
    std::string otherBody = {};
};

struct PlainBody {
    std::string name;
    std::string parent;
};

enum Kind { real, direction, fix, twofold, pair, kindCount };

/// A problem definition without weights and mappings.
class PlainDefinition {
public:
    std::vector<PlainBody> bodies;
    std::array<std::vector<PlainMarker>, kindCount> markers;

    void renameBody(const std::string& oldName, const std::string& newName) {
        const auto found = body(oldName);
        if (found == bodies.end()) {
            return;
        }
        found->name = newName;
        for (PlainBody& child : bodies) {
            replace(child.parent, oldName, newName);
        }
        for (const Kind kind : {real, pair}) {
            for (PlainMarker& marker : markers[kind]) {
                replace(marker.body, oldName, newName);
                replace(marker.otherBody, oldName, newName);
            }
        }
    }

    void removeBody(const std::string& name) {
        if (body(name) == bodies.end()) {
            return;
        }
        std::vector<std::string> children;
        for (const PlainBody& each : bodies) {
            if (each.parent == name) {
                children.push_back(each.name);
            }
        }
        for (const std::string& child : children) {
            removeBody(child);
        }
        for (const Kind kind : {real, fix, twofold, pair}) {
            std::erase_if(markers[kind], [&](const PlainMarker& marker) {
                return marker.body == name || (kind == pair && marker.otherBody == name);
            });
        }
        bodies.erase(body(name));
    }

    void insertRealMarker(const PlainMarker& marker) {
        const auto place = std::find_if(markers[real].begin(), markers[real].end(),
                                        [&](const PlainMarker& each) { return each.id >= marker.id; });
        for (auto behind = place; behind != markers[real].end(); ++behind) {
            ++behind->id;
        }
        markers[real].insert(place, marker);
        for (const Kind kind : {fix, twofold, pair}) {
            for (PlainMarker& each : markers[kind]) {
                ++each.id;
                ++each.otherId;
            }
        }
    }

    void removeRealMarker(int id) {
        const auto found = std::find_if(markers[real].begin(), markers[real].end(),
                                        [&](const PlainMarker& each) { return each.id == id; });
        if (found != markers[real].end()) {
            markers[real].erase(found);
        }
    }

    void removeMarkers(const std::vector<int>& ids) {
        for (std::vector<PlainMarker>& kind : markers) {
            std::erase_if(kind, [&](const PlainMarker& each) {
                return std::find(ids.begin(), ids.end(), each.id) != ids.end();
            });
        }
    }

    /// The numbers from 1 by the old id. An old id that occurs again has its last number.
    std::map<int, int> compactMarkerIds() {
        std::map<int, int> table;
        int lastId = 0;
        forEachId([&](int& id) {
            if (id >= 1) {
                table[id] = ++lastId;
            }
        });
        forEachId([&](int& id) { id = id >= 1 ? table[id] : id; });
        return table;
    }

    template <class Use>
    void forEachId(const Use& use) {
        for (int kind = real; kind != kindCount; ++kind) {
            for (PlainMarker& marker : markers[static_cast<std::size_t>(kind)]) {
                use(marker.id);
                if (kind == pair) {
                    use(marker.otherId);
                }
            }
        }
    }

private:
    std::vector<PlainBody>::iterator body(const std::string& name) {
        return std::find_if(bodies.begin(), bodies.end(),
                            [&](const PlainBody& each) { return each.name == name; });
    }

    static void replace(std::string& name, const std::string& oldName, const std::string& newName) {
        if (name == oldName) {
            name = newName;
        }
    }
};

std::string textOf(const PlainDefinition& plain) {
    std::ostringstream text;
    for (const PlainBody& body : plain.bodies) {
        text << body.name << " on " << body.parent << '\n';
    }
    for (int kind = real; kind != kindCount; ++kind) {
        for (const PlainMarker& marker : plain.markers[static_cast<std::size_t>(kind)]) {
            text << kind << ": " << marker.id << ' ' << marker.body;
            if (kind == pair) {
                text << ", " << marker.otherId << ' ' << marker.otherBody;
            }
            text << '\n';
        }
    }
    return text.str();
}

/// The records of an array, each at its first slot: `removeBody` leaves slots that repeat earlier ones.
template <class Record>
std::vector<const Record*> recordsOnce(const LmDArray<Record*>& slots) {
    std::vector<const Record*> records;
    for (const Record* record : slots) {
        if (record != nullptr && std::find(records.begin(), records.end(), record) == records.end()) {
            records.push_back(record);
        }
    }
    return records;
}

template <class Marker>
std::vector<PlainMarker> plainMarkers(const LmDArray<Marker*>& slots) {
    std::vector<PlainMarker> plain;
    for (const Marker* marker : recordsOnce(slots)) {
        plain.push_back({marker->id, marker->bodyName.c_str()});
    }
    return plain;
}

PlainDefinition plainOf(const LqProblemDefData& data) {
    PlainDefinition plain;
    for (const LqPDDBodyMap* body : recordsOnce(data.bodies)) {
        plain.bodies.push_back({body->name.c_str(), body->parentName.c_str()});
    }
    plain.markers = {plainMarkers(data.realMarkers), plainMarkers(data.globalDirectionMarkers),
                     plainMarkers(data.fixMarkers), plainMarkers(data.doubleMarkers)};
    for (const LqPDDArtificialMarker* each : recordsOnce(data.artificialMarkers)) {
        plain.markers[pair].push_back(
            {each->id, each->bodyName.c_str(), each->otherId, each->otherBodyName.c_str()});
    }
    return plain;
}

/// Makes the same random edits on both sides.
class Editor {
public:
    explicit Editor(RandomSource& source) : random(source) {}

    void fill() {
        for (int i = random.between(0, 8); i > 0; --i) {
            addBody();
        }
        for (int i = random.between(0, 15); i > 0; --i) {
            addMarker();
        }
    }

    void edit() {
        using Edit = void (Editor::*)();
        constexpr Edit edits[] = {&Editor::addBody,       &Editor::addMarker,
                                  &Editor::renameBody,    &Editor::removeBody,
                                  &Editor::removeBodies,  &Editor::insertRealMarker,
                                  &Editor::removeMarkers, &Editor::removeRealMarker,
                                  &Editor::shiftPairs,    &Editor::compactMarkerIds};
        (this->*random.oneOf(edits))();
    }

    LqProblemDefData data;
    PlainDefinition plain;

private:
    int anyId() { return random.between(-2, 25); }

    /// The name of a body that is there, was there or has never been there.
    std::string anyName() { return "b" + std::to_string(random.between(0, bodiesMade + 1)); }

    std::string anyReference() { return random.oneIn(4) ? referenceSystemName : anyName(); }

    void addBody() {
        const std::string parent = anyParent();
        const std::string name = "b" + std::to_string(++bodiesMade);
        data.addBody(name.c_str(), parent.c_str(), bodiesMade);
        plain.bodies.push_back({name, parent});
    }

    /// A body that is there or the global frame, so that no body comes to be above itself.
    std::string anyParent() {
        const std::string name = anyName();
        return data.hasBody(name.c_str()) ? name : referenceSystemName;
    }

    void addMarker() {
        const auto kind = static_cast<Kind>(random.between(real, pair));
        const int id = anyId();
        const int otherId = kind == pair ? anyId() : 0;
        const std::string body = anyReference();
        const std::string otherBody = kind == pair ? anyReference() : "";
        plain.markers[kind].push_back({id, body, otherId, otherBody});
        // Two of the kinds have no operation that adds one, so they are set anew.
        if (kind == real) {
            data.addRealMarker(LqPDDRealMarker(id, 0, 1.0F, body.c_str()));
        } else if (kind == direction) {
            data.addGlobalDirectionMarker(LqPDDGlobalDirectionMarker(id, 1.0F, body.c_str()));
        } else if (kind == pair) {
            data.addArtificialMarker(
                LqPDDArtificialMarker(id, otherId, 1.0F, body.c_str(), otherBody.c_str()));
        } else if (kind == fix) {
            LqPDDFixMarker marker(id, 1.0F, body.c_str());
            data.removeBodies({});
            LmDArray<LqPDDFixMarker*> all(data.fixMarkers);
            all.append(&marker);
            data.setFixMarkers(all);
        } else {
            LqPDDDoubleMarker marker(id, 0, 1.0F, body.c_str());
            data.removeBodies({});
            LmDArray<LqPDDDoubleMarker*> all(data.doubleMarkers);
            all.append(&marker);
            data.setDoubleMarkers(all);
        }
    }

    void renameBody() {
        const std::string oldName = anyName();
        const std::string newName = "b" + std::to_string(++bodiesMade);
        data.renameBody(oldName.c_str(), newName.c_str());
        plain.renameBody(oldName, newName);
    }

    void removeBody() {
        const std::string name = anyName();
        const std::array<int, 6> counts = countsOfSlots();
        data.removeBody(name.c_str());
        plain.removeBody(name);
        EXPECT_EQ(countsOfSlots(), counts);
    }

    std::array<int, 6> countsOfSlots() const {
        return {data.bodies.count(),     data.realMarkers.count(),   data.globalDirectionMarkers.count(),
                data.fixMarkers.count(), data.doubleMarkers.count(), data.artificialMarkers.count()};
    }

    void removeBodies() {
        std::vector<std::string> names;
        for (int i = random.between(0, 2); i > 0; --i) {
            names.push_back(anyName());
        }
        data.removeBodies(arrayOf(names));
        std::erase_if(plain.bodies, [&](const PlainBody& body) {
            return std::find(names.begin(), names.end(), body.name) != names.end();
        });
    }

    void insertRealMarker() {
        const int id = anyId();
        const std::string body = anyReference();
        data.insertRealMarker(LqPDDRealMarker(id, 0, 1.0F, body.c_str()));
        plain.insertRealMarker({id, body});
    }

    void removeRealMarker() {
        const int id = anyId();
        data.removeRealMarker(id);
        plain.removeRealMarker(id);
        if (random.oneIn(3)) {
            data.removeLastRealMarker();
            if (!plain.markers[real].empty()) {
                plain.markers[real].pop_back();
            }
        }
    }

    void removeMarkers() {
        std::vector<int> ids;
        for (int i = random.between(0, 3); i > 0; --i) {
            ids.push_back(anyId());
        }
        data.removeMarkers(arrayOf(ids));
        plain.removeMarkers(ids);
    }

    void shiftPairs() {
        const int offset = random.between(-3, 6);
        data.shiftArtificialIds(offset);
        for (PlainMarker& each : plain.markers[pair]) {
            each.id += offset;
            each.otherId += offset;
        }
    }

    void compactMarkerIds() {
        const std::map<int, int> numbers = plain.compactMarkerIds();
        std::vector<int> table;
        for (const auto& [oldId, newId] : numbers) {
            table.resize(static_cast<std::size_t>(oldId), 0);
            table.back() = newId;
        }
        EXPECT_EQ(valuesOf(data.compactMarkerIds()), table);
    }

    RandomSource& random;
    int bodiesMade = 0;
};

TEST(LqProblemDefDataAgainstModel, EditsLeaveTheSameRecords) {
    forGenerated(1000, [](RandomSource& random) {
        Editor editor(random);
        editor.fill();
        for (int i = 0; i < 25; ++i) {
            editor.edit();
            ASSERT_EQ(textOf(plainOf(editor.data)), textOf(editor.plain)) << "edit " << i;
        }
        const LqProblemDefData copy(editor.data);
        EXPECT_TRUE(equals(copy, editor.data));
    });
}

TEST(LqProblemDefDataAgainstModel, NumbersOfMarkersWithDistinctIdsAreOneRun) {
    forGenerated(300, [](RandomSource& random) {
        std::vector<int> ids;
        for (int id = 1; id <= 40; ++id) {
            ids.insert(ids.begin() + random.between(0, id - 1), id);
        }
        LqProblemDefData data;
        std::size_t next = 0;
        for (int i = random.between(0, 8); i > 0; --i) {
            data.addRealMarker(LqPDDRealMarker(ids[next++], 0, 1.0F, "b"));
        }
        for (int i = random.between(0, 8); i > 0; --i) {
            addFixMarker(data, LqPDDFixMarker(ids[next++], 1.0F, "b"));
        }
        for (int i = random.between(0, 8); i > 0; --i) {
            addDoubleMarker(data, LqPDDDoubleMarker(ids[next++], 0, 1.0F, "b"));
        }
        for (int i = random.between(0, 8); i > 0; --i) {
            data.addArtificialMarker(LqPDDArtificialMarker(ids[next], ids[next + 1], 1.0F, "b", "b"));
            next += 2;
        }
        data.compactMarkerIds();
        EXPECT_EQ(data.highestMarkerId(), data.markerCount());
        EXPECT_TRUE(data.hasValidMarkerIdStart());
        EXPECT_TRUE(data.hasConsecutiveMarkerIds());
    });
}

} // namespace
} // namespace quillon::test
