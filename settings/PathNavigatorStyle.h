#pragma once

class UserDefaults;

// How the path navigators look, as the settings say it. Main thread.
struct PathNavigatorStyle {
    static constexpr int PlainFontSize = 10; // points
    static constexpr int LargestFontSize = 72;

    bool mini = false; // else small
    bool bold = true;
    int fontSize = PlainFontSize; // points

    static PathNavigatorStyle fromDefaults(const UserDefaults &defaults);
    // Whether a font style is stored that counts. Kept: without one the size is ignored, and the
    // font stays bold 10.
    static bool hasFontStyle(const UserDefaults &defaults);
};
