#include "app/messages.h"

#include <cstdarg>
#include <cstdio>

void MessageList::post(const char* format, ...) {
    auto line = std::make_unique<char[]>(lineSize);
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(line.get(), lineSize, format, arguments);
    va_end(arguments);

    if (lines.size() == maxLines) lines.erase(lines.begin());
    lines.push_back(std::move(line));
}
