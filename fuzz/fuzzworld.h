#pragma once

// A world in memory and a scratch file for the readers that take a path.
#include "core/schema.h"

#include <QFile>
#include <QTemporaryDir>
#include <cstdint>
#include <memory>

namespace zorbo::fuzz {

struct FuzzWorld {
    QTemporaryDir dir;
    std::unique_ptr<Database> db = std::make_unique<Database>(QStringLiteral(":memory:"));

    FuzzWorld() { createschema(*db); }

    // The input as the file the reader is given.
    QString file(const char *name, const uint8_t *data, size_t size) const
    {
        const QString path = dir.filePath(QLatin1String(name));
        QFile f(path);
        if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
            f.write(reinterpret_cast<const char *>(data), qint64(size));
        return path;
    }
};

} // namespace zorbo::fuzz
