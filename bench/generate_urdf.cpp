// Writes a robot description of LINKS links in a bushy tree to standard output, for the comparison with
// check_urdf:
//
//     generate_urdf LINKS

#include <cstdio>
#include <cstdlib>

int main(int argumentCount, char** arguments) {
    const int linkCount = argumentCount == 2 ? std::atoi(arguments[1]) : 0;
    if (linkCount < 1) {
        std::fputs("Usage: generate_urdf LINKS\n", stderr);
        return 1;
    }
    std::puts("<?xml version=\"1.0\"?>\n<robot name=\"family\">\n  <link name=\"link_0\"/>");
    for (int i = 1; i < linkCount; ++i) {
        std::printf("  <link name=\"link_%d\"/>\n", i);
        std::printf("  <joint name=\"joint_%d\" type=\"revolute\">\n", i);
        std::printf("    <parent link=\"link_%d\"/>\n    <child link=\"link_%d\"/>\n", (i - 1) / 4, i);
        std::printf("    <origin xyz=\"%.6f %.6f 0.25\" rpy=\"%.6f 0 %.6f\"/>\n", 0.001 * (i % 97),
                    -0.002 * (i % 89), 0.01 * (i % 83), -0.01 * (i % 79));
        std::printf("    <axis xyz=\"1 0 0\"/>\n");
        std::printf("    <limit lower=\"%.4f\" upper=\"%.4f\" effort=\"10\" velocity=\"2\"/>\n  </joint>\n",
                    -0.01 * (i % 73), 0.01 * (i % 71));
    }
    std::puts("</robot>");
}
