// What a word of a mesh's vertex can mean: the attribute types of meshes and of their files.
#pragma once

enum MeshAttrib : int {
    positionAttrib,
    gvertexAttrib,  // one unsigned integer: which of the shared positions
    normalAttrib,
    faceNormalAttrib,  // never sent to GL
    colorAttrib,
    secondaryColorAttrib,
    texCoordAttrib,  // of texture unit 0; unit u is texCoordAttrib + u, up to 9
};

inline constexpr int maxAttribs = 16;  // attribute slots of a mesh, and attribute types
