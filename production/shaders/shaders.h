// The shaders of data/, which are copied as they stand below production/ when the compiler has nothing
// against the program that they are part of.
#pragma once

struct ShaderProduct {
    const char* file;     // path below data/
    const char* source;   // path below production/
    const char* partner;  // the other shader of the program, below production/
};

inline constexpr ShaderProduct shaderProducts[] = {
    {"shaders/smoke.vs", "shaders/smoke.vs", "shaders/smoke.fs"},
    {"shaders/smoke.fs", "shaders/smoke.fs", "shaders/smoke.vs"},
    {"shaders/smoke2.vs", "shaders/smoke2.vs", "shaders/smoke2.fs"},
    {"shaders/smoke2.fs", "shaders/smoke2.fs", "shaders/smoke2.vs"},
    {"shaders/distort.vs", "shaders/distort.vs", "shaders/distort.fs"},
    {"shaders/distort.fs", "shaders/distort.fs", "shaders/distort.vs"},
    {"shaders/boom.vs", "shaders/picture.vs", "shaders/boom.fs"},
    {"shaders/boom.fs", "shaders/boom.fs", "shaders/picture.vs"},
    {"shaders/antiariel.vs", "shaders/picture.vs", "shaders/antiariel.fs"},
    {"shaders/antiariel.fs", "shaders/antiariel.fs", "shaders/picture.vs"},
};
