// Start-up to the first picture and to the first frame, against the bare calls that it can't do without.
#include <GL/glew.h>
#include <GL/glu.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "app/startup.h"
#include "app/window.h"
#include "bench/bench.h"
#include "image/image.h"
#include "render/demo.h"
#include "render/screen.h"
#include "script/resources.h"

namespace fs = std::filesystem;

namespace {

constexpr double goal = 1.2;

std::string wholeFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

// Decoding is not all that a texture needs: its mipmaps are the library's work too.
void bareTexture(const std::string& path) {
    Image image;
    if (loadImage(path.c_str(), &image, 0) != 0) return;
    const GLenum format = image.channels == 4 ? GL_RGBA : GL_RGB;
    GLuint texture;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    gluBuild2DMipmaps(GL_TEXTURE_2D, format, image.width, image.height, format, GL_UNSIGNED_BYTE,
                      image.pixels);
    glDeleteTextures(1, &texture);
    delete[] image.pixels;
}

// A model's file goes to GL whole, which is about what its buffers hold.
void bareModel(const std::string& path) {
    const std::string content = wholeFile(path);
    GLuint buffer;
    glGenBuffersARB(1, &buffer);
    glBindBufferARB(GL_ARRAY_BUFFER_ARB, buffer);
    glBufferDataARB(GL_ARRAY_BUFFER_ARB, GLsizeiptrARB(content.size()), content.data(), GL_STATIC_DRAW_ARB);
    glDeleteBuffersARB(1, &buffer);
}

void bareShader(GLhandleARB program, GLenum kind, const std::string& path) {
    const std::string source = wholeFile(path);
    const GLcharARB* text = source.c_str();
    const GLhandleARB shader = glCreateShaderObjectARB(kind);
    glShaderSourceARB(shader, 1, &text, nullptr);
    glCompileShaderARB(shader);
    glAttachObjectARB(program, shader);
}

void bareProgram(fs::path path) {
    const GLhandleARB program = glCreateProgramObjectARB();
    bareShader(program, GL_VERTEX_SHADER_ARB, path.replace_extension(".vs"));
    bareShader(program, GL_FRAGMENT_SHADER_ARB, path.replace_extension(".fs"));
    glLinkProgramARB(program);
}

double bareLoadSeconds() {
    const double start = wallSeconds();
    for (const fs::directory_entry& entry : fs::directory_iterator("data/shaders"))
        if (entry.path().extension() == ".vs") bareProgram(entry.path());
    for (const fs::directory_entry& entry : fs::directory_iterator("data")) {
        const std::string ending = entry.path().extension();
        if (ending == ".AML") bareModel(entry.path());
        if (ending == ".png" || ending == ".jpg") bareTexture(entry.path());
    }
    glFinish();
    return wallSeconds() - start;
}

double loadingScreenSeconds() {
    const double start = wallSeconds();
    for (int i = 0; i < loadingScreenCount(); i++) demo->drawLoadingScreen();
    glFinish();
    return wallSeconds() - start;
}

}  // namespace

Figures benchStartUp(const std::string&) {
    keepFramesUnscaled();
    const double start = wallSeconds();
    openWindow(false);
    startDemo();
    demo->drawLoadingScreen();
    glFinish();
    const double firstPicture = wallSeconds() - start;

    const double opened = wallSeconds();
    initialiseDemo();
    glFinish();
    const double loaded = wallSeconds() - opened;
    const double bare = bareLoadSeconds() + loadingScreenSeconds();
    return {{"start to the first picture", firstPicture * 1000, "ms"},
            {"loading to the first frame", loaded * 1000, "ms", bare * 1000, Goal::ratioAtMost, goal}};
}
