// Values the world keeps although the windows can't show them: a name longer
// than its field lets you type, a strength above six stars. The game takes
// them; the list says where they are, so that a save in a window is no
// surprise.
#include "core/columnrules.h"
#include "core/problemsink.h"

namespace zorbo::detail {

namespace {

QString shownvalue(const QVariant &value)
{
    if (value.typeId() != QMetaType::QString)
        return value.toString();
    const QString text = value.toString();
    return QStringLiteral("„%1“ (%2 Zeichen)").arg(text).arg(text.toUcs4().size());
}

void walk(Database &db, const QString &table, ProblemSink &sink)
{
    const bool players = table == QLatin1String("spieler");
    const bool country = table == QLatin1String("vereine_national");
    Statement st = db.prepare(QStringLiteral("SELECT * FROM %1 ORDER BY NUMMER").arg(table));
    QStringList columns;
    for (const ColumnInfo &c : db.columns(table))
        columns << c.name.toUpper();
    // Kit drawings are checked against the kit set, which holds fewer.
    const auto skipped = [&](int c) { return columns[c].endsWith(QLatin1String("TRIKOT_ART")); };
    const int name = int(columns.indexOf(QStringLiteral("NAME")));
    const int vorname = int(columns.indexOf(QStringLiteral("VORNAME")));
    while (st.step()) {
        const qint64 nr = st.integer(0);
        QString who;
        for (int c = 1; c < columns.size(); ++c) {
            const QVariant value = st.value(c);
            if (skipped(c) || !outsidewindow(columns[c], value))
                continue;
            if (who.isEmpty())
                who = players ? QStringLiteral("Spieler „%1 %2“").arg(st.text(vorname), st.text(name))
                              : (country ? QStringLiteral("Land „%1“") : QStringLiteral("Verein „%1“")).arg(st.text(name));
            // The name stands in who already; its length says the rest.
            const QString shown = c == name ? QStringLiteral("%1 Zeichen").arg(value.toString().toUcs4().size())
                                            : shownvalue(value);
            const QString text = QStringLiteral("%1: %2; %3").arg(who, shown, windowwords(columns[c]));
            if (players)
                sink.player(ProblemKind::OutsideWindow, nr, columns[c], text);
            else
                sink.team(ProblemKind::OutsideWindow, nr, country, columns[c], text);
        }
    }
}

} // namespace

void checkwindowranges(Database &db, ProblemSink &sink)
{
    for (const char *table : {"vereine_national", "vereine", "spieler"})
        walk(db, QLatin1String(table), sink);
}

} // namespace zorbo::detail
