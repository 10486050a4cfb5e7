#include "exchange/valuetexts.h"

#include <QLocale>
#include <QStringList>
#include <sqlite3.h>

namespace zorbo {

ChangesetReader::ChangesetReader(const QByteArray &changeset) : m_bytes(changeset)
{
    if (const int rc = sqlite3changeset_start(&m_it, int(m_bytes.size()), m_bytes.data()); rc != SQLITE_OK)
        throw DbError(rc, QStringLiteral("changeset"));
}

ChangesetReader::~ChangesetReader()
{
    sqlite3changeset_finalize(m_it);
}

bool ChangesetReader::next()
{
    const int rc = sqlite3changeset_next(m_it);
    if (rc == SQLITE_DONE)
        return false;
    if (rc != SQLITE_ROW)
        throw DbError(rc, QStringLiteral("changeset"));
    const char *table = nullptr;
    int indirect = 0;
    sqlite3changeset_op(m_it, &table, &m_columns, &m_op, &indirect);
    m_table = QString::fromUtf8(table);
    return true;
}

QVariant valueof(void *raw)
{
    auto *value = static_cast<sqlite3_value *>(raw);
    if (!value)
        return {};
    switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
        return qint64(sqlite3_value_int64(value));
    case SQLITE_FLOAT:
        return sqlite3_value_double(value);
    case SQLITE_TEXT:
        return QString::fromUtf8(reinterpret_cast<const char *>(sqlite3_value_text(value)), sqlite3_value_bytes(value));
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char *>(sqlite3_value_blob(value)), sqlite3_value_bytes(value));
    default:
        return QVariant(QMetaType(QMetaType::Nullptr), nullptr);
    }
}

QVariant ChangesetReader::oldValue(int column) const
{
    if (m_op == SQLITE_INSERT || column >= m_columns)
        return {};
    sqlite3_value *v = nullptr;
    sqlite3changeset_old(m_it, column, &v);
    return valueof(v);
}

QVariant ChangesetReader::newValue(int column) const
{
    if (m_op == SQLITE_DELETE || column >= m_columns)
        return {};
    sqlite3_value *v = nullptr;
    sqlite3changeset_new(m_it, column, &v);
    return valueof(v);
}

