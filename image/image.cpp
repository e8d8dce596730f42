#include "image/image.h"

Image createImage(int width, int height, int channels) {
    const uint32_t stride = static_cast<uint32_t>(width) * channels;
    return {width, height, channels, channels, stride, new uint8_t[static_cast<size_t>(height) * stride]};
}
