#include "tools/capture/soundtrack.h"

#include "tools/process.h"

Soundtrack::Soundtrack(const ShowFile& music)
    : path(fileInMemory(music.bytes ? *music.bytes : "")), hash(music.hash), problem(music.problem) {}
