// A .gfp from outside: header checks, inflation, and the way on to a TGA.
// Each input is read twice: as a whole .gfp, and as the zlib stream of a
// picture behind a sound header, whose size and depth the first two bytes
// choose. Mutations of a whole file rarely get past the header's checks;
// the second reading hands every input to the inflater.
#include "resources/bytes.h"
#include "resources/gfp.h"
#include "resources/tga.h"

#include <cstdint>
#include <cstring>

namespace {

void readandconvert(QByteArrayView gfp)
{
    using namespace zorbo;
    GfpHeader header;
    QByteArray pixels;
    if (readgfp(gfp, QStringLiteral("fuzz.gfp"), header, pixels))
        writetga(header.width(), header.height(), pixels, header.bytesPerPixel());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    using namespace zorbo;
    readandconvert(QByteArrayView(data, qsizetype(size)));
    if (size < 2)
        return 0;
    constexpr int depths[] = {8, 16, 24, 32};
    const int width = 1 + (data[0] & 0x3F);
    const int height = 1 + (data[1] & 0x3F);
    const int bits = depths[data[0] >> 6];
    const qsizetype stream = qsizetype(size) - 2;
    GfpHeader header;
    std::memcpy(header.bytes.data(), "NALP", 4);
    std::memcpy(header.bytes.data() + 56, "NALP", 4);
    header.setSize(width, height);
    header.setBits(bits);
    header.setMethod(GfpMethodZlib);
    header.setStored(int(stream) + 8);
    header.setRawsize(width * height * ((bits + 1) / 8));
    QByteArray gfp(header.bytes.data(), GfpHeaderSize);
    appendlong(gfp, header.rawsize());
    appendlong(gfp, int(stream));
    gfp.append(reinterpret_cast<const char *>(data) + 2, stream);
    readandconvert(gfp);
    return 0;
}
