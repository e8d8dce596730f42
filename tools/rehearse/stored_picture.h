// A finished frame, kept so that it can be shown again without drawing it again.
#pragma once

#include <GL/glew.h>

struct StoredPicture {
    GLuint texture = 0;

    // Needs a GL context.
    StoredPicture();
    ~StoredPicture();
    StoredPicture& operator=(StoredPicture&&) = delete;

    // From the back buffer, and into it.
    void keep();
    void show() const;
};
