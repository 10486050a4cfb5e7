#pragma once

#include <QString>
#include <stdexcept>

namespace zorbo {

// An error of the database. text() is German and fit for the user; the
// engine's own English words and the statement stay in detail(), which only
// a developer sees (logged under the category "zorbo.database", shown with
// QT_LOGGING_RULES="zorbo.database.info=true").
class DbError : public std::runtime_error {
public:
    // An error the program found itself, told in German.
    explicit DbError(const QString &message);
    explicit DbError(const std::string &message) : DbError(QString::fromStdString(message)) {}
    explicit DbError(const char *message) : DbError(QString::fromUtf8(message)) {}
    // An error of the engine: its (extended) result code and its own words;
    // file, when known, is the database file it concerns, named in the text
    // of a full disk or a failing one.
    DbError(int code, const QString &detail, const QString &file = {});

    QString text() const { return QString::fromUtf8(what()); }
    const QString &detail() const { return m_detail; }
    int code() const { return m_code; } // 0 for errors of the program
    // The file is damaged or is no database at all.
    bool damaged() const;

private:
    int m_code = 0;
    QString m_detail;
};

// The German words for one of SQLite's result codes.
QString dberrortext(int code);

} // namespace zorbo
