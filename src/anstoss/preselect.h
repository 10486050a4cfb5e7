#pragma once

#include <QString>
#include <QStringList>

namespace zorbo {

// The club list entry ("Name (Land)") that the target dialog chooses for an
// exporter club: an entry whose name part holds name (exact case) wins at
// once; else the last entry that ends in " Stadt (Land)". -1 when none fits.
int a4preselect(const QStringList &entries, const QString &name, const QString &stadt, const QString &land);

} // namespace zorbo
