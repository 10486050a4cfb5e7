#include "support/testsupport.h"

#include <QFile>

namespace zorbo::test {

QString dataPath(const QString &relative)
{
    return QStringLiteral(ZORBO_TEST_DATA "/") + relative;
}

QByteArray readBytes(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
}

bool writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile f(path);
    return f.open(QIODevice::WriteOnly | QIODevice::Truncate) && f.write(bytes) == bytes.size();
}

TempFolder::TempFolder()
{
    m_dir.setAutoRemove(true);
}

} // namespace zorbo::test
