#include "resources/zlibdata.h"

#include <cmath>
#include <zlib.h>

namespace zorbo {

namespace {

// The margin that zlib's own documentation once gave for compress: 1 % + 12.
qsizetype withMargin(qsizetype n)
{
    return qsizetype(std::llround(double(n) + double(n) * 0.01 + 12.0));
}

} // namespace

int compressdata(QByteArray &data, int level)
{
    QByteArray out(qMax<qsizetype>(withMargin(data.size()), qsizetype(compressBound(uLong(data.size())))),
                   Qt::Uninitialized);
    uLongf length = uLongf(out.size());
    const int rc = compress2(reinterpret_cast<Bytef *>(out.data()), &length,
                             reinterpret_cast<const Bytef *>(data.constData()), uLong(data.size()), level);
    if (rc == Z_OK) {
        out.truncate(qsizetype(length));
        data = std::move(out);
    }
    return rc;
}

int uncompressdata(QByteArray &data, qsizetype rawsize)
{
    QByteArray out(withMargin(rawsize), Qt::Uninitialized);
    uLongf length = uLongf(out.size());
    int rc = uncompress(reinterpret_cast<Bytef *>(out.data()), &length,
                        reinterpret_cast<const Bytef *>(data.constData()), uLong(data.size()));
    if (rc == Z_OK && qsizetype(length) < rawsize)
        rc = Z_DATA_ERROR;
    if (rc == Z_OK) {
        out.truncate(rawsize);
        data = std::move(out);
    }
    return rc;
}

} // namespace zorbo
