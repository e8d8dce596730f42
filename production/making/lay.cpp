// lay FROM TO FILE...: lays what was made below FROM into the data set TO.
#include <cstdio>

#include "production/making/laying.h"

int main(int count, char** words) {
    if (count < 3) {
        fputs("usage: lay FROM TO FILE...\n", stderr);
        return 1;
    }
    std::vector<Made> made;
    for (int i = 3; i < count; i++) made.push_back({std::filesystem::path(words[1]) / words[i], words[i]});
    return lay(made, words[2]) ? 0 : 1;
}
