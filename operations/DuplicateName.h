#pragma once

#include <QString>

// "Report.txt" becomes "Report Copy.txt", the folder "Photos" becomes "Photos Copy".
QString nameOfDuplicate(const QString &name, bool isFolder);

// The same, counted on until nothing stands there: "Report Copy 2.txt". Any worker thread.
QString freeNameOfDuplicate(const QString &folder, const QString &name);
