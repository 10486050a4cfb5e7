// A .gfp from outside: header checks, inflation, and the way on to a TGA.
#include "resources/gfp.h"
#include "resources/tga.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    GfpHeader header;
    QByteArray pixels;
    if (readgfp(QByteArrayView(data, qsizetype(size)), QStringLiteral("fuzz.gfp"), header, pixels))
        writetga(header.width(), header.height(), pixels, header.bytesPerPixel());
    return 0;
}
