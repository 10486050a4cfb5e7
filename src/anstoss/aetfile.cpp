#include "anstoss/aetfile.h"

#include "core/columnrules.h"
#include "core/textfile.h"
#include "platform/numbers.h"
#include "platform/random.h"

#include <QDir>

namespace zorbo {

namespace {

std::optional<std::array<int, 3>> splitcolour(const QString &text)
{
    const QStringList parts = text.split(QLatin1Char(','));
    if (parts.size() != 3)
        return std::nullopt;
    std::array<int, 3> rgb{};
    for (int i = 0; i < 3; ++i) {
        bool ok = false;
        const int v = parts[i].trimmed().toInt(&ok);
        if (!ok || v < 0 || v > 255 || parts[i].trimmed().startsWith(QLatin1Char('+')))
            return std::nullopt;
        rgb[size_t(i)] = v;
    }
    return rgb;
}

} // namespace

Result AetFile::load(const QString &path, AetKind kind, FileEncoding encoding)
{
    m_path = path;
    m_looksUtf8 = false;
    QByteArray bytes;
    const Result loaded = loadtextfile(path, encoding, ProfileFile::maxBytes, bytes, m_looksUtf8);
    if (!loaded)
        return loaded;
    m_profile.parse(bytes);
    try {
        return kind == AetKind::Club ? checkclub() : checkleague();
    } catch (const Fault &fault) {
        return Result::failure(fault.message());
    }
}

Result AetFile::checkclub() const
{
    // Only the keys the import reads: what else a file holds never reaches the world.
    static const QStringList teamTexts = {QStringLiteral("Name"), QStringLiteral("Stadt"), QStringLiteral("Land"),
                                          QStringLiteral("stadion")};
    static const QStringList teamNumbers = {QStringLiteral("spieler"), QStringLiteral("Stadionsitz"),
                                            QStringLiteral("Stadionsteh")};
    static const QStringList playerTexts = {QStringLiteral("Name"), QStringLiteral("Vorname"), QStringLiteral("Land")};
    static const QStringList playerNumbers = {QStringLiteral("Position"), QStringLiteral("Staerke"),
                                              QStringLiteral("Restspiele"), QStringLiteral("Rueckennummer"),
                                              QStringLiteral("Hautfarbe"), QStringLiteral("Haarfarbe")};
    bool found = false;
    for (const QString &section : sections()) {
        const bool team = ProfileFile::sameName(section, QStringLiteral("team"));
        bool number = false;
        const bool player = section.startsWith(QLatin1String("spieler"), Qt::CaseInsensitive)
                         && (section.mid(7).toInt(&number), number);
        if (!team && !player)
            continue;
        found = true;
        for (const QString &key : team ? teamTexts : playerTexts) {
            if (has(section, key))
                checklength(section, key);
        }
        for (const QString &key : team ? teamNumbers : playerNumbers) {
            if (has(section, key))
                this->number(section, key);
        }
    }
    if (!found)
        return Result::failure(QStringLiteral("Die Datei %1 ist keine Vereinsdatei des Anstoss Exporters: sie hat weder "
                                              "einen Abschnitt [Team] noch einen Abschnitt [Spieler1].")
                                   .arg(shownname()));
    return Result::success();
}

Result AetFile::checkleague() const
{
    const QStringList names = sections();
    for (qsizetype s = 1; s < names.size(); ++s) {
        if (!sectionlines(names[s]).isEmpty())
            return Result::success();
    }
    return Result::failure(QStringLiteral("Die Datei %1 ist keine Liga- oder Landesdatei des Anstoss Exporters: nach "
                                          "ihrem ersten Abschnitt nennt kein Abschnitt eine Vereinsdatei.")
                               .arg(shownname()));
}

void AetFile::checklength(const QString &section, const QString &key) const
{
    const QString text = value(section, key);
    if (const QString problem = lengthproblem(key, text.size()); !problem.isEmpty())
        fail(section, key, problem + QLatin1Char('.'));
}

QString AetFile::shownname() const
{
    return QDir::toNativeSeparators(m_path);
}

QString AetFile::value(const QString &section, const QString &key, const QString &def) const
{
    const std::optional<QString> v = m_profile.value(section, key);
    return trimspaces(v ? *v : def.left(32766));
}

double AetFile::number(const QString &section, const QString &key, const QString &def) const
{
    const QString text = value(section, key, def);
    const double n = valtext(text);
    if (const QString problem = rangeproblem(key, n); !problem.isEmpty())
        fail(section, key, QStringLiteral("»%1«; %2.").arg(text.left(60), problem));
    return n;
}

bool AetFile::has(const QString &section, const QString &key) const
{
    return m_profile.findEntry(section, key) >= 0;
}

bool AetFile::hasSection(const QString &section) const
{
    return m_profile.findSection(section) >= 0;
}

QStringList AetFile::sections() const
{
    QStringList names;
    for (const ProfileFile::Line &line : m_profile.lines()) {
        if (line.kind == ProfileFile::Kind::Section)
            names.append(line.name);
    }
    return names;
}

QStringList AetFile::sectionlines(const QString &section) const
{
    const int header = m_profile.findSection(section);
    if (header < 0)
        return {};
    QStringList lines;
    const int end = m_profile.sectionEnd(header);
    for (int i = header + 1; i < end; ++i) {
        const ProfileFile::Line &line = m_profile.lines()[size_t(i)];
        if (line.kind == ProfileFile::Kind::Entry)
            lines.append(ProfileFile::trimBlanks(line.text));
    }
    return lines;
}

void AetFile::fail(const QString &section, const QString &key, const QString &what) const
{
    Finding where;
    where.file = m_path;
    where.line = m_profile.findEntry(section, key) + 1;
    where.field = QStringLiteral("[%1] %2").arg(section, key);
    where.text = what;
    const QString line = where.line > 0 ? QStringLiteral(", Zeile %1").arg(where.line) : QString();
    throw Fault(QStringLiteral("%1%2, Abschnitt [%3], Schlüssel %4: %5").arg(shownname(), line, section, key, what), where);
}

QString aetsection(int i)
{
    return QStringLiteral("Spieler") + QString::number(i + 1);
}

QString positiontext(int art)
{
    static const char *const texts[] = {"TOR", "ABW", "MIT", "STU"};
    return art >= 0 && art <= 3 ? QLatin1String(texts[art]) : QString();
}

int aetplayercount(const AetFile &file)
{
    const double announced = file.number(QStringLiteral("team"), QStringLiteral("spieler"), QStringLiteral("0"));
    const int n = int(announced);
    for (int i = 0; i < n; ++i) {
        if (!file.hasSection(aetsection(i)))
            file.fail(QStringLiteral("team"), QStringLiteral("spieler"),
                      QStringLiteral("Die Datei nennt %1 Spieler, aber der Abschnitt [%2] fehlt.").arg(n).arg(aetsection(i)));
    }
    return qMax(n, 0);
}

int aetposition(const AetFile &file, int i, const QString &def)
{
    const QString text = file.value(aetsection(i), QStringLiteral("Position"), def);
    const double position = file.number(aetsection(i), QStringLiteral("Position"), def);
    const int art = int(position);
    if (art < 0 || art > 3 || position != art)
        file.fail(aetsection(i), QStringLiteral("Position"),
                  QStringLiteral("»%1« ist keine Position von 0 bis 3.").arg(text));
    return art;
}

AetFace aetface(Database &db, const AetFile &file, int i)
{
    const QString section = aetsection(i);
    const QString skin = file.value(section, QStringLiteral("Hautfarbe"));
    const int h = int(file.number(section, QStringLiteral("Hautfarbe")));
    if (h != 0 && h != 1)
        file.fail(section, QStringLiteral("Hautfarbe"), QStringLiteral("»%1« ist weder 0 noch 1.").arg(skin));
    const int c = int(file.number(section, QStringLiteral("Haarfarbe")));
    Statement st = db.prepare(
        QStringLiteral("SELECT Hautfarbe, Haarfarbe FROM e_gesichtsfarbe WHERE Haare = ?1 AND farbe = ?2"));
    st.bindAll(c, h);
    if (!st.step())
        file.fail(section, QStringLiteral("Haarfarbe"),
                  QStringLiteral("Zur Haarfarbe %1 bei Hautfarbe %2 hat e_gesichtsfarbe keine Zeile.").arg(c).arg(h));
    AetFace face;
    face.hautfarbe = st.integer(0);
    face.haarfarbe = st.integer(1);
    face.code = gesichtbauen(h, c);
    return face;
}

QString aetcolourtext(const AetFile &file, const QString &key, const QString &def)
{
    // The default goes in as given: the black of a missing key keeps its blanks.
    if (!file.has(QStringLiteral("team"), key))
        return def;
    const QString text = file.value(QStringLiteral("team"), key);
    if (!splitcolour(text))
        file.fail(QStringLiteral("team"), key,
                  QStringLiteral("»%1« sind nicht drei Zahlen von 0 bis 255, durch Kommas getrennt.").arg(text));
    return text;
}

std::array<int, 3> aetcolour(const AetFile &file, const QString &key, const QString &def)
{
    return *splitcolour(aetcolourtext(file, key, def));
}

qint64 gesichtbauen(int h, int c)
{
    const bool dark = h == 1;
    qint64 code = 0;
    code += qint64(rndBelow(dark ? 9 : 31)) * 67108864;
    code += qint64(rndBelow(dark ? 9 : 30)) * 1048576;
    code += qint64(c) * 8192;
    code += qint64(rndBelow(dark ? 2 : 30)) * 128;
    code += dark ? 1 : qint64(rndBelow(11)) * 4;
    return code;
}

} // namespace zorbo
