#include "render/shaders.h"

#include "render/demo.h"
#include "render/quit.h"

namespace {

// The object's log is seen in a debugger only: the message is printed as it stands, "%s" and all.
[[noreturn]] void endWith(const char* message, GLhandleARB object) {
    char log[4096];
    glGetInfoLogARB(object, sizeof log, nullptr, log);
    fatalError(message);
}

GLint objectStatus(GLhandleARB object, GLenum status) {
    GLint value = 0;
    glGetObjectParameterivARB(object, status, &value);
    return value;
}

// Compiles a shader for the program and attaches it; false if it does not compile.
bool attach(GLhandleARB program, GLenum kind, const std::string& source, GLhandleARB* shader,
            GLenum (*check)()) {
    *shader = glCreateShaderObjectARB(kind);
    check();
    const char* text = source.c_str();
    glShaderSourceARB(*shader, 1, &text, nullptr);
    check();
    glCompileShaderARB(*shader);
    check();
    if (objectStatus(*shader, GL_OBJECT_COMPILE_STATUS_ARB) == 0) return false;
    glAttachObjectARB(program, *shader);
    return true;
}

GLenum checkNothing() {
    return GL_NO_ERROR;
}

GLint uniformLocation(GLhandleARB program, const char* uniform) {
    return glGetUniformLocationARB(program, uniform);
}

}  // namespace

GLenum checkGlError() {
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) fatalError("GL error 0x%04x!");
    return error;
}

BuiltProgram buildProgram(const std::optional<std::string>& vertex,
                          const std::optional<std::string>& fragment, GLenum (*check)()) {
    BuiltProgram built;
    check();
    built.program = glCreateProgramObjectARB();
    check();
    built.failed = BuiltProgram::vertexCompiler;
    if (vertex && !attach(built.program, GL_VERTEX_SHADER_ARB, *vertex, &built.vertexShader, check))
        return built;
    built.failed = BuiltProgram::fragmentCompiler;
    if (fragment &&
        !attach(built.program, GL_FRAGMENT_SHADER_ARB, *fragment, &built.fragmentShader, checkNothing))
        return built;
    glLinkProgramARB(built.program);
    built.linkStatus = objectStatus(built.program, GL_OBJECT_LINK_STATUS_ARB);
    built.failed = built.linkStatus == 0 ? BuiltProgram::linker : BuiltProgram::nothing;
    return built;
}

int Demo::loadShader(const char* base, const char* name) {
    std::optional<std::string> sources[2];
    for (int i = 0; i < 2; i++) sources[i] = readWholeFile((std::string(base) + shaderEndings[i]).c_str());
    const BuiltProgram built = buildProgram(sources[0], sources[1], checkGlError);
    shaders[name] = built.program;
    if (built.failed == BuiltProgram::vertexCompiler)
        endWith("Error compiling vertex shader: %s", built.vertexShader);
    // Kept: the vertex shader's log. Only whoever looks at it in a debugger would notice.
    if (built.failed == BuiltProgram::fragmentCompiler)
        endWith("Error compiling fragment shader: %s", built.vertexShader);
    if (built.failed == BuiltProgram::linker) endWith("Error linking shaders: %s", built.program);
    return built.linkStatus;
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
