#pragma once

#include "widgets/ApplicationPanel.h"

#include <QStringList>

// The applications of this machine: desktop entries in the XDG application folders, and AppDirs,
// which bring their own starter along. Everything here starts programs detached from ours.
namespace InstalledApplications {

// Those that a person would look for, by name; each one's path is that of its .desktop entry.
QList<ApplicationPanel::Application> all();

// The entry of the first of these desktop ids (without ".desktop") that is installed; empty when
// none is.
QString firstOf(const QStringList &ids);
// The program that the system's administrator chose as terminal; empty when there is none.
QString systemTerminal();
// The person's terminal: the system's choice, else any entry of that category; empty when there is
// none.
QString terminal();

// The icon of an entry, an AppDir or a program.
QIcon iconOf(const QString &application);

// Whether the path is a desktop entry in one of the XDG application folders. Entries from elsewhere
// (a download) can run anything under any name and picture: they are files like any other.
bool isInstalledEntry(const QString &path);

// Whether the path is a program where only the system's administrator puts any.
bool isInstalledProgram(const QString &path);

// Whether the path is named as an AppDir is, and the program in it that starts it; empty where
// there is none that can be run.
bool isAppDir(const QString &path);
QString starterOf(const QString &path);

// Starts an application (an installed entry, an AppDir, an executable file) with these files.
bool launch(const QString &application, const QStringList &files);
// Starts a program, looked up in PATH, with these words, in a folder unless that is "". `reason`
// gets why it was not started.
bool start(const QList<QByteArray> &words, const QString &folder, QString *reason = nullptr);
// Opens a web or mail address with the default application for its scheme.
bool openAddress(const QString &address);

} // namespace InstalledApplications
