#pragma once

#include <QByteArray>

namespace zorbo {

// compress2 into a buffer of n + n/100 + 12 bytes; on success data holds the
// zlib stream. Returns zlib's result code (Z_OK is 0); data is kept on failure.
int compressdata(QByteArray &data, int level);

// uncompress into a buffer of rawsize + rawsize/100 + 12 bytes. On Z_OK data
// holds the first rawsize bytes; a stream that yields fewer gives Z_DATA_ERROR,
// since a short picture would be padded with black. rawsize must be checked
// by the caller: it sizes the buffer.
int uncompressdata(QByteArray &data, qsizetype rawsize);

} // namespace zorbo
