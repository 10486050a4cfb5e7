#include "editor/talentlist.h"

namespace zorbo {

QList<Talent> readtalents(Database &db)
{
    QList<Talent> list;
    Statement st = db.prepare(QStringLiteral(
        "SELECT name, beschreibung, voraus1, voraus2, voraus3, schutz1, schutz2, schutz3 FROM e_attribute ORDER BY id"));
    while (st.step() && list.size() < TalentCount) {
        Talent t;
        t.name = st.text(0);
        t.beschreibung = st.text(1);
        for (int j = 0; j < 3; ++j) {
            const qint64 v = st.integer(2 + j), s = st.integer(5 + j);
            t.voraus[j] = v > 0 && v <= TalentCount ? int(v - 1) : -1;
            t.schutz[j] = s > 0 && s <= TalentCount ? int(s - 1) : -1;
        }
        list << t;
    }
    return list;
}

bool talentshown(int talent, int art)
{
    if (talent < 40)
        return art > 0;
    if (talent > 46)
        return art == 0;
    return true;
}

QString talentpicture(const QString &folder, int talent)
{
    return folder + QStringLiteral("attribute_hell_%1.gif").arg(talent, 2, 10, QLatin1Char('0'));
}

} // namespace zorbo
