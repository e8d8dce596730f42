// "koe" (tex.png): projected up the eye's vertical axis, it tints a model by height. It lets all through: on
// the water, thousands of units away, each repeat of its 500 would be a band.
#include "production/kit/picture/canvas.h"
#include "production/pictures/pictures.h"

void makeStripes(const char* path) {
    picture::saveRgba(picture::Canvas(16, 16, picture::grey(1)), path, picture::Rows::TopFirst);
}
