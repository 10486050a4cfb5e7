#pragma once

#include <QString>

namespace zorbo {

// The program folder, where zorboeditor.ini, zorbo.mdb and the picture
// folders live. An installed program (its executable in <prefix>/bin beside
// <prefix>/share/zorbo-editor) keeps them in the user's data folder
// (~/.local/share/zorbo-editor), also when root could write to <prefix>/bin.
// A program run from a folder the user can write (a build, a portable copy)
// keeps them beside itself; any other one in the data folder as well. Never
// ends in a separator.
QString programfolder();
// The same rule for an executable in executableFolder.
QString programfolderfor(const QString &executableFolder);

// The delivered pictures of an installed program (<prefix>/share/zorbo-editor
// for an executable in <prefix>/bin); empty when the program is not installed.
QString installedshare(const QString &executableFolder);

// The user's data folder (QStandardPaths::AppDataLocation): the same for
// the editor and the command-line tool, which both set the application name
// "zorbo-editor".
QString userdatafolder();

} // namespace zorbo
