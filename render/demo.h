// `Demo` holds the camera, the lights, the clock and every loaded resource, reached by short string keys.
// Look-ups insert on a miss: an unknown texture is record 0 (the loading picture), an unknown shader none.
#pragma once

#include <GL/glew.h>

#include <cstdint>
#include <map>
#include <string>

#include "app/clock.h"

struct EffectBase;
struct Image;
struct MeshSet;

struct Camera {
    float fov = 90;  // vertical, degrees
    float target[3] = {0, 0, 0};
    float eye[3] = {0, 0, 2};
    float eyeSeparation = 0.02f;  // half the distance between the eyes, model units
    bool stereo = false;          // red/cyan anaglyph
};

// One of GL_LIGHT0..GL_LIGHT7; what is written here reaches GL at the next housekeeping.
struct Light {
    float ambient[4] = {0.5f, 0.5f, 0.5f, 1};
    float diffuse[4] = {0.9f, 0.9f, 0.9f, 1};
    float specular[4] = {1, 1, 1, 1};
    float position[4] = {0, 0, 0, 1};
    float spotDirection[3] = {0, 0, -1};
    float spotExponent = 0;
    float spotCutoff = 180;  // degrees; 180 is no spot
    float reserved[2] = {1, 0};
    bool enabled = false;
};

struct Texture {
    GLuint texture = 0;
    int32_t width = 0;  // of the picture in the texture, which a screen quad maps to the screen
    int32_t height = 0;
    int32_t textureWidth = 0;
    int32_t textureHeight = 0;
    bool flipped = false;  // a screen quad draws the picture upside down; false for every record
};

struct Blur {
    int iterations = 1;  // of four diagonal taps each
    float xOffset = 0;   // pixels that the taps lie away at first, 1.5 times as far with each iteration
    float yOffset = 0;
    float strength = 1;  // of the result, in each iteration
    int size = 0;        // pixels: side of the corner that the work is done in; 0 takes the picture's own
};

constexpr int firstTarget = 90;  // record of render target "rtt0"; loaded textures lie before it
constexpr int targetCount = 10;

struct Demo {
    Camera camera;
    Light lights[8];
    float controls[128] = {};  // free values for an author's controller; all 0 in the show
    MusicClock clock;
    float aspect = 1.3334f;                       // width to height of the viewport
    Texture textures[firstTarget + targetCount];  // loaded ones in loading order, then the render targets
    int32_t nextTexture = 0;
    int32_t quadCount = 0;  // triangles drawn as screen quads in this frame, and in the one before
    int32_t previousQuadCount = 0;
    std::map<std::string, int32_t> textureNames;
    std::map<std::string, GLhandleARB> shaders;
    std::map<std::string, MeshSet*> meshes;
    int32_t meshSetCount = 0;
    std::map<std::string, EffectBase*> effects;

    // Needs a GL context: creates the render targets "rtt0".."rtt9", 1024 x 1024 RGBA without content.
    Demo();

    // Camera: plain stores, until applyCamera loads both matrices (aspect 1, near 0.1, far 10000) and leaves
    // GL_MODELVIEW current. `leftEye` matters in stereo only, where each eye writes its own colours.
    void setCameraTarget(float x, float y, float z);
    void setCameraEye(float x, float y, float z);
    void setEyeSeparation(float separation) { camera.eyeSeparation = separation; }
    void setFov(float degrees) { camera.fov = degrees; }
    void setStereo(bool on) { camera.stereo = on; }
    void applyCamera(bool leftEye);

    // Textures. Loading takes 3 or 4 channels of 8 bits, makes mipmaps and returns the record's index; a file
    // that can't be such a texture ends the program. setTextureSize only changes what a screen quad assumes.
    int loadTexture(const char* path, const char* name, GLenum wrapS, GLenum wrapT);
    void setTextureSize(const char* name, int width, int height);
    // Between frames: another picture for a record, whose GL texture goes. False if it can't be a texture.
    bool replaceTexture(const char* name, const Image& image, GLenum wrapS, GLenum wrapT);
    int textureIndex(const char* name) { return textureNames[name]; }
    GLuint texture(const char* name) { return textures[textureIndex(name)].texture; }

    // Shaders, from BASE.vs and BASE.fs; a file that is missing is left out, one that does not compile ends
    // the program. Returns the link status. Uniforms go to the program in use: use it first.
    int loadShader(const char* base, const char* name);
    void useShader(const char* name = nullptr);  // without a name: the fixed-function pipeline
    void setUniform1f(const char* shader, const char* uniform, float x);
    void setUniform2f(const char* shader, const char* uniform, float x, float y);
    void setUniform3f(const char* shader, const char* uniform, float x, float y, float z);
    void setUniform4f(const char* shader, const char* uniform, float x, float y, float z, float w);
    // `count` floats, as vectors of 4, else 3, else 2, else single: the widest that divides the count.
    void setUniformArray(const char* shader, const char* uniform, int count, const float* values);

    // Meshes. Flag 1 expands positions and uploads. A missing or broken file ends the process with status 1.
    int loadMesh(const char* path, const char* key, int flags);
    // Coordinates of unit `from` are read by unit `to` as well.
    void remapTexCoords(const char* key, int from, int to);
    void drawMesh(const char* key);
    // Between frames: another set, uploaded already, for a key. The one before goes with its buffers; an
    // effect that keeps what beams see of it has to be made anew.
    void replaceMesh(const char* key, MeshSet* set);

    // Viewport of the screen, 800 x 600, for an aspect of a : b.
    void setViewportAspect(float a, float b);
    void applyViewport();

    // Passes. Pictures lie in the lower left 800 x 600 of a target. A quad is drawn with the colour, blending
    // and projection in force; under the camera's 90 degrees a scale of 1 fills the viewport.
    void copyScreen(const char* target);
    void drawScreenQuad(const char* name, float scale);
    // Clears the screen; leaves the viewport at the source's size and the target bound.
    void blur(const char* source, const char* target, const Blur& how);
    // The source plus `count` times its blurred copy, in the target; goes through "rtt9", clears the screen.
    void glow(const char* source, const char* target, int count, float strength);

    // "loading" under its copy in a random tint, shown at once.
    void drawLoadingScreen();

    // Housekeeping at the end of a frame: counts it, applies the lights under the current model-view matrix,
    // runs the automatic beat.
    void endFrame();
};

// The only one; made by startDemo, lives until the process ends.
extern Demo* demo;

// After the video mode is set: GLEW, the shading language, the global `demo`, GL's first state. Ends the
// program if the driver can't play the show.
void startDemo();
