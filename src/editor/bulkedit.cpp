#include "editor/bulkedit.h"

#include "core/facecode.h"
#include "editor/playerlist.h"
#include "editor/playersave.h"
#include "platform/random.h"

#include <QRegularExpression>
#include <algorithm>

namespace zorbo {

namespace {

// Positions of the fields in a row of readplayers().
int fieldindex(const QString &heading)
{
    const PlayerField *f = playerfield(heading);
    return f ? int(f - playerfields().constData()) : -1;
}

const int iName = fieldindex(QStringLiteral("Name"));
const int iVorname = fieldindex(QStringLiteral("Vorname"));
const int iArt = fieldindex(QStringLiteral("Position"));
const int iStaerke = fieldindex(QStringLiteral("Stärke"));
const int iMax = fieldindex(QStringLiteral("Maxstärke"));
const int iRnr = fieldindex(QStringLiteral("Rückennummer"));
const int iGesicht = fieldindex(QStringLiteral("Gesicht"));
const int iHaut = fieldindex(QStringLiteral("Hautfarbe"));
const int iHaar = fieldindex(QStringLiteral("Haarfarbe"));
const int iErlernt = fieldindex(QStringLiteral("Erlernt"));
const int iGesperrt = fieldindex(QStringLiteral("Gesperrt"));

constexpr qint64 sixStars = 12000;

qint64 stepped(const QVariant &units, int steps)
{
    return std::clamp(units.toLongLong() + qint64(steps) * 1000, qint64(0), sixStars);
}

// The squads of the clubs (never the market or a national team) that hold
// one of the players, each in the order it is renumbered in.
QList<QList<qint64>> squadsof(Database &db, const QList<qint64> &players)
{
    QStringList n;
    for (qint64 p : players)
        n << QString::number(p);
    Statement st = db.prepare(QStringLiteral(
        "SELECT k.verein, s.NUMMER FROM kaderzeilen k JOIN spieler s ON s.NUMMER = k.spieler "
        "WHERE k.verein IN (SELECT verein FROM kaderzeilen WHERE spieler IN (SELECT value FROM json_each(?1))) "
        "AND k.verein IN (SELECT NUMMER FROM vereine WHERE NUMMER <> 0) "
        "ORDER BY k.verein, s.ART, s.NAME COLLATE deutsch, s.VORNAME COLLATE deutsch, s.NUMMER"));
    st.bind(1, QLatin1Char('[') + n.join(QLatin1Char(',')) + QLatin1Char(']'));
    QList<QList<qint64>> squads;
    qint64 club = -1;
    while (st.step()) {
        if (squads.isEmpty() || st.integer(0) != club) {
            squads.append(QList<qint64>());
            club = st.integer(0);
        }
        squads.last().append(st.integer(1));
    }
    return squads;
}

qint64 drawface(const FacePictures &faces)
{
    Face face;
    face.farbe = rndBelow(2);
    for (int part = 0; part < FacePartCount; ++part)
        face.digits[part] = rndBelow(std::max(1, faces.count(face.farbe, part)));
    return encodeface(face);
}

QString whose(const QVariantList &row)
{
    return QStringLiteral("Spieler %1 (%2)").arg(row[0].toLongLong()).arg(
        (row[iVorname].toString() + QLatin1Char(' ') + row[iName].toString()).trimmed());
}

} // namespace

std::optional<PlayerEdit> parseedit(const QString &text, QString *error)
{
    const QString t = text.trimmed();
    static const QRegularExpression step(QStringLiteral("^(stärke|maxstärke|staerke|maxstaerke)\\s*([+-]\\d+)$"),
                                         QRegularExpression::CaseInsensitiveOption);
    if (const QRegularExpressionMatch m = step.match(t); m.hasMatch()) {
        const int steps = m.captured(2).toInt();
        return m.captured(1).startsWith(QLatin1String("max"), Qt::CaseInsensitive) ? PlayerEdit::maximum(steps)
                                                                                   : PlayerEdit::strength(steps);
    }
    if (t.compare(QStringLiteral("Rückennummern"), Qt::CaseInsensitive) == 0)
        return PlayerEdit::of(PlayerEdit::Renumber);
    if (t.compare(QLatin1String("Gesichter"), Qt::CaseInsensitive) == 0)
        return PlayerEdit::of(PlayerEdit::NewFaces);
    if (t.compare(QStringLiteral("Talente löschen"), Qt::CaseInsensitive) == 0)
        return PlayerEdit::of(PlayerEdit::ClearTalents);
    const qsizetype eq = t.indexOf(QLatin1Char('='));
    const PlayerField *field = eq > 0 ? playerfield(t.left(eq)) : nullptr;
    if (!field || field->heading == QLatin1String("Nummer")) {
        *error = QStringLiteral("„%1“ ist keine Änderung; erlaubt sind FELD=WERT (Feld wie die Spalten der CSV-Datei), "
                                "Stärke+N, Maxstärke-N (halbe Sterne), Rückennummern, Gesichter, \"Talente löschen\".")
                     .arg(t);
        return std::nullopt;
    }
    return PlayerEdit::set(field->heading, text.mid(text.indexOf(QLatin1Char('=')) + 1));
}

BulkEditResult bulkedit(Database &db, const QList<qint64> &players, const QList<PlayerEdit> &edits,
                        const FacePictures &faces, bool apply, int previewRows)
{
    BulkEditResult out;
    const auto refuse = [&](const QString &field, const QString &text, qint64 player = -1) {
        out.result = Result::failure(QStringLiteral("%1: %2. Es wurde nichts geändert.").arg(field, text));
        Finding f;
        f.field = field;
        f.text = text;
        f.player = player;
        out.findings = {f};
        out.changed = 0;
        out.preview.clear();
        return out;
    };
    // The values of Set edits, checked once.
    QList<std::pair<int, QVariant>> sets;
    for (const PlayerEdit &e : edits) {
        if (e.kind != PlayerEdit::Set)
            continue;
        const int i = fieldindex(e.field);
        if (i <= 0)
            return refuse(e.field, QStringLiteral("kein Feld eines Spielers"));
        QString why;
        const std::optional<QVariant> v = parsefield(playerfields()[i], e.value, &why);
        if (!v)
            return refuse(playerfields()[i].heading, why);
        sets.append({i, *v});
    }

    QList<qint64> order = players;
    QList<QList<qint64>> squads;
    const bool renumber = std::any_of(edits.begin(), edits.end(), [](const PlayerEdit &e) { return e.kind == PlayerEdit::Renumber; });
    if (renumber) {
        squads = squadsof(db, players);
        for (const QList<qint64> &squad : squads)
            for (qint64 p : squad)
                if (!order.contains(p))
                    order.append(p);
    }
    const QHash<qint64, QVariantList> before = readplayers(db, &order);
    QHash<qint64, QVariantList> after = before;
    Statement colours = db.prepare(QStringLiteral("SELECT Hautfarbe, Haarfarbe FROM e_gesichtsfarbe WHERE Haare = ?1 AND farbe = ?2"));

    int nextSet = 0;
    for (const PlayerEdit &e : edits) {
        switch (e.kind) {
        case PlayerEdit::Set:
            break;
        case PlayerEdit::Renumber:
            for (const QList<qint64> &squad : squads)
                for (int i = 0; i < squad.size(); ++i)
                    after[squad[i]][iRnr] = qint64(i + 1);
            continue;
        default:
            for (qint64 p : players) {
                auto row = after.find(p);
                if (row == after.end())
                    continue;
                QVariantList &r = *row;
                if (e.kind == PlayerEdit::StepStrength) {
                    r[iStaerke] = stepped(r[iStaerke], e.steps);
                    if (!r[iMax].isNull() && r[iMax].toLongLong() < r[iStaerke].toLongLong())
                        r[iMax] = r[iStaerke];
                } else if (e.kind == PlayerEdit::StepMaximum) {
                    r[iMax] = stepped(r[iMax], e.steps);
                } else if (e.kind == PlayerEdit::NewFaces) {
                    const qint64 face = drawface(faces);
                    r[iGesicht] = face;
                    colours.bindAll(haarziffer(face), face % 4);
                    if (colours.step()) {
                        r[iHaut] = colours.integer(0);
                        r[iHaar] = colours.integer(1);
                    }
                    colours.reset();
                } else if (e.kind == PlayerEdit::ClearTalents) {
                    r[iErlernt] = QString();
                    r[iGesperrt] = QString();
                }
            }
            continue;
        }
        const auto &[index, value] = sets[nextSet++];
        for (qint64 p : players) {
            auto row = after.find(p);
            if (row != after.end())
                (*row)[index] = value;
        }
    }

    PlayerWriter writer(db);
    for (qint64 p : order) {
        const auto was = before.constFind(p);
        if (was == before.constEnd())
            continue;
        const QVariantList &now = after[p];
        if (!differs(*was, now))
            continue;
        const bool strengthChanged = !samevalue((*was)[iStaerke], now[iStaerke]) || !samevalue((*was)[iMax], now[iMax]);
        if (strengthChanged && !now[iMax].isNull() && !now[iStaerke].isNull() && now[iMax].toLongLong() < now[iStaerke].toLongLong())
            return refuse(QStringLiteral("Maxstärke"),
                          QStringLiteral("%1 hätte %2 Sterne, weniger als seine Stärke von %3 Sternen")
                              .arg(whose(now), starstext(now[iMax].toLongLong()), starstext(now[iStaerke].toLongLong())),
                          p);
        ++out.changed;
        if (out.preview.size() < previewRows)
            out.preview.append(changeof(*was, now));
        if (apply)
            writer.update(*was, now);
    }
    out.result = Result::success(out.changed == 0 ? QStringLiteral("Keine Änderung.")
                                                  : QStringLiteral("%1 Spieler geändert.").arg(out.changed));
    return out;
}

BulkEditResult runbulkedit(World &world, const QList<qint64> &players, const QList<PlayerEdit> &edits,
                           const FacePictures &faces)
{
    // A restore point for an edit on many players; the world keeps none when
    // the edit changes no row.
    const Step step(QStringLiteral("%1 Spieler auf einmal bearbeitet").arg(players.size()),
                    players.size() > bulkRestoreRows ? QStringLiteral("Bearbeiten auf vielen") : QString());
    return world.run([&](Database &db) { return bulkedit(db, players, edits, faces, true); }, QStringLiteral("Bearbeiten"), step);
}

} // namespace zorbo
