// Writes a motion file of JOINTS joints in a bushy tree, with one frame, to standard output, for the
// comparison with `assimp info`:
//
//     generate_bvh JOINTS

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int childrenPerJoint = 4;

/// Writes a joint and, as the format nests them, all joints below it.
void writeJoint(int number, int count) {
    std::printf("%s Joint_%d\n{\n", number == 0 ? "ROOT" : "JOINT", number);
    std::printf("OFFSET %.6f %.6f %.6f\n", 0.001 * (number % 97), -0.002 * (number % 89),
                0.003 * (number % 83));
    std::printf("CHANNELS 3 Zrotation Xrotation Yrotation\n");
    const int firstChild = childrenPerJoint * number + 1;
    if (firstChild >= count) {
        std::printf("End Site\n{\nOFFSET 0.000000 0.100000 0.000000\n}\n");
    }
    for (int child = firstChild; child < firstChild + childrenPerJoint && child < count; ++child) {
        writeJoint(child, count);
    }
    std::puts("}");
}

} // namespace

int main(int argumentCount, char** arguments) {
    const int jointCount = argumentCount == 2 ? std::atoi(arguments[1]) : 0;
    if (jointCount < 1) {
        std::fputs("Usage: generate_bvh JOINTS\n", stderr);
        return 1;
    }
    std::puts("HIERARCHY");
    writeJoint(0, jointCount);
    std::printf("MOTION\nFrames: 1\nFrame Time: 0.008333\n");
    for (int i = 0; i < 3 * jointCount; ++i) {
        std::printf("%.4f ", 0.01 * (i % 73));
    }
    std::puts("");
}
