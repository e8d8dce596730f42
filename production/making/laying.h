// Lays what was made into the data set: whole files, all at once, while nobody loads it, and never over a
// file that an author put there.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

// A folder that its holder has to itself, or shares with others that only read, as long as this lives. Waits
// until it can be had, after a line on standard error that says for whom. A folder that isn't there, or that
// the system can't lock, is not held.
struct FolderLock {
    enum Use { reading, writing };

    FolderLock(const std::string& folder, Use use);
    ~FolderLock() { release(); }
    void release();
    FolderLock& operator=(FolderLock&&) = delete;

private:
    int descriptor = -1;
};

struct Made {
    std::filesystem::path path;  // where it lies now
    std::string file;            // where it goes: the path below the folder
};

// Whether what lies there, if anything, was put there by an author; and the line that says so.
bool isAuthors(const std::filesystem::path& folder, const std::string& file);
std::string keptLine(const std::filesystem::path& folder, const std::string& file);

// Lays those that differ into `folder`, each with a line "laid FILE" on standard output. Its .made remembers
// the hash of what was laid: what is not in there, or not as it says, is the author's and stays, with a line
// "kept FILE". Stopped at any moment, every file is a whole one and still known as ours. False, after a line
// on standard error and without anything laid, if a file can't be read or written.
bool lay(const std::vector<Made>& made, const std::filesystem::path& folder);
