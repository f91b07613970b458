#include "LedgerUI/Theme/TypeScale.h"

#include <array>

#include <QStringList>

namespace {

struct Step {
    double points;
    QFont::Weight weight;
};

constexpr std::array<Step, 7> steps{{
    {18.0, QFont::Normal},
    {16.5, QFont::Normal},
    {13.5, QFont::Bold},
    {10.5, QFont::Bold},
    {9.75, QFont::Normal},
    {9.0, QFont::Normal},
    {8.25, QFont::Normal},
}};

// A point is a pixel on macOS and 4/3 of one elsewhere.
#ifdef Q_OS_MACOS
constexpr double pointFactor = 4.0 / 3.0;
#else
constexpr double pointFactor = 1.0;
#endif

// Noto Sans lacks U+2212; the second family supplies a minus as wide as its digits.
QStringList families()
{
    QStringList names{QStringLiteral("Noto Sans"), QStringLiteral("Noto Sans CJK SC")};
#if defined(Q_OS_MACOS)
    names.prepend(QStringLiteral(".AppleSystemUIFont"));
#elif defined(Q_OS_WIN)
    names.prepend(QStringLiteral("Segoe UI"));
#endif
    return names;
}

}

QFont TypeScale::font(TypeStep step)
{
    QFont font;
    font.setFamilies(families());
    font.setPointSizeF(points(step));
    font.setWeight(steps[static_cast<std::size_t>(step)].weight);
    return font;
}

QFont TypeScale::bold(TypeStep step)
{
    auto font = TypeScale::font(step);
    font.setWeight(QFont::Bold);
    return font;
}

double TypeScale::points(TypeStep step)
{
    return steps[static_cast<std::size_t>(step)].points * pointFactor;
}
