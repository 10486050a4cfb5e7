#include "platform/germanorder.h"

#include <QCollator>
#include <QLocale>
#include <sqlite3.h>

namespace zorbo {

namespace {

// A collator of its own for each thread: ICU's collators
// are not to be shared between threads while they work.
QCollator &collator()
{
    thread_local QCollator c = [] {
        QCollator made{QLocale(QLocale::German, QLocale::Germany)};
        made.setCaseSensitivity(Qt::CaseSensitive); // case breaks ties only
        made.setNumericMode(false);
        made.setIgnorePunctuation(false);
        return made;
    }();
    return c;
}

int compareSql(void *, int na, const void *a, int nb, const void *b)
{
    // Registered for UTF-16 in the machine's order, so the text needs no
    // decoding; lengths are in bytes.
    const QStringView va(static_cast<const char16_t *>(a), na / 2);
    const QStringView vb(static_cast<const char16_t *>(b), nb / 2);
    return germancompare(va, vb);
}

} // namespace

int germancompare(QStringView a, QStringView b)
{
    // Two names that begin with different letters of A to Z are ordered by
    // those letters alone, whatever follows: the collator would find the
    // same at its first level. Spares the collator most comparisons of a
    // long list's sort.
    if (!a.isEmpty() && !b.isEmpty()) {
        const char16_t x = a.front().unicode() | 0x20, y = b.front().unicode() | 0x20;
        if (x != y && x >= 'a' && x <= 'z' && y >= 'a' && y <= 'z')
            return x < y ? -1 : 1;
    }
    const int c = collator().compare(a, b);
    if (c != 0)
        return c;
    return a.compare(b, Qt::CaseSensitive);
}

QCollatorSortKey germansortkey(const QString &text)
{
    return collator().sortKey(text);
}

int registergermanorder(sqlite3 *db)
{
    return sqlite3_create_collation_v2(db, "deutsch", SQLITE_UTF16, nullptr, compareSql, nullptr);
}

} // namespace zorbo