QString fieldlabel(const QString &table, int position, const QString &column)
{
    static const QHash<QString, QString> labels{
        {QStringLiteral("NAME"), QStringLiteral("Name")},
        {QStringLiteral("KURZNAME"), QStringLiteral("Kurzname")},
        {QStringLiteral("GRAFIK_NR"), QStringLiteral("Wappen")},
        {QStringLiteral("STAERKE"), QStringLiteral("Stärke")},
        {QStringLiteral("STARTPLATZ"), QStringLiteral("Startplatz")},
        {QStringLiteral("SPIELER"), QStringLiteral("Spielerzeile")},
        {QStringLiteral("STADION_NAME"), QStringLiteral("Stadion")},
        {QStringLiteral("STADT"), QStringLiteral("Stadt")},
        {QStringLiteral("NATION"), QStringLiteral("Land")},
        {QStringLiteral("KLIMA"), QStringLiteral("Klima")},
        {QStringLiteral("KONTINENT"), QStringLiteral("Kontinent")},
        {QStringLiteral("STADION_SITZPL"), QStringLiteral("Sitzplätze")},
        {QStringLiteral("STADION_STEHPL"), QStringLiteral("Stehplätze")},
        {QStringLiteral("TRIKOT_ART"), QStringLiteral("Heimtrikot")},
        {QStringLiteral("TW_TRIKOT_ART"), QStringLiteral("Torwarttrikot")},
        {QStringLiteral("AUSWEICH_TRIKOT_ART"), QStringLiteral("Auswärtstrikot")},
        {QStringLiteral("AUSWEICH_TW_TRIKOT_ART"), QStringLiteral("Ausweich-Torwarttrikot")},
        {QStringLiteral("NATIONALTEAM"), QStringLiteral("Nationalteam")},
        {QStringLiteral("LANDNAME"), QStringLiteral("Landname")},
        {QStringLiteral("VORNAME"), QStringLiteral("Vorname")},
        {QStringLiteral("STÄRKE"), QStringLiteral("Stärke")},
        {QStringLiteral("MAX_STÄRKE"), QStringLiteral("Max. Stärke")},
        {QStringLiteral("GROESSE"), QStringLiteral("Größe")},
        {QStringLiteral("ART"), QStringLiteral("Position")},
        {QStringLiteral("REST_EINSÄTZE"), QStringLiteral("Resteinsätze")},
        {QStringLiteral("LIEBLINGSPOS_X"), QStringLiteral("Lieblingsposition X")},
        {QStringLiteral("LIEBLINGSPOS_Y"), QStringLiteral("Lieblingsposition Y")},
        {QStringLiteral("RUECKENNUMMER"), QStringLiteral("Rückennummer")},
        {QStringLiteral("GESICHT"), QStringLiteral("Gesicht")},
        {QStringLiteral("HAUTFARBE"), QStringLiteral("Hautfarbe")},
        {QStringLiteral("HAARFARBE"), QStringLiteral("Haarfarbe")},
        {QStringLiteral("ERLERNT"), QStringLiteral("Talente erlernt")},
        {QStringLiteral("GESPERRT"), QStringLiteral("Talente gesperrt")},
        {QStringLiteral("LAND"), QStringLiteral("Land")},
        {QStringLiteral("VEREIN"), QStringLiteral("Verein")},
        {QStringLiteral("POSITION"), QStringLiteral("Position")},
        {QStringLiteral("RESTSPIELE"), QStringLiteral("Resteinsätze")},
    };
    // The twelve colours of the team tables, four to a kit.
    if (column.startsWith(QLatin1String("F_")) && (table == QLatin1String("vereine") || table == QLatin1String("vereine_national"))) {
        static const char *const kits[] = {"Heimtrikot", "Auswärtstrikot", "Torwarttrikot"};
        static const char *const parts[] = {"Trikot 1", "Trikot 2", "Hose", "Streifen"};
        const int first = table == QLatin1String("vereine") ? 16 : 18;
        const int i = position - first;
        if (i >= 0 && i < 12)
            return QStringLiteral("%1 Farbe %2").arg(QString::fromUtf8(kits[i / 4]), QString::fromUtf8(parts[i % 4]));
    }
    const QString upper = column.toUpper();
    if (table == QLatin1String("vereine_national") && upper == QLatin1String("NATION"))
        return QStringLiteral("Landesname");
    return labels.value(upper, column);
}

ValueTexts::ValueTexts(Database &db)
{
    Statement st = db.prepare(QStringLiteral("SELECT id, name FROM main.e_attribute"));
    while (st.step())
        m_talents.insert(st.integer(0), st.text(1));
}

QString ValueTexts::text(const QString &column, const QVariant &value) const
{
    if (!value.isValid() || value.isNull())
        return QStringLiteral("leer");
    const QString upper = column.toUpper();
    if (upper == QLatin1String("ERLERNT") || upper == QLatin1String("GESPERRT")) {
        QStringList names;
        for (const QString &part : value.toString().split(QLatin1Char(','), Qt::SkipEmptyParts)) {
            bool ok = false;
            const qint64 n = part.trimmed().toLongLong(&ok);
            names << (ok && m_talents.contains(n) ? m_talents.value(n) : part.trimmed());
        }
        return names.isEmpty() ? QStringLiteral("keine") : QStringLiteral("„%1“").arg(names.join(QStringLiteral(", ")));
    }
    if ((upper == QLatin1String("STÄRKE") || upper == QLatin1String("MAX_STÄRKE")) && value.typeId() == QMetaType::LongLong) {
        static const QLocale german(QLocale::German);
        return QStringLiteral("%1 Sterne").arg(german.toString(value.toLongLong() / 2000.0, 'f', 1));
    }
    if (upper == QLatin1String("ART") && value.typeId() == QMetaType::LongLong) {
        static const char *const positions[] = {"Tor", "Abwehr", "Mittelfeld", "Sturm"};
        const qint64 art = value.toLongLong();
        if (art >= 0 && art < 4)
            return QString::fromUtf8(positions[art]);
    }
    if (value.typeId() == QMetaType::QString)
        return QStringLiteral("„%1“").arg(value.toString());
    if (value.typeId() == QMetaType::QByteArray)
        return QStringLiteral("(%1 Bytes)").arg(value.toByteArray().size());
    return value.toString();
}

} // namespace zorbo
