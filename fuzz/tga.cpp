// A TGA from a drawing tool: both row orders, run-length packets, 32 bits.
#include "resources/tga.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    TgaImage image;
    if (readtga(QByteArrayView(data, qsizetype(size)), QStringLiteral("fuzz.tga"), image))
        writetga(image.width, image.height, image.pixels, 2);
    return 0;
}
