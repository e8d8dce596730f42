#include "tools/rehearse/program_build.h"

#include <regex>
#include <sstream>

namespace {

std::string logOf(GLhandleARB object) {
    GLint length = 0;
    glGetObjectParameterivARB(object, GL_OBJECT_INFO_LOG_LENGTH_ARB, &length);
    std::string log(size_t(length) + 1, 0);
    glGetInfoLogARB(object, length + 1, &length, log.data());
    log.resize(size_t(length));
    return log;
}

bool succeeded(GLhandleARB object, GLenum status) {
    GLint value = 0;
    glGetObjectParameterivARB(object, status, &value);
    return value != 0;
}

// False with the compiler's words in `problem`. The shader goes with the program.
bool attach(GLhandleARB program, GLenum kind, const std::optional<ShaderText>& source, std::string* problem) {
    if (!source) return true;
    const GLhandleARB shader = glCreateShaderObjectARB(kind);
    const GLcharARB* text = source->text.c_str();
    glShaderSourceARB(shader, 1, &text, nullptr);
    glCompileShaderARB(shader);
    const bool compiled = succeeded(shader, GL_OBJECT_COMPILE_STATUS_ARB);
    if (!compiled) *problem = withFileAndLine(source->file, logOf(shader));
    glAttachObjectARB(program, shader);
    glDeleteObjectARB(shader);
    return compiled;
}

}  // namespace

std::string withFileAndLine(const std::string& file, const std::string& log) {
    static const std::regex withColumn(R"(^\d+:(\d+)\((\d+)\): ?)"), inBrackets(R"(^\d+\((\d+)\) ?: ?)"),
        afterWord(R"(^(ERROR|WARNING): \d+:(\d+): ?)");
    std::string result, before;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) {
        // A linker may say the same for every use, and set dots between.
        line.erase(0, line.find_first_not_of('.'));
        if (line.empty() || line[0] == '\0' || line == before) continue;
        before = line;
        std::string told = std::regex_replace(line, withColumn, file + ":$1:$2: ");
        if (told == line) told = std::regex_replace(line, inBrackets, file + ":$1: ");
        if (told == line) told = std::regex_replace(line, afterWord, file + ":$2: $1: ");
        if (told == line) told = file + ": " + line;
        result += result.empty() ? told : "\n" + told;
    }
    return result.empty() ? file + ": the compiler turns it down without a word" : result;
}

BuiltProgram buildProgram(const std::optional<ShaderText>& vertex,
                          const std::optional<ShaderText>& fragment) {
    const GLhandleARB program = glCreateProgramObjectARB();
    std::string problem;
    if (attach(program, GL_VERTEX_SHADER_ARB, vertex, &problem) &&
        attach(program, GL_FRAGMENT_SHADER_ARB, fragment, &problem)) {
        glLinkProgramARB(program);
        if (succeeded(program, GL_OBJECT_LINK_STATUS_ARB) || !(vertex || fragment)) return {program, ""};
        problem = withFileAndLine((fragment ? fragment : vertex)->file, logOf(program));
    }
    glDeleteObjectARB(program);
    return {0, problem};
}

void deleteProgram(GLhandleARB program) {
    if (!program) return;
    GLhandleARB shaders[8];
    GLsizei count = 0;
    glGetAttachedObjectsARB(program, 8, &count, shaders);
    // Those of the show's own start are kept by their names too.
    for (GLsizei i = 0; i < count; i++) glDeleteObjectARB(shaders[i]);
    glDeleteObjectARB(program);
}
