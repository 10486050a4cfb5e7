#include "platform/names.h"

#include <sqlite3.h>

namespace zorbo {

namespace {

bool isAscii(const unsigned char *text, int bytes)
{
    for (int i = 0; i < bytes; ++i) {
        if (text[i] >= 0x80)
            return false;
    }
    return true;
}

void samenameSql(sqlite3_context *context, int, sqlite3_value **argv)
{
    if (sqlite3_value_type(argv[0]) == SQLITE_NULL || sqlite3_value_type(argv[1]) == SQLITE_NULL) {
        sqlite3_result_null(context);
        return;
    }
    const unsigned char *a = sqlite3_value_text(argv[0]);
    const int na = sqlite3_value_bytes(argv[0]);
    const unsigned char *b = sqlite3_value_text(argv[1]);
    const int nb = sqlite3_value_bytes(argv[1]);
    if (!a || !b) {
        sqlite3_result_error_nomem(context);
        return;
    }
    bool same;
    // Most names are plain ASCII, where SQLite's own folding is the same rule
    // and spares decoding the text on every row of a walk.
    if (isAscii(a, na) && isAscii(b, nb))
        same = na == nb && sqlite3_strnicmp(reinterpret_cast<const char *>(a), reinterpret_cast<const char *>(b), na) == 0;
    else
        same = samename(QString::fromUtf8(reinterpret_cast<const char *>(a), na),
                        QString::fromUtf8(reinterpret_cast<const char *>(b), nb));
    sqlite3_result_int(context, same ? 1 : 0);
}

} // namespace

bool samename(const QString &a, const QString &b)
{
    return a.size() == b.size() && foldname(a) == foldname(b);
}

QString foldname(const QString &name)
{
    // Qt folds case by the Unicode tables, one character for one, for every
    // script.
    return name.toCaseFolded();
}

int registernamefunctions(sqlite3 *db)
{
    return sqlite3_create_function_v2(db, "samename", 2, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS,
                                      nullptr, samenameSql, nullptr, nullptr, nullptr);
}

} // namespace zorbo
