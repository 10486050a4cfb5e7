#include "anstoss/aetfile.h"

#include "platform/numbers.h"
#include "platform/random.h"

#include <QDir>
#include <QFileInfo>

namespace zorbo {

namespace {

// Number at the start of a value, as the readers of numbers take it.
int leadingint(const QString &text)
{
    return int(valtext(text));
}

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

Result AetFile::load(const QString &path)
{
    m_path = path;
    const QFileInfo info(path);
    if (!info.exists())
        return Result::failure(QStringLiteral("Die Datei %1 gibt es nicht.").arg(shownname()));
    if (!info.isFile())
        return Result::failure(QStringLiteral("%1 ist keine Datei.").arg(shownname()));
    if (info.size() > ProfileFile::maxBytes)
        return Result::failure(QStringLiteral("Die Datei %1 ist mit %2 Bytes zu groß für eine Datei des Anstoss Exporters.")
                                   .arg(shownname())
                                   .arg(info.size()));
    if (!m_profile.load(path))
        return Result::failure(QStringLiteral("Die Datei %1 kann nicht gelesen werden.").arg(shownname()));
    return Result::success();
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
    where.field = QStringLiteral("[%1] %2").arg(section, key);
    where.text = what;
    throw Fault(QStringLiteral("%1, Abschnitt [%2], Schlüssel %3: %4").arg(shownname(), section, key, what), where);
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
    const int n = leadingint(file.value(QStringLiteral("team"), QStringLiteral("spieler"), QStringLiteral("0")));
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
    const int art = leadingint(text);
    if (art < 0 || art > 3 || valtext(text) != art)
        file.fail(aetsection(i), QStringLiteral("Position"),
                  QStringLiteral("»%1« ist keine Position von 0 bis 3.").arg(text));
    return art;
}

AetFace aetface(Database &db, const AetFile &file, int i)
{
    const QString section = aetsection(i);
    const QString skin = file.value(section, QStringLiteral("Hautfarbe"));
    const int h = leadingint(skin);
    if (h != 0 && h != 1)
        file.fail(section, QStringLiteral("Hautfarbe"), QStringLiteral("»%1« ist weder 0 noch 1.").arg(skin));
    const QString hair = file.value(section, QStringLiteral("Haarfarbe"));
    const int c = leadingint(hair);
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
