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
    const char* name;
};

// For whoever loads single items again.
std::span<const MeshRow> meshRows();
std::span<const TextureRow> textureRows();
std::span<const EffectRow> effectRows();
std::span<const ShaderRow> shaderRows();

void loadMeshes();
void loadTextures();
void createEffects();
void deleteEffects();
void loadShaders();

// What effects carry from frame to frame, put back to what it is when the music starts: each is made anew by
// its row, and random numbers come in the order in which they come after the loading.
void restartEffects();

// The rows of each table. The loading picture, which is there before the others, is in none.
struct ResourceCounts {
    int meshes, textures, effects, shaders;
};
ResourceCounts resourceCounts();

// How often the loading screen is drawn in all, from the first one to the last.
int loadingScreenCount();
