#version 110
// For the shaders that read a picture beside the point they draw: where that point lies in what is seen of it. Every
// quad has what is seen in -1 to 1; a target's reaches further, by the part of the texture that holds no picture.

varying vec2 place;  // 0..1 across what is seen

void main() {
    gl_Position = ftransform();
    gl_FrontColor = gl_Color;
    gl_TexCoord[0] = gl_MultiTexCoord0;
    place = gl_Vertex.xy * 0.5 + 0.5;
}
