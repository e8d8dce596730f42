#include "tools/loading/program_build.h"

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

std::optional<std::string> textOf(const std::optional<ShaderText>& source) {
    return source ? std::optional(source->text) : std::nullopt;
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

ProgramBuild buildProgram(const std::optional<ShaderText>& vertex,
                          const std::optional<ShaderText>& fragment) {
    const BuiltProgram built = buildProgram(textOf(vertex), textOf(fragment), glGetError);
    // They go with the program.
    const bool isGood = built.failed == BuiltProgram::nothing || !(vertex || fragment);
    ProgramBuild build = {isGood ? built.program : 0, "", ""};
    if (!isGood) {
        const bool inVertex = built.failed == BuiltProgram::vertexCompiler || !fragment;
        build.file = (inVertex ? vertex : fragment)->file;
        build.problem = withFileAndLine(build.file, logOf(built.failed == BuiltProgram::linker ? built.program
                                                          : inVertex ? built.vertexShader
                                                                     : built.fragmentShader));
        glDeleteObjectARB(built.program);
    }
    for (const GLhandleARB shader : {built.vertexShader, built.fragmentShader})
        if (shader) glDeleteObjectARB(shader);
    return build;
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
