#include "support/testsupport.h"

#include <QFile>
#include <QtGlobal>
#include <gtest/gtest.h>

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

namespace {

QtMessageHandler previousHandler = nullptr;

void modelTesterHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtWarningMsg && context.category && qstrcmp(context.category, "qt.modeltest") == 0)
        ADD_FAILURE() << "QAbstractItemModelTester: " << message.toStdString();
    if (previousHandler)
        previousHandler(type, context, message);
}

} // namespace

void failOnModelTesterWarnings()
{
    previousHandler = qInstallMessageHandler(modelTesterHandler);
}

TempFolder::TempFolder()
{
    m_dir.setAutoRemove(true);
}

QStringList keysUnder(const TeamTree &tree, const QString &parent)
{
    QStringList keys;
    for (const TreeNode &n : tree.nodes) {
        if (n.parent == parent)
            keys << n.key;
    }
    return keys;
}

QStringList dumpworld(Database &db, const QStringList &tables, bool byKey)
{
    QStringList rows;
    QStringList all = tables;
    if (all.isEmpty()) {
        all = db.tables();
        all.removeAll(QStringLiteral("verlauf")); // the history is no part of the world
    }
    for (const QString &table : std::as_const(all)) {
        QStringList quoted, key;
        for (const ColumnInfo &c : db.columns(table)) {
            quoted << QStringLiteral("quote(\"%1\")").arg(c.name);
            if (key.size() < 2)
                key << QStringLiteral("\"%1\"").arg(c.name);
        }
        Statement st = db.prepare(QStringLiteral("SELECT %1 FROM \"%2\" ORDER BY %3")
                                      .arg(quoted.join("||'|'||"), table, byKey ? key.join(", ") : QStringLiteral("rowid")));
        while (st.step())
            rows << table + ": " + st.text(0);
    }
    return rows;
}

} // namespace zorbo::test
