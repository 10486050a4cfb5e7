#include "editor/playersave.h"

#include "core/fieldcheck.h"
#include "platform/runner.h"

namespace zorbo {

namespace {

// A number field: left empty over a Null it keeps the Null.
Result checknumber(const QString &caption, const QString &text, std::optional<qint64> &value)
{
    if (!value && text.trimmed().isEmpty())
        return Result::success();
    qint64 number = 0;
    Result check = checkwholenumber(caption, text, &number);
    if (check)
        value = number;
    return check;
}

// A text field: left empty over a Null it keeps the Null.
void settext(std::optional<QString> &value, const QString &text)
{
    if (value || !text.isEmpty())
        value = text;
}

} // namespace

int haarziffer(qint64 gesicht)
{
    return int((gesicht >> 13) & 0x7F);
}

int sterneindexof(qint64 staerke)
{
    if (staerke <= 0)
        return 0;
    if (staerke >= 12000)
        return 12;
    // Tenths of a star rounded half up, as the grid shows them; a half star
    // is five tenths, and no number of tenths lies midway between two.
    const qint64 tenths = (staerke + 100) / 200;
    return int((tenths * 2 + 5) / 10);
}

int positionindexof(const std::optional<qint64> &art)
{
    return art && *art >= 0 && *art < positionsnamen().size() ? int(*art) : 0;
}

PlayerForm playerform(const GridPlayer &player)
{
    const auto number = [](const std::optional<qint64> &value) {
        return value ? QString::number(*value) : QString();
    };
    PlayerForm f;
    f.shown = player;
    f.name = player.name.value_or(QString());
    f.vorname = player.vorname.value_or(QString());
    f.staerkeIndex = sterneindexof(player.staerke.value_or(0));
    f.maxIndex = sterneindexof(player.maxstaerke.value_or(0));
    f.land = player.nation.value_or(QString());
    f.groesse = number(player.groesse);
    f.art = positionindexof(player.art);
    f.einsatz = number(player.restspiele);
    f.rnr = number(player.rueckennummer);
    f.gesicht = player.gesicht.value_or(0);
    f.erlernt = player.erlernt.value_or(QString());
    f.gesperrt = player.gesperrt.value_or(QString());
    return f;
}

Result spielersave(Database &db, const PlayerForm &form, GridPlayer *saved)
{
    const GridPlayer &shown = form.shown;
    GridPlayer p = shown;
    for (const Result &check : {checknumber(QStringLiteral("Resteinsätze:"), form.einsatz, p.restspiele),
                                checknumber(QStringLiteral("Rückennummer:"), form.rnr, p.rueckennummer),
                                checknumber(QStringLiteral("Größe:"), form.groesse, p.groesse)}) {
        if (!check)
            return check;
    }
    settext(p.name, form.name);
    settext(p.vorname, form.vorname);
    settext(p.nation, form.land);
    settext(p.erlernt, form.erlernt);
    settext(p.gesperrt, form.gesperrt);
    // A list entry shows a stored value rounded, or as the first entry; one
    // left as it showed keeps the stored value.
    if (form.staerkeIndex != sterneindexof(shown.staerke.value_or(0)))
        p.staerke = qint64(form.staerkeIndex) * 1000;
    if (form.maxIndex != sterneindexof(shown.maxstaerke.value_or(0)))
        p.maxstaerke = qint64(form.maxIndex) * 1000;
    if (form.art != positionindexof(shown.art))
        p.art = form.art;
    const Result written = runtransaction(db, QStringLiteral("Spieler %1 lässt sich nicht speichern").arg(p.nummer), [&] {
        if (form.gesicht != shown.gesicht.value_or(0)) {
            p.gesicht = form.gesicht;
            Statement colours = db.prepare(
                QStringLiteral("SELECT Hautfarbe, Haarfarbe FROM e_gesichtsfarbe WHERE Haare = ?1 AND farbe = ?2"));
            colours.bindAll(haarziffer(form.gesicht), form.gesicht % 4);
            if (colours.step()) {
                p.hautfarbe = colours.integer(0);
                p.haarfarbe = colours.integer(1);
            }
        }
        Statement st = db.prepare(QStringLiteral(
            "UPDATE spieler SET NAME = ?2, VORNAME = ?3, \"Stärke\" = ?4, \"Max_Stärke\" = ?5, NATION = ?6, "
            "GROESSE = ?7, ART = ?8, \"REST_EINSÄTZE\" = ?9, RUECKENNUMMER = ?10, GESICHT = ?11, "
            "HAUTFARBE = ?12, HAARFARBE = ?13, ERLERNT = ?14, GESPERRT = ?15 WHERE NUMMER = ?1"));
        st.bindAll(p.nummer, p.name, p.vorname, p.staerke, p.maxstaerke, p.nation, p.groesse, p.art, p.restspiele,
                   p.rueckennummer, p.gesicht, p.hautfarbe, p.haarfarbe, p.erlernt, p.gesperrt);
        st.exec();
        if (db.changes() == 0)
            return Result::failure(QStringLiteral("Der Spieler steht nicht mehr in der Tabelle spieler, eine Änderung hat "
                                                  "ihn entfernt. Die Eingaben bleiben im Formular; „Verwerfen“ gibt sie "
                                                  "auf."));
        return Result::success();
    });
    if (written && saved)
        *saved = p;
    return written;
}

} // namespace zorbo
