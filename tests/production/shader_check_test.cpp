// The check of the shaders when the data is made.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>

#include "production/shaders/shader_check.h"
#include "tests/scratch.h"

namespace {

constexpr char vertex[] =
    "#version 110\nvarying vec2 a;\nvoid main() { gl_Position = ftransform(); a = vec2(1.0); }\n";
constexpr char fragment[] =
    "#version 110\nvarying vec2 a;\nvoid main() { gl_FragColor = vec4(a, 0.0, 1.0); }\n";

std::string faultsOf(const std::string& vertexText, const std::string& fragmentText) {
    const ScratchDirectory scratch;
    const std::string root = scratch.path.string() + "/";
    std::string faults =
        shaderFaults(scratch.write("a b'.vs", vertexText), scratch.write("a b'.fs", fragmentText));
    for (size_t at; (at = faults.find(root)) != std::string::npos;) faults.erase(at, root.size());
    return faults;
}

TEST(ShaderCheck, NamesFileAndLineOfWhatIsWrongInAShader) {
    EXPECT_EQ(faultsOf(vertex, fragment), "");
    EXPECT_EQ(faultsOf(vertex, "#version 110\nvoid main() {\n  gl_FragColor = vec4(glow);\n}\n")
                  .find("a b'.fs:3: 'glow' : undeclared identifier"),
              0u);
    EXPECT_EQ(faultsOf("#version 110\n\nvoid main() { gl_Position = ftransform() }\n", fragment)
                  .find("a b'.vs:3: '' :  syntax error"),
              0u);
    // Later versions of the language convert integers, this one doesn't; without a version it is the same
    // one.
    for (const std::string begin : {"#version 110\n", "\n"})
        EXPECT_EQ(faultsOf(vertex, begin + "void main() { float x = 1; gl_FragColor = vec4(x); }\n")
                      .find("a b'.fs:2: "),
                  0u);
    // Each by itself is right.
    const std::string apart =
        faultsOf(vertex, "#version 110\nvarying vec3 a;\nvoid main() { gl_FragColor = a.xyzz; }\n");
    EXPECT_EQ(apart.find("a b'.vs and a b'.fs: Linking"), 0u) << apart;
    EXPECT_NE(faultsOf(vertex, ""), "");
}

TEST(ShaderCheck, MissesNoCompilerButSaysSo) {
    // The GL driver's closing crashes in a mere fork, which lacks its threads.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("PATH", "/nowhere", 1);
            for (int i = 0; i < 2; i++)
                if (!shaderFaults("a.vs", "a.fs").empty()) exit(1);
            exit(0);
        },
        testing::ExitedWithCode(0), "^The shaders are not checked: [^\n]*\n$");
}

}  // namespace
