#include "tools/clubnames.h"

#include "core/columnrules.h"
#include "platform/runner.h"

namespace zorbo {

QList<NamedTeam> longclubnames(Database &db, const Progress &progress)
{
    const qint64 total = db.scalar(QStringLiteral("SELECT count(*) FROM vereine WHERE length(NAME) > ?1"),
                                   longestClubName).toLongLong();
    Statement st = db.prepare(QStringLiteral("SELECT NAME, NUMMER FROM vereine WHERE length(NAME) > ?1 ORDER BY NAME COLLATE deutsch"));
    st.bind(1, longestClubName);
    QList<NamedTeam> found;
    while (st.step()) {
        found << NamedTeam{st.integer(1), st.text(0)};
        report(progress, found.size(), total);
    }
    return found;
}

QString nameproposal(const QString &name, NameCut cut)
{
    if (cut == NameCut::Whole)
        return name;
    const QStringList words = name.split(QLatin1Char(' '));
    const qsizetype n = words.size();
    qsizetype first = 0;
    qsizetype last = n - 1;
    if (n >= 3) {
        if (cut == NameCut::Left)
            first = 1;
        else
            last = n - 2;
    }
    QString proposal;
    for (qsizetype i = first; i <= last; ++i) {
        proposal += words[i];
        if (i != n - 1)
            proposal += QLatin1Char(' ');
    }
    // A blank behind the last word kept would stay in the club's name and
    // count towards its length.
    return proposal.trimmed();
}

Step renameclubstep(qint64 team, const QString &name)
{
    return {QStringLiteral("Verein %1 heißt jetzt „%2“").arg(team).arg(name)};
}

Result renameclub(Database &db, qint64 team, const QString &name)
{
    if (name.isEmpty())
        return Result::failure(QStringLiteral("Der neue Vereinsname ist leer; es wurde nichts gespeichert."));
    if (const QString problem = lengthproblem(QStringLiteral("NAME"), name.size()); !problem.isEmpty())
        return Result::failure(
            QStringLiteral("Der neue Vereinsname (Feld NAME) ist zu lang: %1. Es wurde nichts gespeichert.").arg(problem));
    return runtransaction(db, QStringLiteral("Der Vereinsname lässt sich nicht speichern"), [&] {
        if (db.run(QStringLiteral("UPDATE vereine SET NAME = ?1 WHERE NUMMER = ?2"), name, team) == 0)
            return Result::failure(QStringLiteral("Den Verein %1 gibt es nicht (mehr).").arg(team));
        QString text = QStringLiteral("Verein %1 heißt jetzt „%2“.").arg(team).arg(name);
        if (name.size() > longestClubName)
            text += QStringLiteral(" Der Name ist mit %1 Zeichen noch zu lang für das Spiel (höchstens %2).")
                        .arg(name.size())
                        .arg(longestClubName);
        return Result::success(text);
    });
}

} // namespace zorbo
