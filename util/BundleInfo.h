#pragma once

#include <QString>

// What the program knows about itself.
namespace BundleInfo {

QString bundleIdentifier(); // "org.twinleaf.Twinleaf"
QString version(); // "0.1.0"
// The settings file, despite its name.
QString getBundleIdentifier();
bool configFileExists();

} // namespace BundleInfo
