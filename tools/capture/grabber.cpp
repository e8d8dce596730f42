#include "tools/capture/grabber.h"

#include <cstring>

#include "render/screen.h"
#include "tools/formatted.h"

namespace {

constexpr size_t pictureBytes = size_t(screenWidth) * screenHeight * 4;
constexpr int pictures = 4;  // in flight; enough that neither side waits for a single slow frame

}  // namespace

Grabber::Grabber(Write write) : write(std::move(write)) {
    glGenBuffers(2, buffers);
    for (GLuint buffer : buffers) {
        glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
        glBufferData(GL_PIXEL_PACK_BUFFER, pictureBytes, nullptr, GL_STREAM_READ);
    }
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    for (int i = 0; i < pictures; i++) spare.emplace_back(pictureBytes);
    writer = std::thread(&Grabber::work, this);
}

Grabber::~Grabber() {
    {
        const std::lock_guard lock(mutex);
        closing = true;
    }
    changed.notify_all();
    writer.join();
    glDeleteBuffers(2, buffers);
}

bool Grabber::grab() {
    glGetError();  // of the show itself, which asks for none
    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffers[grabbed % 2]);
    glReadPixels(0, 0, screenWidth, screenHeight, GL_BGRA, GL_UNSIGNED_BYTE, nullptr);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);
    const GLenum error = glGetError();
    if (error != GL_NO_ERROR) return fail(error);
    if (grabbed++ > 0) handOver(buffers[grabbed % 2]);
    const std::lock_guard lock(mutex);
    return !failed;
}

void Grabber::handOver(GLuint buffer) {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return !spare.empty() || failed; });
    if (failed) return;
    Picture picture = std::move(spare.front());
    spare.pop_front();
    lock.unlock();

    glBindBuffer(GL_PIXEL_PACK_BUFFER, buffer);
    const void* pixels = glMapBuffer(GL_PIXEL_PACK_BUFFER, GL_READ_ONLY);
    if (pixels) memcpy(picture.data(), pixels, pictureBytes);
    const bool whole = pixels && glUnmapBuffer(GL_PIXEL_PACK_BUFFER);
    glBindBuffer(GL_PIXEL_PACK_BUFFER, 0);

    if (!whole) return void(fail(glGetError()));
    lock.lock();
    waiting.push_back(std::move(picture));
    changed.notify_all();
}

bool Grabber::fail(GLenum error) {
    const std::lock_guard lock(mutex);
    problem = formatted("a frame could not be read back: GL error 0x%04x", error);
    failed = true;
    changed.notify_all();
    return false;
}

bool Grabber::finish() {
    if (grabbed > 0) handOver(buffers[(grabbed - 1) % 2]);
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return failed || spare.size() == pictures; });
    return !failed;
}

void Grabber::work() {
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return closing || !waiting.empty(); });
        if (closing || failed) return;
        Picture picture = std::move(waiting.front());
        waiting.pop_front();
        lock.unlock();
        const bool written = write(picture);
        lock.lock();
        failed |= !written;
        spare.push_back(std::move(picture));
        changed.notify_all();
    }
}
