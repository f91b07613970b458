#pragma once

#include <map>
#include <utility>
#include <vector>

#include <QFontMetricsF>
#include <QHash>
#include <QStringList>

#include "LedgerUI/Presentation/Print/PrintedPages.h"

/// How wide texts are on paper and where their lines break. Remembers what it measured.
class PrintMetrics {
public:
    explicit PrintMetrics(QStringList families) : m_families{std::move(families)} {}

    [[nodiscard]] const QStringList& families() const { return m_families; }

    double width(const QString& text, PrintFont font);
    /// The width of the longest part that no line should break.
    double widestWord(const QString& text, PrintFont font);
    /// The lines of a text in this width: broken between words, inside one only where it is too long for a line.
    std::vector<QString> lines(const QString& text, PrintFont font, double width);

private:
    struct Known {
        QFont font;
        QFontMetricsF metrics;
        QHash<QString, double> widths;
    };
    Known& known(PrintFont font);

    QStringList m_families;
    std::map<std::pair<int, bool>, Known> m_fonts;
};
