#include "tools/rehearse/fresh_start.h"

#include <algorithm>

#include "app/app.h"
#include "app/startup.h"
#include "script/resources.h"
#include "tools/rehearse/uniforms.h"

FreshStart::FreshStart() {
    camera = demo->camera;
    std::copy_n(demo->lights, 8, lights);
    std::copy_n(demo->textures + firstTarget, targetCount, targets);
    glGetFloatv(GL_PROJECTION_MATRIX, projection);
    // A texture that is bound would be kept alive, whatever is loaded in its place.
    glBindTexture(GL_TEXTURE_2D, 0);
    glPushAttrib(GL_ALL_ATTRIB_BITS);
}

FreshStart::~FreshStart() {
    glPopAttrib();
}

void FreshStart::restoreShow(SteppedShow* show) const {
    show->next = 0;
    app.previousFrameTime = 0;
    MusicClock fresh;
    fresh.source = demo->clock.source;
    fresh.bpm = demo->clock.bpm;
    demo->clock = fresh;
    restartEffects();
}

void FreshStart::restoreGl() const {
    for (int i = 0; i < targetCount; i++) {
        const GLsizei size = targets[i].textureWidth;
        demo->textures[firstTarget + i] = targets[i];
        glBindTexture(GL_TEXTURE_2D, targets[i].texture);
        // Blurs have made some of them smaller.
        glTexImage2D(GL_TEXTURE_2D, 0, GL_RGBA, size, size, 0, GL_RGBA, GL_UNSIGNED_BYTE, nullptr);
    }
    demo->camera = camera;
    std::copy_n(lights, 8, demo->lights);
    for (const auto& [name, program] : demo->shaders) clearUniforms(program);
    centreBoom();

    glPopAttrib();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixf(projection);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}
