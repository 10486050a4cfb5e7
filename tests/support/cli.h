#pragma once

#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace zorbo::test {

struct CliRun {
    int exitCode = -1;
    QString out;
    QString err;
};

// Runs zorbo-cli with the arguments and waits for it.
inline CliRun runCli(const QStringList &args)
{
    QProcess p;
    p.start(QStringLiteral(ZORBO_CLI), args);
    p.waitForFinished(120000);
    return {p.exitStatus() == QProcess::NormalExit ? p.exitCode() : -1, QString::fromUtf8(p.readAllStandardOutput()),
            QString::fromUtf8(p.readAllStandardError())};
}

} // namespace zorbo::test
