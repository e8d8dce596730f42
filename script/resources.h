// Everything the show loads, in the order it is loaded; the loading screen is drawn after every item.
#pragma once

#include <GL/glew.h>

#include <span>

struct EffectBase;

struct MeshRow {
    const char* path;
    const char* key;
    float reach;          // units: how far from the origin its scenes leave room
    bool traced = false;  // beams bounce off it, so each face counts
    void (*afterwards)() = nullptr;
};

// Width and height are what a screen quad takes the picture for, whatever the file's own size.
struct TextureRow {
    const char* path;
    const char* key;
    GLenum wrapS, wrapT;
    int width, height;
};

struct EffectRow {
    const char* key;
    EffectBase* (*create)();
};

struct ShaderRow {
    const char* base;
    const char* key;
};

// The tables. The first texture is the loading screen's picture: loaded before everything else, so that it is
// record 0.
std::span<const MeshRow> meshRows();
std::span<const TextureRow> textureRows();
std::span<const EffectRow> effectRows();
std::span<const ShaderRow> shaderRows();

// How a row comes into `demo`: from its file, which ends the program where it can't be read, unless a tool
// has another way.
struct Loader {
    virtual ~Loader() = default;
    virtual void load(const MeshRow& row);
    virtual void load(const TextureRow& row);
    virtual void load(const ShaderRow& row);
};

// Everything, with the loading screen after every item and after every table.
void loadResources(Loader& loader);

void deleteEffects();

// What effects carry from frame to frame, put back to what it is when the music starts: each is made anew by
// its row, and random numbers come in the order in which they come after the loading.
void restartEffects();
