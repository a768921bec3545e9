#pragma once

class UserDefaults;

// The options a listing is made and shown by, as the settings have them.
struct ListingOptions {
    bool showSpecifiedIcons = true;
    bool showToolTips = true;
    bool traverseLinks = true;
    bool showHiddenFiles = false;
    bool confirmationForFileOperations = true;
    bool useLongDateFormat = false;
    bool dateRightAlignment = false;

    static ListingOptions fromDefaults(const UserDefaults &defaults);
};
