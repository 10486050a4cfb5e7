// The filter expression of the command line and of the named filters, and
// strengths written as stars.
#include "editor/playerlist.h"

#include <QRegularExpression>

namespace zorbo {

std::optional<qint64> parsestars(const QString &text)
{
    static const QRegularExpression form(QStringLiteral("^\\s*(-?)(\\d{1,6})(?:[,.](\\d{1,9}))?\\s*(?:sterne?)?\\s*$"),
                                         QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch m = form.match(text);
    if (!m.hasMatch())
        return std::nullopt;
    // units = stars * 2000 = whole * 2000 + fraction * 2000 / 10^digits, which must come out whole.
    QString frac = m.captured(3);
    while (frac.endsWith(QLatin1Char('0')))
        frac.chop(1);
    if (frac.size() > 4)
        return std::nullopt;
    qint64 scaled = frac.isEmpty() ? 0 : frac.toLongLong();
    for (qsizetype i = frac.size(); i < 4; ++i)
        scaled *= 10; // ten-thousandths of a star
    if ((scaled * 2000) % 10000 != 0)
        return std::nullopt;
    const qint64 units = m.captured(2).toLongLong() * 2000 + scaled * 2000 / 10000;
    return m.captured(1).isEmpty() ? units : -units;
}

QString starstext(qint64 units)
{
    const bool negative = units < 0;
    const qint64 tenthousandths = (negative ? -units : units) * 5; // 1 unit = 0.0005 stars
    QString text = QString::number(tenthousandths / 10000);
    QString frac = QStringLiteral("%1").arg(tenthousandths % 10000, 4, 10, QLatin1Char('0'));
    while (frac.endsWith(QLatin1Char('0')))
        frac.chop(1);
    if (!frac.isEmpty())
        text += QLatin1Char(',') + frac;
    return negative ? QLatin1Char('-') + text : text;
}

namespace {

// A term's value in double quotes keeps ";" and spaces, a quote inside
// doubled: verein="FC ""Blau; Weiß""". Filters kept before values were
// quoted have none, and read as they always did.
QString quoted(const QString &value)
{
    if (!value.contains(QLatin1Char(';')) && !value.startsWith(QLatin1Char('"')) && value.trimmed() == value)
        return value;
    return QLatin1Char('"') + QString(value).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString unquoted(const QString &value)
{
    static const QRegularExpression form(QStringLiteral("^\"((?:[^\"]|\"\")*)\"$"));
    const QRegularExpressionMatch m = form.match(value);
    return m.hasMatch() ? m.captured(1).replace(QLatin1String("\"\""), QLatin1String("\"")) : value;
}

// The terms between the ";" outside quoted values; an expression whose
// quote is never closed splits at every ";", as before quoting.
QStringList terms(const QString &expression)
{
    static const QRegularExpression valueStart(QStringLiteral("^\\s*[a-zäöüß]+\\s*(<=|>=|<|>|=)\\s*$"),
                                               QRegularExpression::CaseInsensitiveOption);
    QStringList out;
    QString term;
    bool inQuotes = false;
    for (qsizetype i = 0; i < expression.size(); ++i) {
        const QChar c = expression.at(i);
        if (inQuotes && c == QLatin1Char('"'))
            inQuotes = i + 1 < expression.size() && expression.at(i + 1) == QLatin1Char('"') ? (term += c, ++i, true) : false;
        else if (!inQuotes && c == QLatin1Char('"') && valueStart.match(term).hasMatch())
            inQuotes = true;
        else if (!inQuotes && c == QLatin1Char(';')) {
            out << term;
            term.clear();
            continue;
        }
        term += c;
    }
    if (inQuotes)
        return expression.split(QLatin1Char(';'));
    out << term;
    return out;
}

} // namespace

std::optional<PlayerFilter> parsefilter(const QString &expression, QString *error)
{
    PlayerFilter f;
    static const QRegularExpression termform(QStringLiteral("^\\s*([a-zäöüß]+)\\s*(<=|>=|<|>|=)?\\s*(.*?)\\s*$"),
                                             QRegularExpression::CaseInsensitiveOption);
    const auto refuse = [&](const QString &term, const QString &why) {
        *error = QStringLiteral("Filter, Teil „%1“: %2").arg(term.trimmed(), why);
        return std::nullopt;
    };
    for (const QString &term : terms(expression)) {
        if (term.trimmed().isEmpty())
            continue;
        const QRegularExpressionMatch m = termform.match(term);
        if (!m.hasMatch())
            return refuse(term, QStringLiteral("erwartet ist SCHLÜSSEL=WERT."));
        const QString key = m.captured(1).toLower();
        const QString op = m.captured(2);
        const QString value = unquoted(m.captured(3));
        const bool flag = op.isEmpty() && value.isEmpty();
        if (key == QLatin1String("ohneverein") && flag)
            f.ohneVerein = true;
        else if (key == QLatin1String("doppelt") && flag)
            f.doppelteNummer = true;
        else if (key == QLatin1String("problem") && flag)
            f.problem = true;
        else if (key == QLatin1String("ohnefreie") && flag)
            f.freie = false;
        else if (op.isEmpty())
            return refuse(term, QStringLiteral("unbekannter Schalter; erlaubt sind ohneverein, doppelt, problem, ohnefreie."));
        else if (key == QLatin1String("sterne")) {
            const std::optional<qint64> units = parsestars(value);
            if (!units)
                return refuse(term, QStringLiteral("„%1“ ist keine Zahl von Sternen.").arg(value));
            if (op == QLatin1String("=") || op.startsWith(QLatin1Char('>')))
                f.staerkeVon = *units + (op == QLatin1String(">") ? 1 : 0);
            if (op == QLatin1String("=") || op.startsWith(QLatin1Char('<')))
                f.staerkeBis = *units - (op == QLatin1String("<") ? 1 : 0);
        } else if (op != QLatin1String("=")) {
            return refuse(term, QStringLiteral("nur „sterne“ nimmt <, <=, > und >=."));
        } else if (key == QLatin1String("text") || key == QLatin1String("name")) {
            f.text = value;
        } else if (key == QLatin1String("land")) {
            f.land = value;
        } else if (key == QLatin1String("kontinent")) {
            f.kontinent = value;
        } else if (key == QLatin1String("position")) {
            f.position = parseposition(value);
            if (!f.position)
                return refuse(term, QStringLiteral("Positionen sind Tor, Abwehr, Mittelfeld, Sturm."));
        } else if (key == QLatin1String("verein")) {
            bool ok = false;
            const qint64 n = QString(value).remove(QLatin1Char('#')).toLongLong(&ok);
            if (ok)
                f.verein = n;
            else if (value.compare(QLatin1String(transfermarkt), Qt::CaseInsensitive) == 0)
                f.verein = 0;
            else
                f.vereinName = value;
        } else {
            return refuse(term, QStringLiteral("unbekannter Schlüssel „%1“.").arg(key));
        }
    }
    return f;
}

QString filterexpression(const PlayerFilter &f)
{
    QStringList terms;
    if (!f.text.isEmpty())
        terms << QStringLiteral("text=") + quoted(f.text);
    if (!f.land.isEmpty())
        terms << QStringLiteral("land=") + quoted(f.land);
    if (!f.kontinent.isEmpty())
        terms << QStringLiteral("kontinent=") + quoted(f.kontinent);
    if (f.verein)
        terms << QStringLiteral("verein=#%1").arg(*f.verein);
    if (!f.vereinName.isEmpty())
        terms << QStringLiteral("verein=") + quoted(f.vereinName);
    if (f.position)
        terms << QStringLiteral("position=") + positionname(*f.position);
    if (f.staerkeVon)
        terms << QStringLiteral("sterne>=") + starstext(*f.staerkeVon);
    if (f.staerkeBis)
        terms << QStringLiteral("sterne<=") + starstext(*f.staerkeBis);
    if (f.ohneVerein)
        terms << QStringLiteral("ohneverein");
    if (f.doppelteNummer)
        terms << QStringLiteral("doppelt");
    if (f.problem)
        terms << QStringLiteral("problem");
    if (!f.freie)
        terms << QStringLiteral("ohnefreie");
    return terms.join(QStringLiteral("; "));
}

QString filterhelp()
{
    return QStringLiteral(
        "Ein Filter besteht aus Teilen, getrennt durch \";\", die alle gelten müssen:\n"
        "  text=TEXT        Name oder Vorname enthält TEXT (ohne Groß-/Kleinschreibung und Akzente)\n"
        "  land=LAND        Land des Spielers\n"
        "  kontinent=NAME   Kontinent seines Landes\n"
        "  verein=NAME      Verein oder Nationalteam, auch #NUMMER; verein=Transfermarkt\n"
        "  position=POS     Tor, Abwehr, Mittelfeld, Sturm (auch TOR, ABW, MIT, STU oder 0 bis 3)\n"
        "  sterne<3         Stärke in Sternen, mit <, <=, =, >=, >; Dezimalkomma (2,5)\n"
        "  ohneverein       Spieler in keinem Kader\n"
        "  doppelt          Rückennummer doppelt in einem seiner Teams\n"
        "  problem          von der Problemprüfung genannt\n"
        "  ohnefreie        ohne die freien Spieler\n"
        "Ein Wert mit \";\" steht in Anführungszeichen, ein Anführungszeichen darin doppelt: verein=\"FC \"\"Blau; Weiß\"\"\"\n"
        "Beispiel: \"land=Brasilien; position=Sturm; sterne<3\"");
}

} // namespace zorbo
