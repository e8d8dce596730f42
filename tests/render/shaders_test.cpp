// GLSL programs: built from whatever of their two files exists, reached by name, fed with uniforms.
#include "render/shaders.h"

#include "tests/gl_window.h"
#include "tests/scratch.h"

namespace {

class Shaders : public GlWindow {
public:
    ScratchDirectory scratch;

    // Loads a program from sources; an empty one is left out. The name is also the files'.
    int load(const char* name, const std::string& vertex, const std::string& fragment) {
        if (!vertex.empty()) scratch.write(std::string(name) + ".vs", vertex);
        if (!fragment.empty()) scratch.write(std::string(name) + ".fs", fragment);
        return demo->loadShader(scratch.file(name).c_str(), name);
    }

    static Pixel drawnPixel() {
        placeCamera();
        glBegin(GL_QUADS);
        glVertex3f(-9, -9, 0);
        glVertex3f(9, -9, 0);
        glVertex3f(9, 9, 0);
        glVertex3f(-9, 9, 0);
        glEnd();
        return readPixel(400, 300);
    }
};

const char passThrough[] = "void main() { gl_Position = ftransform(); gl_FrontColor = gl_Color; }";

TEST_F(Shaders, MissingSourcesLeaveFixedFunctionInTheirPlace) {
    glColor3f(0, 1, 0);
    EXPECT_EQ(load("both", passThrough, "void main() { gl_FragColor = gl_Color.grba; }"), 1);
    EXPECT_EQ(load("vertex", passThrough, ""), 1);
    EXPECT_EQ(load("fragment", "", "void main() { gl_FragColor = vec4(0.0, 0.0, 1.0, 1.0); }"), 1);
    demo->useShader("both");
    EXPECT_EQ(drawnPixel(), (Pixel{255, 0, 0, 255}));
    demo->useShader("vertex");
    EXPECT_EQ(drawnPixel(), (Pixel{0, 255, 0, 255}));
    demo->useShader("fragment");
    EXPECT_EQ(drawnPixel(), (Pixel{0, 0, 255, 255}));
    demo->useShader();
    EXPECT_EQ(drawnPixel(), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(load("neither", "", ""), 1);
    EXPECT_NE(demo->shaders.at("neither"), 0u);
}

TEST_F(Shaders, AnUnknownNameIsTheFixedFunctionPipeline) {
    load("red", "", "void main() { gl_FragColor = vec4(1.0, 0.0, 0.0, 1.0); }");
    demo->useShader("red");
    demo->useShader("nobody");
    glColor3f(0, 1, 0);
    EXPECT_EQ(drawnPixel(), (Pixel{0, 255, 0, 255}));
    EXPECT_EQ(demo->shaders.count("nobody"), 1u);
}

TEST_F(Shaders, UniformsReachTheProgramInUse) {
    load("u", "",
         "uniform float a; uniform vec2 b; uniform vec3 c; uniform vec4 d;"
         "void main() { gl_FragColor = vec4(a, b.y, c.z, d.w); }");
    demo->useShader("u");
    demo->setUniform1f("u", "a", 0.2f);
    demo->setUniform2f("u", "b", 9, 0.4f);
    demo->setUniform3f("u", "c", 9, 9, 0.6f);
    demo->setUniform4f("u", "d", 9, 9, 9, 0.8f);
    demo->setUniform1f("u", "no such uniform", 5);
    EXPECT_EQ(drawnPixel(), (Pixel{51, 102, 153, 204}));
}

TEST_F(Shaders, ArraysGoAsTheWidestVectorsThatDivideTheirLength) {
    load("arrays", "",
         "uniform vec4 four[3]; uniform vec3 three[2]; uniform vec2 two[1]; uniform float one[5];"
         "void main() { gl_FragColor = vec4(four[2].w, three[1].z, two[0].y, one[4]); }");
    demo->useShader("arrays");
    float values[12];
    for (int i = 0; i < 12; i++) values[i] = float(i + 1) / 15;
    demo->setUniformArray("arrays", "four", 12, values);
    demo->setUniformArray("arrays", "three", 6, values);
    demo->setUniformArray("arrays", "two", 2, values);
    demo->setUniformArray("arrays", "one", 5, values);
    EXPECT_EQ(drawnPixel(), (Pixel{12 * 17, 6 * 17, 2 * 17, 5 * 17}));
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));

    demo->setUniformArray("arrays", "three", 12, values);
    EXPECT_EQ(glGetError(), GLenum(GL_INVALID_OPERATION)) << "twelve floats are never 3-vectors";
}

using ShadersDeathTest = Shaders;

TEST_F(ShadersDeathTest, BrokenSourcesEndTheProgram) {
    const auto ended = testing::ExitedWithCode(0);
    const char main[] = "void main() { gl_FragColor = vec4(1.0); }";
    EXPECT_EXIT(load("v", "no shader", main), ended, "error: Error compiling vertex shader: %s\n");
    EXPECT_EXIT(load("f", "", "no shader"), ended, "error: Error compiling fragment shader: %s\n");
    EXPECT_EXIT(load("l", "varying vec2 x; void main() { x = vec2(0.0); gl_Position = vec4(0.0); }",
                     "varying vec4 x; void main() { gl_FragColor = x; }"),
                ended, "error: Error linking shaders: %s\n");
}

TEST_F(ShadersDeathTest, APendingGlErrorEndsTheProgram) {
    const auto loadAfterError = [this] {
        glEnable(0xffff);
        load("x", "", "");
    };
    EXPECT_EXIT(loadAfterError(), testing::ExitedWithCode(0), "error: GL error 0x%04x!\n");
}

}  // namespace
