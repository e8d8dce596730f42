#include "effects/surface.h"

void setMaterial(GLenum face, const Material& material) {
    glMaterialfv(face, GL_AMBIENT, material.ambient);
    glMaterialfv(face, GL_DIFFUSE, material.diffuse);
    glMaterialfv(face, GL_SPECULAR, material.specular);
    glMaterialf(face, GL_SHININESS, material.shininess);
}

void setLightColours(GLenum light, const LightColours& colours) {
    glLightfv(light, GL_AMBIENT, colours.ambient);
    glLightfv(light, GL_DIFFUSE, colours.diffuse);
    glLightfv(light, GL_SPECULAR, colours.specular);
}

void placeLight(Light& light, float x, float y, float z) {
    light.position[0] = x;
    light.position[1] = y;
    light.position[2] = z;
    light.enabled = true;
}

void generateSphereMap() {
    glEnable(GL_TEXTURE_GEN_S);
    glEnable(GL_TEXTURE_GEN_T);
    glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
    glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
}

void stopGeneratedTexture(GLenum unit) {
    glActiveTexture(unit);
    glDisable(GL_TEXTURE_GEN_S);
    glDisable(GL_TEXTURE_GEN_T);
    glDisable(GL_TEXTURE_2D);
}

void beginHull(Demo& demo, const char* surface, const char* reflection) {
    glBindTexture(GL_TEXTURE_2D, demo.texture(surface));
    glActiveTexture(GL_TEXTURE1);
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_ADD);
    glBindTexture(GL_TEXTURE_2D, demo.texture(reflection));
    glEnable(GL_TEXTURE_2D);
    generateSphereMap();
    glActiveTexture(GL_TEXTURE0);
}

void endHull() {
    stopGeneratedTexture(GL_TEXTURE1);
    glActiveTexture(GL_TEXTURE0);
    glEnable(GL_TEXTURE_2D);
    // Kept: this is unit 0's mode, and unit 1 keeps GL_ADD. Only a user of unit 1 that did not set its mode
    // would notice; all do.
    glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
}
