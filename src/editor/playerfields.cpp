#include "editor/playerfields.h"

#include "core/columnrules.h"
#include "editor/playerlist.h"
#include "platform/numbers.h"

#include <QRegularExpression>
#include <QSet>

namespace zorbo {

const QList<PlayerField> &playerfields()
{
    static const QList<PlayerField> fields = {
        {QStringLiteral("Nummer"), QStringLiteral("NUMMER"), FieldType::Whole},
        {QStringLiteral("Name"), QStringLiteral("NAME"), FieldType::Text},
        {QStringLiteral("Vorname"), QStringLiteral("VORNAME"), FieldType::Text},
        {QStringLiteral("Land"), QStringLiteral("NATION"), FieldType::Text},
        {QStringLiteral("Position"), QStringLiteral("ART"), FieldType::Position},
        {QStringLiteral("Stärke"), QStringLiteral("Stärke"), FieldType::Stars},
        {QStringLiteral("Maxstärke"), QStringLiteral("Max_Stärke"), FieldType::Stars},
        {QStringLiteral("Größe"), QStringLiteral("GROESSE"), FieldType::Whole},
        {QStringLiteral("Rückennummer"), QStringLiteral("RUECKENNUMMER"), FieldType::Whole},
        {QStringLiteral("Resteinsätze"), QStringLiteral("REST_EINSÄTZE"), FieldType::Whole},
        {QStringLiteral("Gesicht"), QStringLiteral("GESICHT"), FieldType::Whole},
        {QStringLiteral("Hautfarbe"), QStringLiteral("HAUTFARBE"), FieldType::Whole},
        {QStringLiteral("Haarfarbe"), QStringLiteral("HAARFARBE"), FieldType::Whole},
        {QStringLiteral("Erlernt"), QStringLiteral("ERLERNT"), FieldType::Talents},
        {QStringLiteral("Gesperrt"), QStringLiteral("GESPERRT"), FieldType::Talents},
    };
    return fields;
}

const PlayerField *playerfield(const QString &name)
{
    const QString n = name.trimmed();
    for (const PlayerField &f : playerfields()) {
        if (n.compare(f.heading, Qt::CaseInsensitive) == 0 || n.compare(f.column, Qt::CaseInsensitive) == 0)
            return &f;
    }
    return nullptr;
}

QString fieldtext(const PlayerField &field, const QVariant &value)
{
    if (value.isNull())
        return {};
    switch (field.type) {
    case FieldType::Stars: return starstext(value.toLongLong());
    case FieldType::Position: {
        const QString name = positionname(value.toLongLong());
        return name.isEmpty() ? value.toString() : name;
    }
    case FieldType::Talents: return value.toString().replace(QLatin1Char(','), QLatin1Char(' '));
    case FieldType::Whole:
    case FieldType::Text: break;
    }
    return value.toString();
}

std::optional<QVariant> parsefield(const PlayerField &field, const QString &text, QString *why)
{
    const ColumnRule &rule = windowrule(field.column);
    if (field.type == FieldType::Talents) {
        // Blanks or commas between the numbers; stored with commas.
        static const QRegularExpression list(QStringLiteral("^\\s*(\\d+([\\s,]+\\d+)*)?\\s*$"));
        if (!list.match(text).hasMatch()) {
            *why = QStringLiteral("„%1“ ist keine Liste von Talentnummern").arg(text);
            return std::nullopt;
        }
        static const QRegularExpression gaps(QStringLiteral("[\\s,]+"));
        return parsefield({field.heading, field.column, FieldType::Text}, text.trimmed().split(gaps, Qt::SkipEmptyParts).join(QLatin1Char(',')), why);
    }
    if (field.type == FieldType::Text) {
        if (rule.maxLength > 0 && text.size() > rule.maxLength) {
            *why = QStringLiteral("„%1“ ist %2 Zeichen lang, erlaubt sind %3").arg(text).arg(text.size()).arg(rule.maxLength);
            return std::nullopt;
        }
        return QVariant(text);
    }
    const QString t = text.trimmed();
    if (t.isEmpty())
        return QVariant();
    std::optional<qint64> value;
    if (field.type == FieldType::Stars) {
        value = parsestars(t);
        if (!value) {
            *why = QStringLiteral("„%1“ ist keine Zahl von Sternen (in Schritten von 0,0005)").arg(t);
            return std::nullopt;
        }
    } else if (field.type == FieldType::Position) {
        const std::optional<int> art = parseposition(t);
        if (!art) {
            *why = QStringLiteral("„%1“ ist keine Position (Tor, Abwehr, Mittelfeld, Sturm)").arg(t);
            return std::nullopt;
        }
        value = *art;
    } else {
        bool ok = false;
        value = t.toLongLong(&ok);
        if (!ok) {
            *why = QStringLiteral("„%1“ ist keine ganze Zahl").arg(t);
            return std::nullopt;
        }
    }
    if (*value < rule.min || *value > rule.max) {
        *why = field.type == FieldType::Stars
            ? QStringLiteral("%1 Sterne liegen außerhalb von %2 bis %3 Sternen").arg(starstext(*value), starstext(rule.min), starstext(rule.max))
            : QStringLiteral("%1 liegt außerhalb von %2 bis %3").arg(*value).arg(rule.min).arg(rule.max);
        return std::nullopt;
    }
    return QVariant(*value);
}

namespace {

QString quoted(const QString &column)
{
    return QLatin1Char('"') + column + QLatin1Char('"');
}

} // namespace

bool samevalue(const QVariant &a, const QVariant &b)
{
    if (a.isNull() || b.isNull())
        return a.isNull() == b.isNull();
    const bool textA = a.typeId() == QMetaType::QString, textB = b.typeId() == QMetaType::QString;
    if (textA != textB)
        return false;
    return textA ? a.toString() == b.toString() : a.toLongLong() == b.toLongLong() && a.toDouble() == b.toDouble();
}

bool differs(const QVariantList &before, const QVariantList &after)
{
    if (before.isEmpty())
        return true;
    for (qsizetype i = 1; i < after.size(); ++i)
        if (!samevalue(before[i], after[i]))
            return true;
    return false;
}

QHash<qint64, QVariantList> readplayers(Database &db, const QList<qint64> *numbers)
{
    QStringList cols;
    for (const PlayerField &f : playerfields())
        cols << quoted(f.column);
    QString sql = QStringLiteral("SELECT ") + cols.join(QStringLiteral(", ")) + QStringLiteral(" FROM spieler");
    // A long list reads every row and keeps those asked for.
    std::optional<QSet<qint64>> wanted;
    if (numbers && numbers->size() > 2000) {
        wanted = QSet<qint64>(numbers->begin(), numbers->end());
        numbers = nullptr;
    }
    QString list;
    if (numbers) {
        sql += QStringLiteral(" WHERE NUMMER IN (SELECT value FROM json_each(?1))");
        QStringList n;
        n.reserve(numbers->size());
        for (qint64 v : *numbers)
            n << QString::number(v);
        list = QLatin1Char('[') + n.join(QLatin1Char(',')) + QLatin1Char(']');
    }
    Statement st = db.prepare(sql);
    if (numbers)
        st.bind(1, list);
    QHash<qint64, QVariantList> rows;
    const int count = int(playerfields().size());
    while (st.step()) {
        if (wanted && !wanted->contains(st.integer(0)))
            continue;
        QVariantList row;
        row.reserve(count);
        for (int i = 0; i < count; ++i)
            row << st.value(i);
        rows.insert(st.integer(0), row);
    }
    return rows;
}

bool PlayerWriter::update(const QVariantList &before, const QVariantList &after)
{
    QStringList sets;
    QVariantList values;
    for (int i = 1; i < playerfields().size(); ++i) {
        if (!samevalue(before[i], after[i])) {
            sets << quoted(playerfields()[i].column) + QStringLiteral(" = ?") + QString::number(values.size() + 2);
            values << after[i];
        }
    }
    if (sets.isEmpty())
        return false;
    const QString key = sets.join(QLatin1Char(','));
    auto it = m_updates.find(key);
    if (it == m_updates.end())
        it = m_updates.emplace(key, m_db.prepare(QStringLiteral("UPDATE spieler SET ") + sets.join(QStringLiteral(", "))
                                                + QStringLiteral(" WHERE NUMMER = ?1"))).first;
    Statement &st = it->second;
    st.bind(1, before[0].toLongLong());
    for (int i = 0; i < values.size(); ++i)
        st.bind(i + 2, values[i]);
    st.exec();
    return true;
}

void PlayerWriter::insert(const QVariantList &values)
{
    QStringList cols, marks;
    for (int i = 0; i < playerfields().size(); ++i) {
        cols << quoted(playerfields()[i].column);
        marks << QStringLiteral("?") + QString::number(i + 1);
    }
    Statement st = m_db.prepare(QStringLiteral("INSERT INTO spieler (") + cols.join(QStringLiteral(", ")) + QStringLiteral(") VALUES (")
                                + marks.join(QStringLiteral(", ")) + QLatin1Char(')'));
    for (int i = 0; i < values.size(); ++i)
        st.bind(i + 1, values[i]);
    st.exec();
}

PlayerChange changeof(const QVariantList &before, const QVariantList &after)
{
    PlayerChange c;
    c.nummer = after[0].toLongLong();
    const QVariantList &named = before.isEmpty() ? after : before;
    c.name = (named[2].toString() + QLatin1Char(' ') + named[1].toString()).trimmed();
    c.created = before.isEmpty();
    for (int i = 1; i < playerfields().size(); ++i) {
        const QVariant was = before.isEmpty() ? QVariant() : before[i];
        if (!before.isEmpty() && samevalue(was, after[i]))
            continue;
        c.fields.append({playerfields()[i].heading, fieldtext(playerfields()[i], was), fieldtext(playerfields()[i], after[i])});
    }
    return c;
}

} // namespace zorbo
