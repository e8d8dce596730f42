// copy_shaders PRODUCTION FOLDER -o FILE: copies the shaders below PRODUCTION to FOLDER if all of them are
// right, and writes FILE then.
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "production/shaders/shader_check.h"
#include "production/shaders/shaders.h"

namespace fs = std::filesystem;

int main(int count, char** words) {
    if (count != 5) {
        fputs("usage: copy_shaders PRODUCTION FOLDER -o FILE\n", stderr);
        return 1;
    }
    const fs::path production = words[1], folder = words[2];
    std::string faults;
    for (const ShaderProduct& shader : shaderProducts) {
        if (std::string(shader.source).ends_with(".fs"))
            faults += shaderFaults(production / shader.partner, production / shader.source);
    }
    fputs(faults.c_str(), stderr);
    if (!faults.empty()) return 1;
    for (const ShaderProduct& shader : shaderProducts) {
        const fs::path to = folder / shader.file;
        std::error_code error;
        fs::create_directories(to.parent_path(), error);
        fs::copy_file(production / shader.source, to, fs::copy_options::overwrite_existing, error);
        if (!error) continue;
        fprintf(stderr, "%s: can't copy %s: %s\n", to.c_str(), shader.source, error.message().c_str());
        return 1;
    }
    return std::ofstream(words[4]).is_open() ? 0 : 1;
}
