// The AML mesh file, for those who read it and those who write it. Little-endian and unpadded: the magic and
// the version, an int32 count of meshes, and for each mesh
//   uint16  shared positions, vertices, faces
//   uint8   attributes, and for each its type (MeshAttrib) and its size in words
//   float32 x, y, z of each shared position
//   float32 the words of each vertex, attribute after attribute; a gvertexAttrib's word is a uint32
//   uint16  three vertices of each face
#pragma once

#include "geometry/mesh_attrib.h"

inline constexpr char amlMagic[] = {'A', 'M', 'L'};
inline constexpr int amlVersion = 2;
inline constexpr unsigned amlMostRecords = 65535;  // of each kind in a mesh: counts have 16 bits

// The sizes, in words, that an attribute type may have: what GL takes as its components, and what code that
// reads vertices relies on.
struct AttribSizes {
    int least, most;
};
inline constexpr AttribSizes amlAttribSizes[maxAttribs] = {
    {3, 4},    // position
    {1, 1},    // index of a shared position
    {3, 255},  // normal
    {3, 255},  // face normal
    {3, 4},    // colour
    {3, 3},    // secondary colour
    {1, 4},   {1, 4}, {1, 4}, {1, 4}, {1, 4}, {1, 4}, {1, 4}, {1, 4}, {1, 4}, {1, 4},  // texture coordinates
};
