#include "core/schema.h"

#include <QFile>

namespace zorbo {

namespace {

const char *const referenceTables[] = {
    "e_attribute", "e_gesichtsfarbe", "e_landkontinent", "e_trikotfarbeoriginal", "e_trikotfarbezorbode",
};

[[noreturn]] void fail(const QString &file, int line, const QString &problem)
{
    throw DbError(QStringLiteral("Referenzdaten %1, Zeile %2: %3").arg(file).arg(line).arg(problem).toStdString());
}

void bindField(Statement &st, int index, const ColumnInfo &column, const QString &field, const QString &file,
               int line)
{
    bool ok = true;
    if (column.isInteger()) {
        const qint64 value = field.toLongLong(&ok);
        if (ok)
            st.bind(index, value);
    } else if (column.type.compare(QLatin1String("REAL"), Qt::CaseInsensitive) == 0) {
        const double value = field.toDouble(&ok);
        if (ok)
            st.bind(index, value);
    } else {
        st.bind(index, field);
    }
    if (!ok)
        fail(file, line, QStringLiteral("„%1“ ist keine Zahl für die Spalte %2.").arg(field, column.name));
}

void fillTable(Database &db, const QString &table)
{
    const QString file = QStringLiteral(":/reference/%1.tsv").arg(table);
    QFile in(file);
    if (!in.open(QIODevice::ReadOnly))
        throw DbError(QStringLiteral("Referenzdaten %1 fehlen im Programm.").arg(file).toStdString());
    QStringList lines = QString::fromUtf8(in.readAll()).split(QLatin1Char('\n'));
    // The file ends in a line break, which leaves one empty piece behind it.
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();

    const QList<ColumnInfo> columns = db.columns(table);
    QStringList names;
    for (const ColumnInfo &c : columns)
        names.append(c.name);
    if (columns.isEmpty())
        fail(file, 1, QStringLiteral("Die Tabelle %1 fehlt in der Datenbank.").arg(table));
    if (lines.isEmpty() || lines.first() != names.join(QLatin1Char('\t')))
        fail(file, 1, QStringLiteral("Die Kopfzeile muss „%1“ lauten (durch Tabulatoren getrennt).")
                          .arg(names.join(QLatin1Char(' '))));

    QStringList quoted;
    QStringList params;
    for (const QString &n : names) {
        quoted.append(QLatin1Char('"') + n + QLatin1Char('"'));
        params.append(QStringLiteral("?"));
    }
    Statement st = db.prepare(QStringLiteral("INSERT INTO %1 (%2) VALUES (%3)")
                                  .arg(table, quoted.join(QLatin1Char(',')), params.join(QLatin1Char(','))));
    for (int i = 1; i < lines.size(); ++i) {
        const int line = i + 1;
        if (lines[i].contains(QLatin1Char('\r')))
            fail(file, line, QStringLiteral("Zeilenende CR LF; die Datei muss LF-Zeilenenden haben."));
        const QStringList fields = lines[i].split(QLatin1Char('\t'));
        if (fields.size() != columns.size())
            fail(file, line, QStringLiteral("%1 Felder statt %2.").arg(fields.size()).arg(columns.size()));
        for (int c = 0; c < columns.size(); ++c)
            bindField(st, c + 1, columns[c], fields[c], file, line);
        try {
            st.exec();
        } catch (const DbError &e) {
            fail(file, line, e.text());
        }
    }
}

} // namespace

void fillreferencetables(Database &db)
{
    Transaction tx(db);
    for (const char *table : referenceTables)
        fillTable(db, QString::fromLatin1(table));
    tx.commit();
}

} // namespace zorbo
