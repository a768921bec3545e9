#pragma once

#include <QLatin1StringView>
#include <QString>

#include <array>
#include <optional>

enum class Side { Left, Right };

constexpr Side otherSide(Side side)
{
    return side == Side::Left ? Side::Right : Side::Left;
}

// The words for the sides in requests and questions: "Left" and "Right", read also as "left",
// "right".
inline QString sideWord(Side side)
{
    return side == Side::Left ? QStringLiteral("Left") : QStringLiteral("Right");
}

inline std::optional<Side> sideFromWord(const QString &word)
{
    if (word == QLatin1StringView("Left") || word == QLatin1StringView("left"))
        return Side::Left;
    if (word == QLatin1StringView("Right") || word == QLatin1StringView("right"))
        return Side::Right;
    return std::nullopt;
}

// One value per pane.
template <class T>
struct PerSide {
    T left {};
    T right {};
    T &operator[](Side side) { return side == Side::Left ? left : right; }
    const T &operator[](Side side) const { return side == Side::Left ? left : right; }
};
