#include "LedgerUI/Presentation/Print/PrintMetrics.h"

#include <algorithm>

#include <QTextLayout>

namespace {

constexpr double roundingRoom = 1; // a text is laid out in whole fractions of a unit

/// One line each, with accents as the fonts hold them: whole.
QStringList paragraphs(const QString& text)
{
    return text.normalized(QString::NormalizationForm_C).split(QLatin1Char('\n'));
}

}

QFont printFont(const QStringList& families, PrintFont font)
{
    QFont made;
    made.setFamilies(families);
    made.setPixelSize(font.size);
    made.setBold(font.isBold);
    made.setHintingPreference(QFont::PreferNoHinting);
    // Letters joined into one sign could not be read back from a file: letters that are spaced are not joined.
    made.setLetterSpacing(QFont::AbsoluteSpacing, 1.0 / 32);
    return made;
}

PrintMetrics::Known& PrintMetrics::known(PrintFont font)
{
    const std::pair key{font.size, font.isBold};
    if (const auto found = m_fonts.find(key); found != m_fonts.end())
        return found->second;
    const auto made = printFont(m_families, font);
    return m_fonts.emplace(key, Known{made, QFontMetricsF{made}, {}}).first->second;
}

double PrintMetrics::width(const QString& text, PrintFont font)
{
    auto& held = known(font);
    if (const auto found = held.widths.constFind(text); found != held.widths.cend())
        return *found;
    const double width = held.metrics.horizontalAdvance(text);
    held.widths.insert(text, width);
    return width;
}

double PrintMetrics::widestWord(const QString& text, PrintFont font)
{
    double widest = 0;
    for (const auto& paragraph : paragraphs(text)) {
        for (const auto& word : paragraph.split(QLatin1Char(' ')))
            widest = std::max(widest, width(word, font));
    }
    return widest;
}

std::vector<QString> PrintMetrics::lines(const QString& text, PrintFont font, double width)
{
    std::vector<QString> found;
    for (const auto& paragraph : paragraphs(text)) {
        if (this->width(paragraph, font) <= width + roundingRoom) {
            found.push_back(paragraph);
            continue;
        }
        QTextLayout layout{paragraph, known(font).font};
        QTextOption wrap;
        wrap.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
        layout.setTextOption(wrap);
        layout.beginLayout();
        for (auto line = layout.createLine(); line.isValid(); line = layout.createLine()) {
            line.setLineWidth(width);
            found.push_back(paragraph.mid(line.textStart(), line.textLength()).trimmed());
        }
        layout.endLayout();
    }
    return found;
}
