#include "LedgerUI/Presentation/Text/NameText.h"

#include <QList>
#include <QStringList>
#include <QTextBoundaryFinder>

namespace {

constexpr int longestPiece = 24; // letters; longer words hardly occur in a sentence
constexpr QChar zeroWidthSpace{0x200b};

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

QString breakingLongWords(const QString& text)
{
    QString broken;
    QTextBoundaryFinder letters{QTextBoundaryFinder::Grapheme, text};
    int inPiece = 0;
    for (qsizetype from = 0; from < text.size(); ++inPiece) {
        const auto to = letters.toNextBoundary();
        if (text[from].isSpace()) {
            inPiece = -1;
        } else if (inPiece == longestPiece) {
            broken += zeroWidthSpace;
            inPiece = 0;
        }
        broken += text.mid(from, to - from);
        from = to;
    }
    return broken;
}
