#include <cstdio>

#include "image/image.h"

namespace {

void writeRow(FILE* file, const uint8_t* row, int width, int channels, int bytesPerPixel) {
    if (channels == 3) {
        fwrite(row, 3, width, file);
        return;
    }
    if (channels != 1 && channels != 4) return;
    for (int x = 0; x < width; x++) {
        const uint8_t* pixel = row + size_t(x) * bytesPerPixel;
        const uint8_t grey[3] = {*pixel, *pixel, *pixel};
        fwrite(channels == 1 ? grey : pixel, 3, 1, file);
    }
}

}  // namespace

int writePpm(const char* path, int width, int height, int channels, int bytesPerPixel, uint32_t stride,
             const uint8_t* pixels) {
    FILE* file = fopen(path, "wb");
    if (!file) return EOF;
    fprintf(file, "P6\n%d %d\n%d\n", width, height, 255);
    for (int y = 0; y < height; y++)
        writeRow(file, pixels + size_t(y) * stride, width, channels, bytesPerPixel);
    return fclose(file);
}
