// Texts by the formats of printf.
#pragma once

#include <cstdarg>
#include <cstdio>
#include <string>

[[gnu::format(printf, 1, 2)]] inline std::string formatted(const char* format, ...) {
    va_list arguments, again;
    va_start(arguments, format);
    va_copy(again, arguments);
    std::string text(size_t(vsnprintf(nullptr, 0, format, arguments)), '\0');
    vsnprintf(text.data(), text.size() + 1, format, again);
    va_end(again);
    va_end(arguments);
    return text;
}
