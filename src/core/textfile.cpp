#include "core/textfile.h"

#include "platform/fileerror.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringDecoder>
#include <cstring>

namespace zorbo {

namespace {

const QByteArrayView utf8Mark("\xEF\xBB\xBF");

// Line number (0-based) of a position, counted as the readers count lines.
template <typename Text>
qsizetype lineAt(const Text &text, qsizetype at)
{
    qsizetype line = 0;
    for (qsizetype i = 0; i < at; ++i) {
        if (text[i] == '\n' || (text[i] == '\r' && (i + 1 >= text.size() || text[i + 1] != '\n')))
            ++line;
    }
    return line;
}

} // namespace

QString utf8question(const QString &shownPath, QByteArrayView bytes)
{
    qsizetype i = 0;
    while (i < bytes.size() && static_cast<unsigned char>(bytes[i]) < 0x80)
        ++i;
    if (bytes.startsWith(utf8Mark) || i >= bytes.size())
        return QStringLiteral("Die Datei %1 beginnt mit der Marke einer UTF-8-Datei; die Dateien des Spiels sind in "
                              "Windows-1252 geschrieben.")
            .arg(shownPath);
    const unsigned char lead = static_cast<unsigned char>(bytes[i]);
    const qsizetype length = std::min<qsizetype>(lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2, bytes.size() - i);
    const QByteArray sequence(bytes.data() + i, length);
    return QStringLiteral("Die Datei %1 ist in UTF-8 geschrieben, die Dateien des Spiels in Windows-1252: als "
                          "Windows-1252 gelesen stünde »%2« (Zeile %3) als »%4« in der Welt.")
        .arg(shownPath, QString::fromUtf8(sequence))
        .arg(lineAt(bytes, i) + 1)
        .arg(fromCp1252(sequence));
}

Result utf8tocp1252(const QString &shownPath, QByteArray &bytes)
{
    const QByteArrayView data = QByteArrayView(bytes).startsWith(utf8Mark) ? QByteArrayView(bytes).sliced(3) : QByteArrayView(bytes);
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder.decode(data);
    if (decoder.hasError())
        return Result::failure(QStringLiteral("Die Datei %1 ist nicht in UTF-8 geschrieben.").arg(shownPath));
    int bad = -1;
    std::optional<QByteArray> encoded = toCp1252(text, &bad);
    if (!encoded)
        return Result::failure(QStringLiteral("%1, Zeile %2: das Zeichen »%3« gibt es in der Zeichentabelle der "
                                              "Spieldateien (Windows-1252) nicht.")
                                   .arg(shownPath)
                                   .arg(lineAt(text, bad) + 1)
                                   .arg(text.mid(bad, text.at(bad).isHighSurrogate() ? 2 : 1)));
    bytes = std::move(*encoded);
    return Result::success();
}

Result loadtextfile(const QString &path, FileEncoding encoding, qint64 maxBytes, QByteArray &bytes, bool &looksUtf8)
{
    bytes.clear();
    looksUtf8 = false;
    const QString shownPath = QDir::toNativeSeparators(path);
    const QFileInfo info(path);
    if (!info.exists())
        return Result::failure(QStringLiteral("Die Datei %1 gibt es nicht.").arg(shownPath));
    if (!info.isFile())
        return Result::failure(QStringLiteral("%1 ist keine Datei.").arg(shownPath));
    if (info.size() > maxBytes)
        return Result::failure(QStringLiteral("Die Datei %1 ist mit %2 Bytes zu groß (höchstens %3).")
                                   .arg(shownPath)
                                   .arg(info.size())
                                   .arg(maxBytes));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht lesen: %2").arg(shownPath, fileerrortext(file)));
    // Never more than the size seen above, even if the file grows meanwhile.
    bytes = file.read(info.size());
    if (file.error() != QFileDevice::NoError)
        return Result::failure(QStringLiteral("Die Datei %1 lässt sich nicht lesen: %2").arg(shownPath, fileerrortext(file)));

    if (const void *zero = std::memchr(bytes.constData(), 0, size_t(bytes.size()))) {
        const qsizetype at = static_cast<const char *>(zero) - bytes.constData();
        return Result::failure(QStringLiteral("Die Datei %1 ist keine Textdatei (Nullbyte in Zeile %2).")
                                   .arg(shownPath)
                                   .arg(lineAt(bytes, at) + 1));
    }
    if (encoding == FileEncoding::Detect && looksutf8(bytes)) {
        looksUtf8 = true;
        return Result::failure(utf8question(shownPath, bytes));
    }
    if (encoding == FileEncoding::Utf8)
        return utf8tocp1252(shownPath, bytes);
    return Result::success();
}

} // namespace zorbo
