// Coordinates in pixels, from the lower left of the viewport, for what is drawn flat over the screen.
#pragma once

// Until endPixelSpace, which brings back the matrices that were in force. What lies within `depth` of z = 0
// is seen. Both leave GL_MODELVIEW current.
void beginPixelSpace(int width, int height, double depth);
void endPixelSpace();
