#pragma once

#include <QString>

#include <optional>

// The codes by which a file belongs to an application, four characters each. A bundle states them
// in its Info.plist, and may lack them. A desktop entry may state them ("X-Twinleaf-OSType",
// "X-Twinleaf-Signature"); it and every other program have codes made from their name, always the
// same ones. Reads a file: any thread.
namespace ApplicationCodes {

std::optional<QString> documentType(const QString &application);
std::optional<QString> signature(const QString &application);

} // namespace ApplicationCodes
