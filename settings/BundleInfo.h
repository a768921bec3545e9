#pragma once

#include <QString>

// What the program knows about itself.
namespace BundleInfo {

QString bundleIdentifier(); // "org.twinleaf.Twinleaf"
QString name(); // "Twinleaf"
QString version(); // "0.1.0"
QString copyright();
// "Version 0.1.0 (0.1.0)": the version a person is told, and that of the build.
QString versionLine();

// The maker's addresses, each empty unless it was given at build time: what it leads to is offered
// only then.
QString versionFileAddress();
QString downloadAddress();
QString donationAddress();
QString webAddress();
QString mailAddress();

// The settings file, despite its name.
QString getBundleIdentifier();
bool configFileExists();

} // namespace BundleInfo
