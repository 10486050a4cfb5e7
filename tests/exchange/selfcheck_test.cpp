#include "exchange/cfgcheck.h"
#include "support/qstringprint.h"
#include "worldfixture.h"

#include <QDir>
#include <QFile>

using namespace zorbo;
using namespace zorbo::test;

namespace {

QByteArray example(const char *name)
{
    return readBytes(QStringLiteral(ZORBO_EXAMPLES "/beispielwelt/") + QLatin1String(name));
}

// Runs the check of the two configuration files on a game folder holding them.
SelfCheckReport check(const TempFolder &game)
{
    return selfcheck(Settings{}, game.path(), configchecks());
}

const FileDifference *findReason(const SelfCheckReport &r, const QString &words)
{
    for (const FileDifference &d : r.differences) {
        if (d.reason.contains(words))
            return &d;
    }
    return nullptr;
}

QString listed(const SelfCheckReport &r)
{
    QStringList lines;
    for (const FileDifference &d : r.differences)
        lines << d.place() + ": " + d.game + " | " + d.ours + " | " + d.reason;
    return lines.join('\n');
}

} // namespace

TEST(SelfCheck, HandMadeFilesComeBackUnchanged)
{
    TempFolder game;
    ASSERT_TRUE(writeBytes(game.file("1_tm.cfg"), example("1_tm.cfg")));
    ASSERT_TRUE(writeBytes(game.file("1_sp.cfg"), example("1_sp.cfg")));
    const SelfCheckReport r = check(game);
    ASSERT_TRUE(r.result.ok) << r.result.message.toStdString();
    EXPECT_EQ(r.checked.size(), 2);
    EXPECT_TRUE(r.differences.isEmpty()) << listed(r).toStdString();
    EXPECT_EQ(r.result.message, "Beide Dateien kommen unverändert zurück.");
    // The game's files are read only.
    EXPECT_EQ(readBytes(game.file("1_tm.cfg")), example("1_tm.cfg"));
}

TEST(SelfCheck, EachKnownDifferenceIsNamedWithFileLineAndReason)
{
    TempFolder game;
    QByteArray teams = example("1_tm.cfg");
    // Line 2: another program wrote the file.
    teams.replace(";Zorbo Editor v2.0", ";Anderes Werkzeug 1.0");
    // Line 24: a crest number beyond the windows, written as a decimal.
    teams.replace("        GRAFIK_NR                110\r\n", "        GRAFIK_NR                1500.0\r\n");
    // Line 25: a tab in front of the value.
    teams.replace("        STAERKE                  2.5\r\n", "        STAERKE\t2.5\r\n");
    // After the last club: a record of two lines, which the reader takes in its short form.
    const qsizetype lastClub = teams.indexOf("\r\n\r\n", teams.indexOf("        NUMMER                   14\r\n")) + 4;
    teams.insert(lastClub, "NEUES_TEAM\r\n        NUMMER 15\r\n        NAME \"Kurz\"\r\n\r\n");
    ASSERT_TRUE(writeBytes(game.file("1_tm.cfg"), teams));
    // The player file in UTF-8, with a letter beyond code page 1252 in line 15.
    QByteArray players = QString::fromLatin1(example("1_sp.cfg")).toUtf8();
    players.replace("\"Lukas\"", "\"Łukasz\"");
    ASSERT_TRUE(writeBytes(game.file("1_SP.CFG"), players));

    const SelfCheckReport r = check(game);
    ASSERT_TRUE(r.result.ok) << r.result.message.toStdString();
    EXPECT_EQ(r.checked.size(), 2);
    const FileDifference *head = findReason(r, "Kopfzeile");
    ASSERT_NE(head, nullptr) << listed(r).toStdString();
    EXPECT_EQ(head->line, 2);
    EXPECT_EQ(head->game, ";Anderes Werkzeug 1.0 Copyright (C) 2026 the Zorbo Editor contributors, licensed under the GNU LGPL 2.1 or later");
    const FileDifference *crest = findReason(r, "außerhalb dessen, was die Fenster zeigen");
    ASSERT_NE(crest, nullptr) << listed(r).toStdString();
    EXPECT_EQ(crest->place(), "1_tm.cfg, Zeile 24");
    EXPECT_EQ(crest->game.trimmed(), "GRAFIK_NR                1500.0");
    EXPECT_EQ(crest->ours.trimmed(), "GRAFIK_NR                1500");
    const FileDifference *tab = findReason(r, "Tabulatoren");
    ASSERT_NE(tab, nullptr) << listed(r).toStdString();
    EXPECT_EQ(tab->line, 25);
    const FileDifference *shortForm = findReason(r, "Kurzform");
    ASSERT_NE(shortForm, nullptr) << listed(r).toStdString();
    EXPECT_GT(shortForm->line, 25);
    const FileDifference *letter = findReason(r, "außerhalb der Zeichentabelle 1252");
    ASSERT_NE(letter, nullptr) << listed(r).toStdString();
    EXPECT_EQ(letter->file, "1_SP.CFG");
    EXPECT_EQ(letter->line, 15);
    EXPECT_TRUE(letter->reason.contains("»Ł«")) << letter->reason.toStdString();
    EXPECT_TRUE(letter->ours.contains("Lukasz")) << letter->ours.toStdString();
    // The umlauts of a UTF-8 file differ for the encoding alone.
    EXPECT_NE(findReason(r, "in UTF-8 geschrieben"), nullptr) << listed(r).toStdString();
    for (const FileDifference &d : r.differences)
        EXPECT_FALSE(d.reason.isEmpty()) << (d.place() + ": " + d.game + " | " + d.ours).toStdString();
    EXPECT_TRUE(r.result.message.endsWith("in 2 von 2 Dateien.")) << r.result.message.toStdString();
}

TEST(SelfCheck, LineEndsAndMissingFilesAndStops)
{
    TempFolder game;
    QByteArray players = example("1_sp.cfg");
    players.replace("        GROESSE         169\r\n", "        GROESSE         169\n");
    ASSERT_TRUE(writeBytes(game.file("1_sp.cfg"), players));
    SelfCheckReport r = check(game);
    ASSERT_TRUE(r.result.ok) << r.result.message.toStdString();
    ASSERT_EQ(r.differences.size(), 1) << listed(r).toStdString();
    EXPECT_EQ(r.differences[0].line, 19);
    EXPECT_TRUE(r.differences[0].reason.contains("CR LF"));

    // A stop from the progress ends the check with nothing listed.
    r = selfcheck(Settings{}, game.path(), configchecks(), [](qint64 done, qint64) { return done < 300; });
    EXPECT_FALSE(r.result.ok);
    EXPECT_TRUE(r.result.cancelled);

    TempFolder empty;
    r = check(empty);
    EXPECT_FALSE(r.result.ok);
    EXPECT_TRUE(r.result.message.contains("1_tm.cfg, 1_sp.cfg")) << r.result.message.toStdString();

    // Settings without folders look nowhere, not in the working folder.
    const QString before = QDir::currentPath();
    QDir::setCurrent(game.path());
    r = selfcheck(Settings{}, {}, configchecks());
    QDir::setCurrent(before);
    EXPECT_FALSE(r.result.ok);
    EXPECT_TRUE(r.result.message.startsWith("In den Ordnern der Einstellungen liegt keine")) << r.result.message.toStdString();
}
