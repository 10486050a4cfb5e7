#pragma once

#include "platform/codepage.h"
#include "platform/operation.h"

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

namespace zorbo {

// Reads a text file from outside whole into bytes, in code page 1252. Fails
// with a German message naming the file when it is missing, no plain file,
// larger than maxBytes, unreadable or not text (a zero byte). Detect refuses
// a file that reads as UTF-8 and sets looksUtf8, so that the user can be
// asked; Utf8 turns the file into code page 1252 first.
Result loadtextfile(const QString &path, FileEncoding encoding, qint64 maxBytes, QByteArray &bytes, bool &looksUtf8);

// The message that stops a file reading as UTF-8: how its first character
// of more than one byte would come into the world as code page 1252.
QString utf8question(const QString &shownPath, QByteArrayView bytes);
// UTF-8 bytes (a mark in front dropped) turned into code page 1252; fails
// naming the line of a character that the code page cannot hold.
Result utf8tocp1252(const QString &shownPath, QByteArray &bytes);

} // namespace zorbo
