#pragma once

#include "platform/Workspace.h"

// The applications that open files by their type, as the person and the desktop have it. Any
// thread.
namespace TypeApplications {

// The entry of the default application for the file; empty when there is none.
QString defaultFor(const QString &path);
// The same for plain texts.
QString textEditor();

// As Workspace::applicationsForFiles and Workspace::setDefaultApplication.
Workspace::FileApplications forFiles(const QStringList &paths);
bool setDefault(const QString &application, const QString &type, QString *reason);

} // namespace TypeApplications
