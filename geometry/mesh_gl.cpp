// The part of Mesh that talks to GL.
#include <algorithm>
#include <array>

#include "geometry/mesh.h"

namespace {

// Of the ten units that a mesh may have coordinates for, those that this GL has: selecting another is an
// error that would come up in the next check for one.
int texCoordUnits() {
    static const int units = [] {
        GLint supported = 0;
        glGetIntegerv(GL_MAX_TEXTURE_COORDS, &supported);
        return std::min(supported, 10);
    }();
    return units;
}

GLuint uploadBuffer(GLenum target, size_t size, const void* data) {
    GLuint name;
    glGenBuffersARB(1, &name);
    glBindBufferARB(target, name);
    glBufferDataARB(target, GLsizeiptrARB(size), data, GL_STATIC_DRAW);
    return name;
}

}  // namespace

void Mesh::upload() {
    vertexBuffer = uploadBuffer(GL_ARRAY_BUFFER, wordCount() * sizeof(float), vertices.get());
    indexBuffer =
        uploadBuffer(GL_ELEMENT_ARRAY_BUFFER, size_t(faceCount) * 3 * sizeof(uint16_t), faces.get());
}

void Mesh::releaseBuffers() {
    glDeleteBuffersARB(1, &indexBuffer);
    // Kept: as many names are deleted as there are attributes, though a mesh has one vertex buffer. The
    // further ones are the words that follow it in the record. With up to three attributes these are zeros,
    // which GL passes over; with more, a count that happens to be another buffer's name deletes that buffer,
    // and whoever draws it would notice. The list is built by hand since reading on from a field is not
    // defined.
    const uint64_t scratchData = reinterpret_cast<uintptr_t>(scratch.data.get());
    const auto word = [](auto value) { return GLuint(value); };
    const std::array<GLuint, maxAttribs> names = {vertexBuffer,
                                                  reserved[0],
                                                  reserved[1],
                                                  word(scratchData),
                                                  word(scratchData >> 32),
                                                  word(scratch.count),
                                                  word(scratch.capacity),
                                                  word(gvertexCount),
                                                  word(vertexCount),
                                                  word(faceCount),
                                                  word(attribCount),
                                                  word(attribSize[0]),
                                                  word(attribSize[1]),
                                                  word(attribSize[2]),
                                                  word(attribSize[3]),
                                                  word(attribSize[4])};
    glDeleteBuffersARB(attribCount, names.data());
}

void Mesh::bindArrays() const {
    glBindBufferARB(GL_ARRAY_BUFFER, vertexBuffer);
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER, indexBuffer);
    const GLsizei stride = vsize * GLsizei(sizeof(float));
    const auto size = [this](int type) { return attribSize[slotOfType[type]]; };
    const auto offset = [this](int type) {
        return reinterpret_cast<const void*>(attribOffset(type) * sizeof(float));
    };
    if (hasAttrib(positionAttrib)) {
        glEnableClientState(GL_VERTEX_ARRAY);
        glVertexPointer(size(positionAttrib), GL_FLOAT, stride, offset(positionAttrib));
    }
    if (hasAttrib(normalAttrib)) {
        glEnableClientState(GL_NORMAL_ARRAY);
        glNormalPointer(GL_FLOAT, stride, offset(normalAttrib));
    }
    if (hasAttrib(colorAttrib)) {
        glEnableClientState(GL_COLOR_ARRAY);
        glColorPointer(size(colorAttrib), GL_FLOAT, stride, offset(colorAttrib));
    }
    if (hasAttrib(secondaryColorAttrib)) {
        glEnableClientState(GL_SECONDARY_COLOR_ARRAY);
        glSecondaryColorPointer(size(secondaryColorAttrib), GL_FLOAT, stride, offset(secondaryColorAttrib));
    }
    for (int unit = 0; unit < texCoordUnits(); unit++) {
        const int type = texCoordAttrib + unit;
        if (!hasAttrib(type)) continue;
        glClientActiveTexture(GL_TEXTURE0 + unit);
        glEnableClientState(GL_TEXTURE_COORD_ARRAY);
        glTexCoordPointer(size(type), GL_FLOAT, stride, offset(type));
    }
}

void Mesh::unbindArrays() {
    glBindBufferARB(GL_ELEMENT_ARRAY_BUFFER, 0);
    glBindBufferARB(GL_ARRAY_BUFFER, 0);
    for (GLenum array : {GL_VERTEX_ARRAY, GL_NORMAL_ARRAY, GL_COLOR_ARRAY, GL_SECONDARY_COLOR_ARRAY})
        glDisableClientState(array);
    // Downwards, so that unit 0 is the active one afterwards.
    for (int unit = texCoordUnits() - 1; unit >= 0; unit--) {
        glClientActiveTexture(GL_TEXTURE0 + unit);
        glDisableClientState(GL_TEXTURE_COORD_ARRAY);
    }
}

void Mesh::draw() const {
    bindArrays();
    // Kept: the end of the range is one past the last vertex. Drivers take it as a hint; none would notice.
    glDrawRangeElementsEXT(GL_TRIANGLES, 0, GLuint(vertexCount), 3 * faceCount, GL_UNSIGNED_SHORT, nullptr);
    unbindArrays();
}
