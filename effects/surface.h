// How models look: materials, lights, and the env-mapped hull that most of them wear, a surface texture on
// unit 0 with a reflection added from a sphere map on unit 1.
#pragma once

#include "render/demo.h"

struct Material {
    float ambient[4];
    float diffuse[4];
    float specular[4];
    float shininess;
};

struct LightColours {
    float ambient[4];
    float diffuse[4];
    float specular[4];
};

constexpr Material hullMaterial = {{0, 0, 0, 1}, {0.5f, 0.5f, 0.5f, 1}, {1, 1, 1, 1}, 20};

// `face`: GL_FRONT, GL_BACK or GL_FRONT_AND_BACK.
void setMaterial(GLenum face, const Material& material);

// Straight to GL, so in force from here to the next housekeeping, which applies the light's own record.
void setLightColours(GLenum light, const LightColours& colours);

// Switches a light on in its record, which GL sees from the next housekeeping on; keeps the position's w.
void placeLight(Light& light, float x, float y, float z);

// Texture coordinates S and T of the active unit: the reflection seen at each point.
void generateSphereMap();

// Selects `unit`, switches its texturing and generated coordinates off, and leaves it selected.
void stopGeneratedTexture(GLenum unit);

// Expects unit 0 selected and leaves it so; whether unit 0 is textured is the caller's business.
void beginHull(Demo& demo, const char* surface = "shiptex", const char* reflection = "envmap");

// Leaves unit 0 selected, textured and modulating, and unit 1 off but still adding.
void endHull();
