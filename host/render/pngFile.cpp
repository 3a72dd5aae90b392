#include <png.h>

#include "render/picture.h"

namespace host::render {

std::string pngBytes(const Picture& picture) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(picture.width);
    image.height = static_cast<png_uint_32>(picture.height);
    image.format = PNG_FORMAT_RGB;
    std::string bytes(PNG_IMAGE_PNG_SIZE_MAX(image), '\0');
    png_alloc_size_t size = bytes.size();
    constexpr int kEightBits = 0;
    constexpr png_int_32 kPackedRows = 0;
    const int isWritten = png_image_write_to_memory(&image, bytes.data(), &size, kEightBits,
                                                    picture.bytes.data(), kPackedRows, nullptr);
    bytes.resize(isWritten != 0 ? size : 0);
    return bytes;
}

}  // namespace host::render
