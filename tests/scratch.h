// Files of a test's own, in a directory that goes away with it.
#pragma once

#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include "tools/whole_file.h"

struct ScratchDirectory {
    std::filesystem::path path;

    ScratchDirectory() {
        std::string name = std::filesystem::temp_directory_path() / "valojuovaXXXXXX";
        path = mkdtemp(name.data());
    }
    ~ScratchDirectory() {
        std::error_code left;  // by a straggler that a test killed: no fault of what is tested
        std::filesystem::remove_all(path, left);
    }
    ScratchDirectory& operator=(ScratchDirectory&&) = delete;

    std::string file(const std::string& name) const { return path / name; }

    // Writes a file, making the directories on its way, and returns its path.
    std::string write(const std::string& name, const std::string& content) const {
        std::filesystem::create_directories((path / name).parent_path());
        std::ofstream(path / name, std::ios::binary) << content;
        return file(name);
    }
};

// Makes a directory the working directory, as long as it lives.
struct WorkingDirectory {
    std::filesystem::path previous = std::filesystem::current_path();

    explicit WorkingDirectory(const std::filesystem::path& path) { std::filesystem::current_path(path); }
    ~WorkingDirectory() { std::filesystem::current_path(previous); }
    WorkingDirectory& operator=(WorkingDirectory&&) = delete;
};
