#include "LedgerUI/Presentation/Text/Initials.h"

#include <QList>
#include <QStringList>

namespace {

QString firstLetter(const QString& text)
{
    const auto points = text.toUcs4();
    return points.isEmpty() ? QString{} : QString::fromUcs4(reinterpret_cast<const char32_t*>(points.constData()), 1);
}

}

QString initialsOf(const QString& name)
{
    const auto words = name.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    if (words.isEmpty())
        return {};
    if (words.size() == 1 && words.front().front().script() == QChar::Script_Han)
        return words.front().right(2);
    if (words.size() == 1)
        return firstLetter(words.front()).toUpper();
    return (firstLetter(words.front()) + firstLetter(words.back())).toUpper();
}
