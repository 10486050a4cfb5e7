#pragma once

#include "core/schema.h"
#include "support/testsupport.h"

#include <QDateTime>
#include <QStringList>
#include <gtest/gtest.h>

namespace zorbo::test {

using TestDb = NewWorld;

inline const QDateTime &exportTime()
{
    static const QDateTime t(QDate(2026, 11, 19), QTime(6, 36, 12));
    return t;
}

// Every row of the four world tables, by their keys.
inline QString dumpWorld(Database &db)
{
    return dumpworld(db, {"vereine", "vereine_national", "spieler", "vereinspieler"}, true).join(QLatin1Char('\n'));
}

// File contents without the first line (the export date).
inline QByteArray withoutDate(const QByteArray &bytes)
{
    return bytes.mid(bytes.indexOf('\n') + 1);
}

} // namespace zorbo::test
