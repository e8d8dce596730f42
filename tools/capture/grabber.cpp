#include "tools/capture/grabber.h"

#include <GL/glew.h>

#include "render/screen.h"
#include "tools/formatted.h"

namespace {

constexpr size_t pictureBytes = size_t(screenWidth) * screenHeight * 4;
constexpr int pictures = 4;  // in flight; enough that neither side waits for a single slow frame

}  // namespace

Grabber::Grabber(Write write) : write(std::move(write)) {
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
}

bool Grabber::grab() {
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return !spare.empty() || failed; });
    if (failed) return false;
    Picture picture = std::move(spare.front());
    spare.pop_front();
    lock.unlock();

    glGetError();  // of the show itself, which asks for none
    glReadPixels(0, 0, screenWidth, screenHeight, GL_BGRA, GL_UNSIGNED_BYTE, picture.data());
    const GLenum error = glGetError();

    lock.lock();
    if (error != GL_NO_ERROR) {
        problem = formatted("a frame could not be read back: GL error 0x%04x", error);
        failed = true;
    } else {
        waiting.push_back(std::move(picture));
    }
    changed.notify_all();
    return !failed;
}

bool Grabber::finish() {
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
