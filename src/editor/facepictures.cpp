#include "editor/facepictures.h"

#include "platform/runner.h"

#include <QDir>
#include <QRegularExpression>

namespace zorbo {

FacePictures::FacePictures(const QString &folder) : m_folder(folder)
{
    const QStringList files = QDir(folder).entryList({QStringLiteral("sp_gesicht_*.gif")}, QDir::Files);
    for (const QString &name : files)
        m_names.insert(name.toLower());
    for (int farbe = 0; farbe < 2; ++farbe)
        for (int part = 0; part < FacePartCount; ++part) {
            const QString prefix = QStringLiteral("sp_gesicht_%1_%2_").arg(colourword(farbe), partword(part));
            int n = 0;
            for (const QString &name : std::as_const(m_names))
                if (name.startsWith(prefix))
                    ++n;
            m_counts[farbe][part] = n;
        }
}

bool FacePictures::exists(int farbe, int part, int number) const
{
    return m_names.contains(facepicture(farbe, part, number));
}

int FacePictures::count(int farbe, int part) const
{
    return m_counts[farbe == 1 ? 1 : 0][qBound(0, part, 4)];
}

int FacePictures::standin(int farbe, int part, int digit) const
{
    int t = digit;
    while (t > 0 && !exists(farbe, part, t + 1))
        --t;
    return t < 0 ? 0 : t;
}

QString FacePictures::path(int farbe, int part, int digit) const
{
    const int t = standin(farbe, part, digit);
    return exists(farbe, part, t + 1) ? m_folder + facepicture(farbe, part, t + 1) : QString();
}

qint64 FacePictures::checkgesicht(qint64 code) const
{
    Face f = decodeface(code);
    for (int part = 0; part < FacePartCount; ++part)
        f.digits[size_t(part)] = standin(f.farbe, part, f.digits[size_t(part)]);
    return encodeface(f);
}

namespace {

// Every player whose face code checkgesicht changes, with the new code.
QList<std::pair<qint64, qint64>> facerepairs(Database &db, const FacePictures &pictures, const Progress &progress)
{
    QList<std::pair<qint64, qint64>> repairs;
    const qint64 total = db.scalar(QStringLiteral("SELECT COUNT(*) FROM spieler")).toLongLong();
    Statement st = db.prepare(QStringLiteral("SELECT gesicht, nummer FROM spieler ORDER BY nummer ASC"));
    qint64 done = 0;
    while (st.step()) {
        const qint64 code = st.integer(0), repaired = pictures.checkgesicht(code);
        if (repaired != code)
            repairs.append({st.integer(1), repaired});
        if (++done % 500 == 0 || done == total)
            report(progress, done, total);
    }
    return repairs;
}

} // namespace

FaceCheck countgesichter(Database &db, const FacePictures &pictures, const Progress &progress)
{
    return runguarded(QStringLiteral("Die Gesichter lassen sich nicht prüfen"), [&] {
        FaceCheck check;
        check.corrected = int(facerepairs(db, pictures, progress).size());
        return check;
    });
}

FaceCheck checkallgesichter(Database &db, const FacePictures &pictures, const Progress &progress)
{
    return runtransaction(db, QStringLiteral("Die Gesichter lassen sich nicht prüfen"), [&] {
        FaceCheck check;
        const QList<std::pair<qint64, qint64>> repairs = facerepairs(db, pictures, progress);
        Statement update = db.prepare(QStringLiteral("UPDATE spieler SET gesicht = ?2 WHERE nummer = ?1"));
        for (const auto &[nummer, code] : repairs) {
            update.bindAll(nummer, code);
            update.exec();
            update.reset();
        }
        check.corrected = int(repairs.size());
        return check;
    });
}

} // namespace zorbo
