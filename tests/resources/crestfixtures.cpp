#include "resources/crestfixtures.h"

#include "support/testsupport.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QtEndian>
#include <zlib.h>

namespace zorbo::test {

namespace {

void putLong(QByteArray &b, int at, qint32 v)
{
    qToLittleEndian(v, b.data() + at);
}

QByteArray longBytes(qint32 v)
{
    QByteArray b(4, '\0');
    putLong(b, 0, v);
    return b;
}

} // namespace

Rgba patternPixel(int x, int y)
{
    if (y % 4 == 0)
        return {200, 100, 50, 255};
    return {(x * 37 + y * 11) & 255, (x * 5 + y * 29) & 255, (x * x + y) & 255, (x + y) & 255};
}

QByteArray pattern16(int width, int height)
{
    QByteArray out;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const Rgba p = patternPixel(x, y);
            const int v = (p.r / 8) << 11 | (p.g / 4) << 5 | (p.b / 8);
            out.append(char(v & 0xFF)).append(char(v >> 8));
        }
    return out;
}

QByteArray gfpBytes(int width, int height, const QByteArray &pixels16, bool compress, int bits)
{
    QByteArray g(132, '\0');
    g.replace(0, 4, "NALP");
    g.replace(56, 4, "NALP");
    putLong(g, 4, width);
    putLong(g, 8, height);
    putLong(g, 64, width);
    putLong(g, 68, height);
    putLong(g, 72, bits);
    putLong(g, 100, int(pixels16.size()));
    if (!compress)
        return g + pixels16;
    QByteArray z(int(compressBound(uLong(pixels16.size()))), '\0');
    uLongf n = uLongf(z.size());
    compress2(reinterpret_cast<Bytef *>(z.data()), &n, reinterpret_cast<const Bytef *>(pixels16.constData()),
              uLong(pixels16.size()), -1);
    z.truncate(int(n));
    putLong(g, 96, int(z.size()) + 8);
    g[104] = 11;
    return g + longBytes(int(pixels16.size())) + longBytes(int(z.size())) + z;
}

QByteArray archiveBytes(const QList<RawEntry> &entries)
{
    QByteArray body;
    QList<qint32> offsets;
    for (const RawEntry &e : entries) {
        offsets.append(12 + int(body.size()));
        body += e.data;
    }
    QByteArray a = "RESF" + longBytes(int(entries.size())) + longBytes(12 + int(body.size())) + body;
    for (int i = 0; i < entries.size(); ++i)
        a += longBytes(entries[i].type) + longBytes(offsets[i]);
    for (const RawEntry &e : entries)
        a += e.name.leftJustified(256, '\0', true);
    return a;
}

QByteArray tga24(int width, int height, const QByteArray &bgrTopDown)
{
    QByteArray t(18, '\0');
    t[2] = 2;
    qToLittleEndian(quint16(width), t.data() + 12);
    qToLittleEndian(quint16(height), t.data() + 14);
    t[16] = 24;
    for (int y = height - 1; y >= 0; --y)
        t += bgrTopDown.mid(qsizetype(y) * width * 3, width * 3);
    return t;
}

void copyFolder(const QString &from, const QString &to)
{
    QDir().mkpath(to);
    for (const QString &name : QDir(from).entryList(QDir::Files)) {
        QFile::remove(to + '/' + name);
        QFile::copy(from + '/' + name, to + '/' + name);
    }
}

QStringList filesBelow(const QString &folder)
{
    QStringList out;
    QDirIterator it(folder, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (it.hasNext())
        out << QDir(folder).relativeFilePath(it.next());
    out.sort();
    return out;
}

QString pythonWithPillow()
{
    static const QString found = [] {
        for (const QString &candidate : {QStringLiteral("python3"), QStringLiteral("/usr/bin/python3")}) {
            QProcess p;
            p.start(candidate, {QStringLiteral("-c"), QStringLiteral("import PIL")});
            if (p.waitForFinished(30000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0)
                return candidate;
        }
        return QString();
    }();
    return found;
}

int runPython(const QString &python, const QStringList &args, QString *errors)
{
    QProcess p;
    // Found from the test data's absolute path: __FILE__ may be relative to
    // the build folder, and CTest runs the program from another one.
    p.start(python, QStringList{QStringLiteral(ZORBO_TEST_DATA "/../resources/pillowcheck.py")} + args);
    if (!p.waitForFinished(60000))
        return -1;
    if (errors)
        *errors = QString::fromUtf8(p.readAllStandardError());
    return p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1;
}

} // namespace zorbo::test
