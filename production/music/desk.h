// The composer's desk: a few bars, some of the parts, each part by itself, or what a reader of the score
// would remark, within seconds.
#pragma once

#include <string>
#include <vector>

constexpr char deskUsage[] =
    "       forge --hear FILE.wav [--bars FROM-TO] [--parts NAME,...]   (bar TO is where it ends)\n"
    "       forge --stems FOLDER\n"
    "       forge --check\n";

// True where the words are for the desk.
bool isForDesk(const std::vector<std::string>& words);

// Does what the words say and returns the exit status: 1, after a line, where they or the score can't be
// followed.
int runDesk(const std::vector<std::string>& words);
