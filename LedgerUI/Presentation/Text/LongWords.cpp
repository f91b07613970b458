#include "LedgerUI/Presentation/Text/LongWords.h"

#include <QTextBoundaryFinder>

namespace {

constexpr int longestPiece = 24; // letters; longer words hardly occur in a sentence
constexpr QChar zeroWidthSpace{0x200b};

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
