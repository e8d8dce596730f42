#include "render/shaders.h"

#include <cstdio>

#include "render/demo.h"
#include "render/quit.h"

namespace {

constexpr int logSize = 4096;

// The log is seen in a debugger only: the messages below are printed as they stand, "%s" and all.
void fetchLog(GLhandleARB object, char (&log)[logSize]) {
    glGetInfoLogARB(object, logSize, nullptr, log);
}

GLint objectStatus(GLhandleARB object, GLenum status) {
    GLint value = 0;
    glGetObjectParameterivARB(object, status, &value);
    return value;
}

// Compiles BASE.vs into the program, checking GL after each step. Returns the shader, 0 without a file.
GLhandleARB attachVertexShader(GLhandleARB program, const std::string& base) {
    const auto source = readWholeFile((base + ".vs").c_str());
    if (!source) return 0;

    const GLhandleARB shader = glCreateShaderObjectARB(GL_VERTEX_SHADER_ARB);
    checkGlError();
    const char* text = source->c_str();
    glShaderSourceARB(shader, 1, &text, nullptr);
    checkGlError();
    glCompileShaderARB(shader);
    checkGlError();
    if (objectStatus(shader, GL_OBJECT_COMPILE_STATUS_ARB) == 0) {
        char log[logSize];
        fetchLog(shader, log);
        fatalError("Error compiling vertex shader: %s");
    }
    glAttachObjectARB(program, shader);
    return shader;
}

void attachFragmentShader(GLhandleARB program, const std::string& base, GLhandleARB vertexShader) {
    const auto source = readWholeFile((base + ".fs").c_str());
    if (!source) return;

    const GLhandleARB shader = glCreateShaderObjectARB(GL_FRAGMENT_SHADER_ARB);
    const char* text = source->c_str();
    glShaderSourceARB(shader, 1, &text, nullptr);
    glCompileShaderARB(shader);
    if (objectStatus(shader, GL_OBJECT_COMPILE_STATUS_ARB) == 0) {
        char log[logSize];
        // Kept: the vertex shader's log. Only whoever looks at it in a debugger would notice.
        fetchLog(vertexShader, log);
        fatalError("Error compiling fragment shader: %s");
    }
    glAttachObjectARB(program, shader);
}

GLint uniformLocation(GLhandleARB program, const char* uniform) {
    return glGetUniformLocationARB(program, uniform);
}

}  // namespace

std::optional<std::string> readWholeFile(const char* path) {
    FILE* file = fopen(path, "rb");
    if (!file) return std::nullopt;
    std::string content;
    char block[4096];
    while (const size_t count = fread(block, 1, sizeof block, file)) content.append(block, count);
    fclose(file);
    return content;
}

GLenum checkGlError() {
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) fatalError("GL error 0x%04x!");
    return error;
}

int Demo::loadShader(const char* base, const char* name) {
    checkGlError();
    const GLhandleARB program = glCreateProgramObjectARB();
    checkGlError();
    shaders[name] = program;

    const GLhandleARB vertexShader = attachVertexShader(program, base);
    attachFragmentShader(program, base, vertexShader);

    glLinkProgramARB(program);
    const GLint linked = objectStatus(program, GL_OBJECT_LINK_STATUS_ARB);
    if (linked == 0) {
        char log[logSize];
        fetchLog(program, log);
        fatalError("Error linking shaders: %s");
    }
    return linked;
}

void Demo::useShader(const char* name) {
    glUseProgramObjectARB(name ? shaders[name] : 0);
}

void Demo::setUniform1f(const char* shader, const char* uniform, float x) {
    glUniform1fARB(uniformLocation(shaders[shader], uniform), x);
}

void Demo::setUniform2f(const char* shader, const char* uniform, float x, float y) {
    glUniform2fARB(uniformLocation(shaders[shader], uniform), x, y);
}

void Demo::setUniform3f(const char* shader, const char* uniform, float x, float y, float z) {
    glUniform3fARB(uniformLocation(shaders[shader], uniform), x, y, z);
}

void Demo::setUniform4f(const char* shader, const char* uniform, float x, float y, float z, float w) {
    glUniform4fARB(uniformLocation(shaders[shader], uniform), x, y, z, w);
}

void Demo::setUniformArray(const char* shader, const char* uniform, int count, const float* values) {
    const GLint location = uniformLocation(shaders[shader], uniform);
    if (count % 4 == 0) {
        glUniform4fvARB(location, count / 4, values);
    } else if (count % 3 == 0) {
        glUniform3fvARB(location, count / 3, values);
    } else if (count % 2 == 0) {
        glUniform2fvARB(location, count / 2, values);
    } else {
        glUniform1fvARB(location, count, values);
    }
}
