#include "exchange/competitiontemplate.h"

#include "core/landneu.h"
#include "core/gamedb.h"
#include "core/generator.h"
#include "exchange/cfgfile.h"
#include "exchange/cfgwriter.h"
#include "platform/numbers.h"

#include <array>

namespace zorbo {

namespace {

const QString leagues = QStringLiteral("SELECT land, liga, teams, quali FROM e_landkontinent WHERE teams > 0 ORDER BY id ASC");

QString entry(const QString &keyword, const QString &value)
{
    return QLatin1Char('\t') + keyword.leftJustified(35) + value;
}

} // namespace

Step templatestep()
{
    return {QStringLiteral("Wettbewerbsvorlage erstellt"), QStringLiteral("Vorlage")};
}

ExchangeResult tempvereine(Database &db, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die Vorlage ließ sich nicht anlegen, die Welt bleibt unverändert"), [&] {
        ExchangeResult result;
        const qint64 total = db.scalar(QStringLiteral("SELECT sum(teams) FROM e_landkontinent WHERE teams > 0")).toLongLong();
        Statement club = db.prepare(QStringLiteral(
            "INSERT INTO vereine VALUES (?1, ?2, ?2, 0, 0, 0, '', '', '', ?3, 0, 0, 0, 70, 10, 0, "
            "'255,255,255', '255,255,255', '255,255,255', '255,255,255', ' 48, 48, 48', ' 48, 48, 48', ' 48, 48, 48', "
            "' 48, 48, 48', ' 24,181,220', ' 24,181,220', ' 24,181,220', ' 24,181,220')"));
        Statement walk = db.prepare(leagues);
        qint64 done = 0;
        while (walk.step()) {
            bool created = false;
            const QString country = landneu(db, walk.text(0), &created);
            result.nationalTeams += created ? 1 : 0;
            const qint64 teams = walk.integer(2);
            for (qint64 i = 1; i <= teams; ++i) {
                const qint64 number = newteamnumber(db);
                club.bindAll(number, walk.text(1) + formatMinDigits(i, 3), country);
                club.exec();
                spieler20new(db, number, country, 20);
                ++result.teams;
                result.players += 20;
                report(progress, ++done, total);
            }
        }
        result.result = Result::success(QStringLiteral("%1 Vereine mit je 20 Spielern angelegt, %2 Länder neu.")
                                            .arg(result.teams)
                                            .arg(result.nationalTeams));
        return result;
    });
}

