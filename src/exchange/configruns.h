#pragma once

#include "exchange/exchangeresult.h"
#include "platform/codepage.h"
#include "platform/database.h"

namespace zorbo {

// The import runs of the menu: a replacement, not a merge. Each is one
// transaction, so a file that fails halfway leaves the world as it was.

// Empties vereine, vereine_national and vereinspieler and reads a 1_tm.cfg;
// a file without team 0 gets the transfer market anew.
ExchangeResult importteamsrun(Database &db, const QString &path, const Progress &progress = {},
                              FileEncoding encoding = FileEncoding::Detect);

// Empties spieler and reads a 1_sp.cfg; squads stay as they are.
ExchangeResult importplayersrun(Database &db, const QString &path, const Progress &progress = {},
                              FileEncoding encoding = FileEncoding::Detect);

// Which of the two files a run means: the choice of the file dialog's
// filter, never the file's name or content.
enum class ConfigKind { Teams, Players };

ExchangeResult importconfig(Database &db, const QString &path, ConfigKind kind, const Progress &progress = {},
                              FileEncoding encoding = FileEncoding::Detect);
// Writes 1_tm.cfg (teams) or 1_sp.cfg (players) with the current date;
// with nearest, text outside code page 1252 goes out in its nearest letters
// and each such text is a finding.
ExchangeResult exportconfig(Database &db, const QString &path, ConfigKind kind, const Progress &progress = {},
                            bool nearest = false);

} // namespace zorbo
