#include "tools/aml/view.h"

#include <GL/glew.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <utility>

#include "app/text.h"
#include "app/window.h"
#include "effects/surface.h"
#include "render/demo.h"
#include "render/screen.h"
#include "tools/aml/info.h"
#include "tools/display.h"

namespace {

constexpr float shownRadius = 100;  // units, of any model
constexpr float angle = 40;         // vertical, degrees
constexpr float distance = 310;     // units, at zoom 1
constexpr float turnSpeed = 0.5f;   // degrees a frame
constexpr float keyTurn = 5;        // degrees
constexpr float dragTurn = 0.5f;    // degrees a pixel
constexpr float zoomStep = 1.1f;
constexpr float normalLength = 5;  // units, at the shown radius
constexpr int rest = 15;           // milliseconds between frames
constexpr const char* textures[][2] = {{"shiptex", "data/shiptex.png"}, {"envmap", "data/envmap.png"}};

Vec3 vectorAt(const Mesh& mesh, int vertex, int type) {
    const float* words = mesh.vertexAttrib(vertex, type);
    return {words[0], words[1], words[2]};
}

void placeCamera(float zoom) {
    glViewport(0, 0, screenWidth, screenHeight);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(angle, double(screenWidth) / screenHeight, 1, 10000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glTranslatef(0, 0, -distance / zoom);
}

void drawPlain(float r, float g, float b) {
    glDisable(GL_LIGHTING);
    glDisable(GL_TEXTURE_2D);
    glColor4f(r, g, b, 1);
    glLineWidth(1);
}

}  // namespace

MeshView::MeshView(std::string path) : path(std::move(path)) {
    for (const auto& [name, file] : textures)
        if (!demo->textureNames.contains(name)) demo->loadTexture(file, name, GL_REPEAT, GL_REPEAT);
    reload();
}

void MeshView::handleEvent(const SDL_Event& event) {
    if (event.type == SDL_QUIT) done = true;
    if (event.type == SDL_MOUSEMOTION && event.motion.state & SDL_BUTTON(1)) {
        turning = false;
        turn += dragTurn * event.motion.xrel;
        tilt = std::clamp(tilt + dragTurn * event.motion.yrel, -90.0f, 90.0f);
    }
    if (event.type != SDL_KEYDOWN) return;
    const SDLKey key = event.key.keysym.sym;
    if (key == SDLK_ESCAPE) done = true;
    if (key == SDLK_w) wire = !wire;
    if (key == SDLK_n) normals = !normals;
    if (key == SDLK_SPACE) turning = !turning;
    if (key == SDLK_LEFT) turn -= keyTurn;
    if (key == SDLK_RIGHT) turn += keyTurn;
    if (key == SDLK_UP) tilt = std::min(tilt + keyTurn, 90.0f);
    if (key == SDLK_DOWN) tilt = std::max(tilt - keyTurn, -90.0f);
    if (key == SDLK_PAGEUP) zoom = std::min(zoom * zoomStep, 20.0f);
    if (key == SDLK_PAGEDOWN) zoom = std::max(zoom / zoomStep, 0.05f);
}

void MeshView::frame() {
    struct stat now {};
    if (stat(path.c_str(), &now) == 0 &&
        (now.st_ino != seen.st_ino || now.st_size != seen.st_size ||
         now.st_mtim.tv_sec != seen.st_mtim.tv_sec || now.st_mtim.tv_nsec != seen.st_mtim.tv_nsec))
        reload();
    if (turning) turn = std::remainder(turn + turnSpeed, 360.0f);
    draw();
    SDL_GL_SwapBuffers();
}

void MeshView::reload() {
    stat(path.c_str(), &seen);
    std::optional<MeshSet> fresh = readMeshes(path, &fault);
    if (!fresh) return;
    const std::vector<std::string> found = ::objections(*fresh, path);
    for (Mesh& mesh : *fresh) {
        // The show does not start with it, says the first.
        if (!mesh.canExpandPositions()) {
            fault = found.front();
            return;
        }
        mesh.expandPositions(path.c_str());
    }
    fault.clear();
    objections = found;
    take(*fresh);
}

void MeshView::take(MeshSet& fresh) {
    for (const Mesh& mesh : set) {
        glDeleteBuffersARB(1, &mesh.vertexBuffer);
        glDeleteBuffersARB(1, &mesh.indexBuffer);
    }
    set = std::move(fresh);
    Vec3 least{INFINITY, INFINITY, INFINITY}, most = least * -1;
    for (Mesh& mesh : set) {
        mesh.upload();
        for (int i = 0; i < mesh.vertexCount; i++) {
            const Vec3 p = vectorAt(mesh, i, positionAttrib);
            least = {std::min(least.x, p.x), std::min(least.y, p.y), std::min(least.z, p.z)};
            most = {std::max(most.x, p.x), std::max(most.y, p.y), std::max(most.z, p.z)};
        }
    }
    radius = (most - least).length() / 2;
    centre = (most + least) * 0.5f;
    if (std::isfinite(radius) && radius > 0) return;
    radius = 1;
    centre = {0, 0, 0};
}

void MeshView::draw() {
    glClearColor(0.09f, 0.10f, 0.12f, 1);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    placeCamera(zoom);
    glPushMatrix();
    glRotatef(tilt, 1, 0, 0);
    glRotatef(turn, 0, 1, 0);
    const float scale = shownRadius / radius;
    glScalef(scale, scale, scale);
    glTranslatef(-centre.x, -centre.y, -centre.z);
    drawMeshes();
    if (wire) drawWire();
    if (normals) drawNormals();
    glPopMatrix();
    drawWords();
}

void MeshView::drawMeshes() {
    glPushMatrix();
    glLoadIdentity();
    placeLight(demo->lights[0], 150, 200, 100);
    demo->endFrame();  // so that the light is in force, and stays with the viewer
    glPopMatrix();
    setMaterial(GL_FRONT_AND_BACK, hullMaterial);
    glEnable(GL_NORMALIZE);
    glEnable(GL_TEXTURE_2D);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    glEnable(GL_POLYGON_OFFSET_FILL);
    glPolygonOffset(1, 1);  // behind the wire
    beginHull(*demo);
    for (const Mesh& mesh : set) mesh.draw();
    endHull();
    glDisable(GL_POLYGON_OFFSET_FILL);
    glDisable(GL_NORMALIZE);
}

void MeshView::drawWire() const {
    drawPlain(0.3f, 0.9f, 1);
    glPolygonMode(GL_FRONT_AND_BACK, GL_LINE);
    for (const Mesh& mesh : set) mesh.draw();
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

void MeshView::drawNormals() const {
    drawPlain(1, 0.8f, 0.2f);
    glBegin(GL_LINES);
    for (const Mesh& mesh : set) {
        for (int i = 0; mesh.hasAttrib(normalAttrib) && i < mesh.vertexCount; i++) {
            const Vec3 from = vectorAt(mesh, i, positionAttrib);
            const Vec3 to = from + vectorAt(mesh, i, normalAttrib) * (normalLength / shownRadius * radius);
            glVertex3fv(&from.x);
            glVertex3fv(&to.x);
        }
    }
    glEnd();
}

void MeshView::drawWords() const {
    drawPlain(0.8f, 0.85f, 0.9f);
    begin2DText(screenWidth, screenHeight);
    drawText(12, 12, helvetica12,
             "W wire   N normals   Space turn   arrows, mouse   Page Up, Page Down nearer, farther");
    float y = screenHeight - 24;
    const std::string name = std::filesystem::path(path).filename().string();
    drawText(12, y, helvetica18, name.c_str());
    glColor4f(1, 0.45f, 0.3f, 1);
    if (!fault.empty()) drawText(12, y -= 20, helvetica12, fault.c_str());
    glColor4f(1, 0.8f, 0.2f, 1);
    for (const std::string& line : objections) drawText(12, y -= 18, helvetica12, line.c_str());
    end2DText();
}

int viewMeshes(const std::string& path) {
    std::string problem;
    if (!readMeshes(path, &problem)) {
        fprintf(stderr, "%s\n", problem.c_str());
        return 1;
    }
    for (const char* file : {"data/loading.jpg", textures[0][1], textures[1][1]}) {
        if (std::filesystem::exists(file)) continue;
        fprintf(stderr, "%s is not there: start aml view where the show's data/ is\n", file);
        return 1;
    }
    needDisplay();
    openWindow(false);
    startDemo();
    SDL_WM_SetCaption(path.c_str(), "Valojuova");
    SDL_EnableKeyRepeat(SDL_DEFAULT_REPEAT_DELAY, SDL_DEFAULT_REPEAT_INTERVAL);
    MeshView view(path);
    std::string told;
    while (!view.done) {
        SDL_Event event;
        while (SDL_PollEvent(&event)) view.handleEvent(event);
        view.frame();
        if (view.fault != told && !view.fault.empty()) fprintf(stderr, "%s\n", view.fault.c_str());
        told = view.fault;
        SDL_Delay(rest);
    }
    SDL_Quit();
    return 0;
}
