#include "tools/rehearse/uniforms.h"

#include <iterator>
#include <string>

#include "app/startup.h"
#include "tools/loading/program_build.h"

namespace {

struct Uniform {
    std::string name;
    GLenum type;
    GLint location;
};

// Each element of an array by itself. Samplers are left out: nothing sets them.
std::vector<Uniform> floatUniforms(GLhandleARB program) {
    std::vector<Uniform> uniforms;
    GLint count = 0;
    glGetObjectParameterivARB(program, GL_OBJECT_ACTIVE_UNIFORMS_ARB, &count);
    for (GLint i = 0; i < count; i++) {
        GLcharARB text[256];
        GLint size = 0;
        GLenum type = 0;
        glGetActiveUniformARB(program, GLuint(i), sizeof text, nullptr, &size, &type, text);
        if (type != GL_FLOAT && type != GL_FLOAT_VEC2_ARB && type != GL_FLOAT_VEC3_ARB &&
            type != GL_FLOAT_VEC4_ARB)
            continue;
        std::string name = text;
        name = name.substr(0, name.find("[0]"));
        for (GLint element = 0; element < size; element++) {
            const std::string full = size > 1 ? name + "[" + std::to_string(element) + "]" : name;
            const GLint location = glGetUniformLocationARB(program, full.c_str());
            if (location >= 0) uniforms.push_back({full, type, location});  // GL's own have no place
        }
    }
    return uniforms;
}

// To the program in use.
void set(const Uniform& uniform, const GLfloat* values) {
    if (uniform.type == GL_FLOAT) glUniform1fvARB(uniform.location, 1, values);
    if (uniform.type == GL_FLOAT_VEC2_ARB) glUniform2fvARB(uniform.location, 1, values);
    if (uniform.type == GL_FLOAT_VEC3_ARB) glUniform3fvARB(uniform.location, 1, values);
    if (uniform.type == GL_FLOAT_VEC4_ARB) glUniform4fvARB(uniform.location, 1, values);
}

}  // namespace

void clearUniforms(GLhandleARB program) {
    if (!program) return;
    constexpr GLfloat zeros[4] = {};
    glUseProgramObjectARB(program);
    for (const Uniform& uniform : floatUniforms(program)) set(uniform, zeros);
    glUseProgramObjectARB(0);
}

void replaceProgram(GLhandleARB* current, GLhandleARB fresh) {
    glUseProgramObjectARB(fresh);
    const std::vector<Uniform> known = *current ? floatUniforms(*current) : std::vector<Uniform>();
    for (const Uniform& uniform : floatUniforms(fresh)) {
        for (const Uniform& old : known) {
            if (old.name != uniform.name || old.type != uniform.type) continue;
            GLfloat values[4];
            glGetUniformfvARB(*current, old.location, values);
            set(uniform, values);
        }
    }
    glUseProgramObjectARB(0);
    deleteProgram(*current);
    *current = fresh;
    centreBoom();
}

void setUniform(GLhandleARB program, const char* name, const std::vector<float>& values) {
    constexpr GLenum types[] = {GL_FLOAT, GL_FLOAT_VEC2_ARB, GL_FLOAT_VEC3_ARB, GL_FLOAT_VEC4_ARB};
    const GLint location = glGetUniformLocationARB(program, name);
    if (location < 0 || values.size() > std::size(types)) return;
    glUseProgramObjectARB(program);
    set({name, types[values.size() - 1], location}, values.data());
    glUseProgramObjectARB(0);
}
