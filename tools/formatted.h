// Texts by the formats of printf.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

// At most 255 characters of it.
[[gnu::format(printf, 1, 2)]] inline std::string formatted(const char* format, ...) {
    char text[256];
    va_list arguments;
    va_start(arguments, format);
    vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    return text;
}
