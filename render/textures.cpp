#include "render/textures.h"

#include "render/demo.h"
#include "render/quit.h"

namespace {

GLuint createMipmappedTexture(const Image& image, GLenum wrapS, GLenum wrapT) {
    const GLenum format = image.channels == 4 ? GL_RGBA : GL_RGB;
    GLuint texture = 0;
    glGenTextures(1, &texture);
    glBindTexture(GL_TEXTURE_2D, texture);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GLint(wrapS));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GLint(wrapT));
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR);

    // Rows follow each other without padding, whatever their width.
    glPushClientAttrib(GL_CLIENT_PIXEL_STORE_BIT);
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    gluBuild2DMipmaps(GL_TEXTURE_2D, GLint(format), image.width, image.height, format, GL_UNSIGNED_BYTE,
                      image.pixels);
    glPopClientAttrib();
    return texture;
}

// What a record holds of a picture of its own.
Texture textureOf(const Image& image, GLenum wrapS, GLenum wrapT) {
    return {.texture = createMipmappedTexture(image, wrapS, wrapT),
            .width = image.width,
            .height = image.height,
            .textureWidth = image.width,
            .textureHeight = image.height};
}

}  // namespace

bool isTextureImage(const Image& image) {
    return (image.channels == 3 || image.channels == 4) &&
           image.stride == uint32_t(image.width) * image.channels;
}

int Demo::loadTexture(const char* path, const char* name, GLenum wrapS, GLenum wrapT) {
    const int index = nextTexture++;
    textures[index] = {};
    textureNames[name] = index;

    Image image;
    if (loadImage(path, &image, 0) != 0 || !isTextureImage(image)) fatalError("File [%s] not found.");

    textures[index] = textureOf(image, wrapS, wrapT);
    delete[] image.pixels;
    return index;
}

bool Demo::replaceTexture(const char* name, const Image& image, GLenum wrapS, GLenum wrapT) {
    if (!isTextureImage(image)) return false;
    Texture& record = textures[textureIndex(name)];
    const GLuint before = record.texture;
    record = textureOf(image, wrapS, wrapT);
    glDeleteTextures(1, &before);
    return true;
}

void Demo::setTextureSize(const char* name, int width, int height) {
    Texture& record = textures[textureIndex(name)];
    record.width = width;
    record.height = height;
}
