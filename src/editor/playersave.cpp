#include "editor/playersave.h"

#include "core/fieldcheck.h"
#include "editor/playergrid.h"
#include "platform/numbers.h"
#include "platform/runner.h"

namespace zorbo {

int haarziffer(qint64 gesicht)
{
    return int((gesicht >> 13) & 0x7F);
}

int sterneindex(const QString &text)
{
    const QString number = text.section(QLatin1Char(' '), 0, 0).replace(QLatin1Char(','), QLatin1Char('.'));
    return int(roundHalfEven(valtext(number) * 2.0));
}

QStringList updatedgridrow(QStringList row, const PlayerForm &form, QChar decimalSign)
{
    if (row.size() != PlayerColumnCount)
        return row;
    const QStringList &positions = positionsnamen();
    row[ColName] = form.name;
    row[ColVorname] = form.vorname;
    row[ColStaerke] = sternetext(form.staerke >= 0 ? form.staerke : qint64(form.staerkeIndex) * 1000, decimalSign);
    row[ColMaxStaerke] = sternetext(form.maxstaerke >= 0 ? form.maxstaerke : qint64(form.maxIndex) * 1000, decimalSign);
    row[ColLand] = form.land;
    row[ColGroesse] = form.groesse.trimmed();
    row[ColPosition] = form.art >= 0 && form.art < positions.size() ? positions[form.art] : QString();
    row[ColRueckennummer] = form.rnr.trimmed();
    row[ColRestspiele] = form.einsatz.trimmed();
    row[ColGesicht] = QString::number(form.gesicht);
    row[ColHautfarbe] = QString::number(form.hautfarbe);
    row[ColHaarfarbe] = QString::number(form.haarfarbe);
    row[ColErlernt] = form.erlernt;
    row[ColGesperrt] = form.gesperrt;
    return row;
}

int sterneindexof(qint64 staerke)
{
    return qBound(0, sterneindex(sternetext(staerke, QLatin1Char('.'))), 12);
}

Result spielersave(Database &db, PlayerForm &form)
{
    qint64 groesse = 0, einsatz = 0, rnr = 0;
    for (const Result &check : {checkwholenumber(QStringLiteral("Resteinsätze:"), form.einsatz, &einsatz),
                                checkwholenumber(QStringLiteral("Rückennummer:"), form.rnr, &rnr),
                                checkwholenumber(QStringLiteral("Größe:"), form.groesse, &groesse)}) {
        if (!check)
            return check;
    }
    return runtransaction(db, QStringLiteral("Spieler %1 lässt sich nicht speichern").arg(form.nummer), [&] {
        // A star entry shows a strength rounded to half stars, and the face
        // decides the colours; what the user left as it was keeps its stored
        // value, so that a save changes only what was changed.
        Statement stored = db.prepare(QStringLiteral(
            "SELECT \"Stärke\", \"Max_Stärke\", GESICHT, HAUTFARBE, HAARFARBE FROM spieler WHERE NUMMER = ?1"));
        stored.bind(1, form.nummer);
        const bool known = stored.step();
        const auto keep = [&](int column, int index) {
            return known && !stored.isNull(column) && sterneindexof(stored.integer(column)) == index;
        };
        const qint64 staerke = keep(0, form.staerkeIndex) ? stored.integer(0) : qint64(form.staerkeIndex) * 1000;
        const qint64 maxstaerke = keep(1, form.maxIndex) ? stored.integer(1) : qint64(form.maxIndex) * 1000;
        qint64 haut = form.hautfarbe, haar = form.haarfarbe;
        if (!known || stored.isNull(2) || stored.integer(2) != form.gesicht) {
            Statement colours = db.prepare(
                QStringLiteral("SELECT Hautfarbe, Haarfarbe FROM e_gesichtsfarbe WHERE Haare = ?1 AND farbe = ?2"));
            colours.bindAll(haarziffer(form.gesicht), form.gesicht % 4);
            if (colours.step()) {
                haut = colours.integer(0);
                haar = colours.integer(1);
            }
        }
        Statement st = db.prepare(QStringLiteral(
            "UPDATE spieler SET NAME = ?2, VORNAME = ?3, \"Stärke\" = ?4, \"Max_Stärke\" = ?5, NATION = ?6, "
            "GROESSE = ?7, ART = ?8, \"REST_EINSÄTZE\" = ?9, RUECKENNUMMER = ?10, GESICHT = ?11, "
            "HAUTFARBE = ?12, HAARFARBE = ?13, ERLERNT = ?14, GESPERRT = ?15 WHERE NUMMER = ?1"));
        st.bindAll(form.nummer, form.name, form.vorname, staerke, maxstaerke, form.land, groesse, form.art, einsatz, rnr, form.gesicht, haut,
                   haar, form.erlernt, form.gesperrt);
        st.exec();
        form.staerke = staerke;
        form.maxstaerke = maxstaerke;
        form.hautfarbe = haut;
        form.haarfarbe = haar;
        return Result::success();
    });
}

} // namespace zorbo
