// Writes a robot description of LINKS links in a bushy tree to standard output, for the comparison with
// check_urdf:
//
//     generate_urdf LINKS
//
// A link holds what links usually do: a mass with its inertia, one shape to see and one to collide with, and
// the joint to its parent with an axis and limits. In bytes that is about what a generated family holds for a
// body.

#include <cstdio>
#include <cstdlib>

namespace {

void writeShape(const char* kind, int number) {
    std::printf("    <%s>\n      <origin xyz=\"%.4f %.4f 0.1\" rpy=\"0 0 %.4f\"/>\n", kind,
                0.001 * (number % 53), -0.002 * (number % 47), 0.01 * (number % 43));
    std::printf("      <geometry><cylinder length=\"0.25\" radius=\"%.4f\"/></geometry>\n    </%s>\n",
                0.01 + 0.001 * (number % 41), kind);
}

void writeLink(int number) {
    std::printf("  <link name=\"link_%d\">\n    <inertial>\n      <origin xyz=\"0 0 %.4f\" rpy=\"0 0 0\"/>\n",
                number, 0.001 * (number % 67));
    std::printf("      <mass value=\"%.3f\"/>\n", 0.5 + 0.01 * (number % 61));
    std::printf("      <inertia ixx=\"0.01\" ixy=\"0\" ixz=\"0\" iyy=\"0.01\" iyz=\"0\" izz=\"%.5f\"/>\n    "
                "</inertial>\n",
                0.001 + 0.0001 * (number % 59));
    writeShape("visual", number);
    writeShape("collision", number);
    std::puts("  </link>");
}

void writeJoint(int number) {
    std::printf("  <joint name=\"joint_%d\" type=\"revolute\">\n", number);
    std::printf("    <parent link=\"link_%d\"/>\n    <child link=\"link_%d\"/>\n", (number - 1) / 4, number);
    std::printf("    <origin xyz=\"%.6f %.6f 0.25\" rpy=\"%.6f 0 %.6f\"/>\n", 0.001 * (number % 97),
                -0.002 * (number % 89), 0.01 * (number % 83), -0.01 * (number % 79));
    std::printf("    <axis xyz=\"1 0 0\"/>\n");
    std::printf("    <limit lower=\"%.4f\" upper=\"%.4f\" effort=\"10\" velocity=\"2\"/>\n  </joint>\n",
                -0.01 * (number % 73), 0.01 * (number % 71));
}

} // namespace

int main(int argumentCount, char** arguments) {
    const int linkCount = argumentCount == 2 ? std::atoi(arguments[1]) : 0;
    if (linkCount < 1) {
        std::fputs("Usage: generate_urdf LINKS\n", stderr);
        return 1;
    }
    std::puts("<?xml version=\"1.0\"?>\n<robot name=\"family\">");
    for (int i = 0; i < linkCount; ++i) {
        writeLink(i);
        if (i > 0) {
            writeJoint(i);
        }
    }
    std::puts("</robot>");
}
