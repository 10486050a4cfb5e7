#include "platform/nearestletter.h"

#include "platform/codepage.h"

#include <QList>

namespace zorbo {

namespace {

// Letters whose nearest form is not the letter without its accent.
QString special(char32_t c)
{
    switch (c) {
    case U'ő': return QStringLiteral("ö");
    case U'Ő': return QStringLiteral("Ö");
    case U'ű': return QStringLiteral("ü");
    case U'Ű': return QStringLiteral("Ü");
    case U'Ł': return QStringLiteral("L");
    case U'ł': return QStringLiteral("l");
    case U'Đ': return QStringLiteral("D");
    case U'đ': return QStringLiteral("d");
    case U'ı': return QStringLiteral("i");
    case U'ħ': return QStringLiteral("h");
    case U'Ħ': return QStringLiteral("H");
    case U'ŀ': return QStringLiteral("l");
    case U'ẞ': return QStringLiteral("SS");
    default: return {};
    }
}

QString nearest(const QString &character)
{
    const char32_t c = char32_t(character.toUcs4().value(0));
    if (const QString s = special(c); !s.isEmpty())
        return s;
    QString plain;
    for (QChar d : character.normalized(QString::NormalizationForm_KD)) {
        if (d.category() != QChar::Mark_NonSpacing && d.category() != QChar::Mark_Enclosing
            && d.category() != QChar::Mark_SpacingCombining)
            plain += d;
    }
    return !plain.isEmpty() && fitsCp1252(plain) ? plain : QStringLiteral("?");
}

} // namespace

QString nearestcp1252(const QString &text)
{
    if (fitsCp1252(text))
        return text;
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype n = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString character = text.mid(i, n);
        out += fitsCp1252(character) ? character : nearest(character);
        i += n - 1;
    }
    return out;
}

} // namespace zorbo
