// A mesh file in a window, under the material and light of most models of the show, and anew whenever it is
// saved. A file that can't be read leaves what is shown, with the reason over it, until it is mended.
#pragma once

#include <SDL/SDL.h>
#include <sys/stat.h>

#include <string>
#include <vector>

#include "geometry/mesh.h"
#include "geometry/vec3.h"

struct MeshView {
    std::string path;
    MeshSet set;  // expanded and uploaded
    std::vector<std::string> objections;
    std::string fault;  // of the last save, a line
    bool wire = false, normals = false, turning = true, done = false;
    float turn = 30, tilt = 20;  // degrees
    float zoom = 1;

    // Needs the window and `demo`; loads the hull's two textures from data/ where `demo` doesn't have them.
    explicit MeshView(std::string path);

    void handleEvent(const SDL_Event& event);
    // Takes up what was saved, draws, and shows it.
    void frame();

private:
    void reload();
    void take(MeshSet& fresh);
    void draw();
    void drawMeshes();
    void drawWire() const;
    void drawNormals() const;
    void drawWords() const;

    struct stat seen {};
    Vec3 centre{0, 0, 0};
    float radius = 1;
};

// Until Esc or the window is closed. Returns the exit status: 1, after a line, if there is nothing to show.
int viewMeshes(const std::string& path);
