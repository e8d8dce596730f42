// The texture registry: what loading makes of files, good and bad, and what look-ups do.

#include "image/image.h"
#include "tests/gl_window.h"
#include "tests/scratch.h"

namespace {

class Textures : public GlWindow {
public:
    ScratchDirectory scratch;

    // A PNG of one colour, with as many channels as the colour has values.
    std::string writeSolid(const std::string& name, int width, int height,
                           const std::vector<uint8_t>& colour) {
        const int channels = int(colour.size());
        const Image image = createImage(width, height, channels);
        for (int i = 0; i < width * height * channels; i++) image.pixels[i] = colour[i % channels];
        writePng(scratch.file(name).c_str(), width, height, channels, channels, image.stride, image.pixels);
        delete[] image.pixels;
        return scratch.file(name);
    }

    int load(const std::string& path, const char* name, GLenum wrapT = GL_REPEAT) {
        return demo->loadTexture(path.c_str(), name, GL_REPEAT, wrapT);
    }

    static GLint parameter(GLenum name) {
        GLint value = 0;
        glGetTexParameteriv(GL_TEXTURE_2D, name, &value);
        return value;
    }
};

TEST_F(Textures, LoadedPicturesKeepTheirColoursAndMipmaps) {
    // Three bytes times 33 is no multiple of GL's row alignment.
    EXPECT_EQ(load(writeSolid("rgb.png", 33, 17, {200, 100, 50}), "rgb", GL_CLAMP_TO_EDGE), 0);
    EXPECT_EQ(load(writeSolid("rgba.png", 64, 64, {10, 20, 30, 40}), "rgba"), 1);
    EXPECT_EQ(demo->nextTexture, 2);
    EXPECT_EQ(demo->textures[0].width, 33);
    EXPECT_EQ(demo->textures[0].textureHeight, 17);
    EXPECT_EQ(stateOf(GL_UNPACK_ALIGNMENT), 4);

    const Screen rgb = readTexture("rgb");
    EXPECT_EQ(rgb.width, 32) << "rescaled to a power of two";
    for (const Pixel& p : rgb.pixels) ASSERT_EQ(p, (Pixel{200, 100, 50, 255}));
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_S), GL_REPEAT);
    EXPECT_EQ(parameter(GL_TEXTURE_WRAP_T), GL_CLAMP_TO_EDGE);
    EXPECT_EQ(parameter(GL_TEXTURE_MIN_FILTER), GL_LINEAR_MIPMAP_LINEAR);
    EXPECT_EQ(parameter(GL_TEXTURE_MAG_FILTER), GL_LINEAR);
    GLint smallest;
    glGetTexLevelParameteriv(GL_TEXTURE_2D, 5, GL_TEXTURE_WIDTH, &smallest);
    EXPECT_EQ(smallest, 1);
    EXPECT_EQ(readTexture("rgba").at(63, 63), (Pixel{10, 20, 30, 40}));
}

TEST_F(Textures, FirstRowOfAFileIsTheFirstRowOfTheTexture) {
    const Image image = createImage(2, 2, 3);
    const uint8_t topRedBottomBlue[] = {255, 0, 0, 255, 0, 0, 0, 0, 255, 0, 0, 255};
    std::copy(std::begin(topRedBottomBlue), std::end(topRedBottomBlue), image.pixels);
    const std::string path = scratch.file("rows.png");
    writePng(path.c_str(), 2, 2, 3, 3, 6, image.pixels);
    delete[] image.pixels;
    load(path, "rows");
    EXPECT_EQ(readTexture("rows").at(0, 0), (Pixel{255, 0, 0, 255}));
    EXPECT_EQ(readTexture("rows").at(1, 1), (Pixel{0, 0, 255, 255}));
}

TEST_F(Textures, ASecondTextureOfANameTakesItOver) {
    load(writeSolid("a.png", 8, 8, {1, 2, 3}), "same");
    load(writeSolid("b.png", 8, 8, {4, 5, 6}), "same");
    EXPECT_EQ(demo->textureIndex("same"), 1);
    EXPECT_NE(demo->textures[0].texture, 0u) << "the first one lives on without a name";
    EXPECT_EQ(readTexture("same").at(0, 0).r, 4);
}

using TexturesDeathTest = Textures;

TEST_F(TexturesDeathTest, FilesThatAreNoTextureEndTheProgram) {
    const auto ended = testing::ExitedWithCode(0);
    const char* const message = "error: File \\[%s\\] not found\\.";
    EXPECT_EXIT(load(scratch.file("missing.png"), "x"), ended, message);
    EXPECT_EXIT(load(scratch.write("kind.gif", "GIF89a"), "x"), ended, message);
    EXPECT_EXIT(load(scratch.write("broken.png", "\x89PNG\r\n\x1a\nand no more"), "x"), ended, message);
    EXPECT_EXIT(load(writeSolid("grey.png", 8, 8, {7}), "x"), ended, message) << "one channel";
    const std::string deep = contentOf("tests/fuzz/kept/png/colour of 16 bits");
    EXPECT_EXIT(load(scratch.write("deep.png", deep), "x"), ended, message);
}

}  // namespace
