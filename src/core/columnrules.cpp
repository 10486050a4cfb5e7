#include "core/columnrules.h"

#include <QHash>

namespace zorbo {

namespace {

constexpr qint64 int32Min = -2147483647LL - 1;
constexpr qint64 int32Max = 2147483647LL;
constexpr int storedLength = 255;

// What the windows show and let the user type. Texts: a club's name is typed
// in up to 32 characters and a country's name fills short name, town and
// stadium of its national team, so 32 is the width of every name; colours
// and climate are three numbers of three digits; a talent list names at
// most the 53 talents (148 characters). The same name has the same rule in
// every table.
struct Entry {
    const char *column;
    ColumnRule rule;
};

const Entry rules[] = {
    // Teams (vereine, vereine_national)
    {"NUMMER", {0, int32Max, 0}},
    {"NAME", {0, 0, 32}},
    {"KURZNAME", {0, 0, 32}},
    {"GRAFIK_NR", {0, 999, 0}},
    {"STAERKE", {int32Min, int32Max, 0}},
    {"STARTPLATZ", {int32Min, int32Max, 0}},
    {"SPIELER", {0, 0, 255}},
    {"STADION_NAME", {0, 0, 32}},
    {"STADT", {0, 0, 32}},
    {"KLIMA", {0, 0, 32}},
    {"NATION", {0, 0, 32}},
    {"KONTINENT", {0, 0, 32}},
    {"STADION_SITZPL", {0, 999999, 0}},
    {"STADION_STEHPL", {0, 999999, 0}},
    {"TRIKOT_ART", {0, 79, 0}},
    {"TW_TRIKOT_ART", {0, 79, 0}},
    {"AUSWEICH_TRIKOT_ART", {0, 79, 0}},
    {"AUSWEICH_TW_TRIKOT_ART", {0, 79, 0}},
    {"F_TRIKOT_SPIELER", {0, 0, 32}},
    {"F_AUSW_TRIKOT_SPIELER", {0, 0, 32}},
    {"F_ALTERN_TRIKOT_SPIELER", {0, 0, 32}},
    {"F_HOSE_SPIELER", {0, 0, 32}},
    {"F_AUSW_HOSE_SPIELER", {0, 0, 32}},
    {"F_ALTERN_HOSE_SPIELER", {0, 0, 32}},
    {"F_TRIKOT_WERBUNG", {0, 0, 32}},
    {"F_HOSE_STREIFEN", {0, 0, 32}},
    {"F_TRIKOT_TORWART", {0, 0, 32}},
    {"F_HOSE_TORWART", {0, 0, 32}},
    {"F_TRIKOT_TRAINER", {0, 0, 32}},
    {"F_HOSE_TRAINER", {0, 0, 32}},
    {"NATIONALTEAM", {0, 0, 32}},
    {"LANDNAME", {0, 0, 32}},
    // Players (spieler); NUMMER, NAME and NATION as above
    {"VORNAME", {0, 0, 32}},
    {"STÄRKE", {0, 12000, 0}},
    {"MAX_STÄRKE", {0, 12000, 0}},
    {"GROESSE", {0, 999, 0}},
    {"ART", {0, 3, 0}},
    {"REST_EINSÄTZE", {0, 999, 0}},
    {"LIEBLINGSPOS_X", {int32Min, int32Max, 0}},
    {"LIEBLINGSPOS_Y", {int32Min, int32Max, 0}},
    {"RUECKENNUMMER", {0, int32Max, 0}},
    {"GESICHT", {int32Min, int32Max, 0}},
    {"HAUTFARBE", {int32Min, int32Max, 0}},
    {"HAARFARBE", {int32Min, int32Max, 0}},
    {"ERLERNT", {0, 0, 255}},
    {"GESPERRT", {0, 0, 255}},
};

const QHash<QString, ColumnRule> &ruleTable()
{
    static const QHash<QString, ColumnRule> table = [] {
        QHash<QString, ColumnRule> t;
        for (const Entry &e : rules)
            t.insert(QString::fromUtf8(e.column), e.rule);
        return t;
    }();
    return table;
}

} // namespace

const ColumnRule &windowrule(const QString &column)
{
    static const ColumnRule widest{int32Min, int32Max, storedLength};
    const auto &table = ruleTable();
    const auto it = table.constFind(column.toUpper());
    return it == table.constEnd() ? widest : *it;
}

const ColumnRule &storerule(const QString &column)
{
    static const ColumnRule numbers{0, int32Max, storedLength};
    static const ColumnRule others{int32Min, int32Max, storedLength};
    return column.compare(QLatin1String("NUMMER"), Qt::CaseInsensitive) == 0 ? numbers : others;
}

QString rangeproblem(const QString &column, double value)
{
    const ColumnRule &rule = storerule(column);
    if (value >= double(rule.min) && value <= double(rule.max))
        return {};
    return QStringLiteral("erlaubt sind %1 bis %2").arg(rule.min).arg(rule.max);
}

QString lengthproblem(const QString &column, qsizetype length)
{
    const ColumnRule &rule = storerule(column);
    if (length <= rule.maxLength)
        return {};
    return QStringLiteral("ein Text von %1 Zeichen; gespeichert werden höchstens %2").arg(length).arg(rule.maxLength);
}

bool outsidewindow(const QString &column, double value)
{
    const ColumnRule &rule = windowrule(column);
    return rule.maxLength == 0 && (value < double(rule.min) || value > double(rule.max));
}

bool outsidewindow(const QString &column, qsizetype length)
{
    const ColumnRule &rule = windowrule(column);
    return rule.maxLength > 0 && length > rule.maxLength;
}

bool outsidewindow(const QString &column, const QVariant &value)
{
    if (value.isNull())
        return false;
    if (value.typeId() == QMetaType::QString)
        return outsidewindow(column, qsizetype(value.toString().toUcs4().size()));
    bool number = false;
    const double d = value.toDouble(&number);
    return number && outsidewindow(column, d);
}

QString windowwords(const QString &column)
{
    const ColumnRule &rule = windowrule(column);
    return rule.maxLength > 0 ? QStringLiteral("die Fenster zeigen höchstens %1 Zeichen").arg(rule.maxLength)
                              : QStringLiteral("die Fenster zeigen %1 bis %2").arg(rule.min).arg(rule.max);
}

QString keptnote(int values)
{
    if (values <= 0)
        return {};
    return QStringLiteral("%1 %2 außerhalb der Fensterbereiche behalten, siehe Probleme")
        .arg(values)
        .arg(values == 1 ? QStringLiteral("Wert") : QStringLiteral("Werte"));
}

QString withkept(const QString &message, int values)
{
    const QString note = keptnote(values);
    if (note.isEmpty())
        return message;
    return message.isEmpty() ? note : message + QLatin1Char(' ') + note;
}

} // namespace zorbo