ExchangeResult templiga(Database &db, const QString &path, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("1_we.cfg wurde nicht geschrieben"), [&] {
        ExchangeResult result;
        const qint64 total = db.scalar(QStringLiteral("SELECT count(*) FROM e_landkontinent WHERE teams > 0")).toLongLong();
        // Lists of the clubs on places coded UI, UEFAQ, UEFA, CLQ, CL, in the
        // order of the summary lines.
        const std::array<QString, 5> codes = {QStringLiteral("UI"), QStringLiteral("UEFAQ"), QStringLiteral("UEFA"),
                                              QStringLiteral("CLQ"), QStringLiteral("CL")};
        const std::array<QString, 5> summaryCodes = {QStringLiteral("UI"), QStringLiteral("UQ"), QStringLiteral("U"),
                                                     QStringLiteral("CQ"), QStringLiteral("C")};
        std::array<QString, 5> lists;
        CfgWriter out(path);
        Statement walk = db.prepare(leagues);
        Statement clubs = db.prepare(QStringLiteral("SELECT NUMMER FROM vereine WHERE samename(NATION, ?1) ORDER BY NUMMER"));
        // Of several rows of one country the one spelt like the league's
        // country comes first: that is the row landneu made for it.
        Statement land = db.prepare(
            QStringLiteral("SELECT NUMMER FROM vereine_national WHERE samename(NAME, ?1) ORDER BY NAME IS NOT ?1, NUMMER"));
        while (walk.step()) {
            const QString country = walk.text(0);
            const QString liga = walk.text(1);
            const qint64 teams = walk.integer(2);
            const QString quali = walk.text(3);
            const QString what = QStringLiteral("Liga %1").arg(country);
            // Splitting an empty text gives no places at all.
            const QStringList places = quali.isEmpty() ? QStringList() : quali.split(QLatin1Char(','));
            QStringList start, ids;
            clubs.bind(1, country);
            for (qint64 i = 1; i <= teams; ++i) {
                if (!clubs.step())
                    throw Fault(QStringLiteral("%1 hat nur %2 Vereine, die Liga braucht %3.").arg(country).arg(i - 1).arg(teams));
                const QString number = QString::number(clubs.integer(0));
                start << number;
                ids << liga;
                const qsizetype place = i - 1;
                for (size_t c = 0; place < places.size() && c < codes.size(); ++c) {
                    if (places[place] == codes[c])
                        lists[c] += number + QLatin1Char(',');
                }
            }
            clubs.reset();
            land.bind(1, country);
            if (!land.step())
                throw Fault(QStringLiteral("%1 fehlt unter den Nationalteams.").arg(country));
            const QString landNumber = QString::number(land.integer(0));
            land.reset();

            out.line(QStringLiteral("NEUER_WETTBEWERB"));
            out.line(entry(QStringLiteral("NAME"), QStringLiteral("\"Liga %1\"").arg(country)), what);
            out.line(entry(QStringLiteral("IDENTIFIKATION"), liga), what);
            out.line(entry(QStringLiteral("TEAMS"), QString::number(teams)));
            for (const char *modus : {"RUECKSPIELE", "HEIMRECHT", "ENGLISCHE_TABELLE"})
                out.line(entry(QStringLiteral("MODUS"), QLatin1String(modus)));
            out.line(entry(QStringLiteral("SUPER_ART"), QStringLiteral("NATIONAL")));
            out.line(entry(QStringLiteral("WOCHENTAG"), QStringLiteral("Samstag")));
            out.line(entry(QStringLiteral("QUOTE_WOCHENTAG"), QStringLiteral("80")));
            out.line(entry(QStringLiteral("SPIELTAGE"), QString::number((teams - 1) * 2)));
            out.line(entry(QStringLiteral("QUALI_FUER"), quali), what);
            out.line(entry(QStringLiteral("QUALI_FUER"), ids.join(QLatin1Char(','))), what);
            out.line(entry(QStringLiteral("STARTTEILNEHMER"), start.join(QLatin1Char(','))));
            out.line(entry(QStringLiteral("LAND"), landNumber));
            out.line(entry(QStringLiteral("ERSTE_GELBSPERRE"), QStringLiteral("5")));
            out.line(entry(QStringLiteral("INTERVALL_GELBSPERRE"), QStringLiteral("5")));
            out.line(entry(QStringLiteral("GRAFIK_NUMMER"), QStringLiteral("13")));
            out.line(entry(QStringLiteral("SIEG_PRAEMIE"), QStringLiteral("20000")));
            out.line(entry(QStringLiteral("UNENTSCHIEDEN_PRAEMIE"), QStringLiteral("5000")));
            out.line(entry(QStringLiteral("BASISLIGA"), QStringLiteral("JA")));
            out.line(entry(QStringLiteral("QUALI_ZU_SAISONSTART"), QStringLiteral("JA")));
            out.line(entry(QStringLiteral("KALENDER_POSITION"), QStringLiteral("0")));
            out.endLine();
            out.endLine();
            ++result.nationalTeams;
            result.teams += int(teams);
            // The file is written only after the last league.
            report(progress, result.nationalTeams, total);
        }
        for (size_t c = 0; c < lists.size(); ++c) {
            // The count is the highest index of the list split at ",": the
            // trailing comma makes it the number of clubs, and -1 when empty.
            const qsizetype count = lists[c].isEmpty() ? -1 : lists[c].count(QLatin1Char(','));
            out.line(summaryCodes[c] + QString::number(count) + QLatin1Char(' ') + lists[c]);
        }
        result.result = out.save();
        return result;
    });
}

} // namespace zorbo
