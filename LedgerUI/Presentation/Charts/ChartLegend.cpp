#include "LedgerUI/Presentation/Charts/ChartLegend.h"

#include <algorithm>
#include <utility>

#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr double sampleWidth = 14;
constexpr double afterSample = 4;
constexpr double afterText = 16;

/// Sets text after text, and goes on below where the next one would pass the edge.
class Flow {
public:
    Flow(const ChartLayouts::Room& room, QSizeF heading)
        : m_room(room), m_place(room.rect.topLeft()), m_lineHeight(std::max(room.lineHeight, heading.height()))
    {
        if (heading.width() > 0)
            m_place.rx() += heading.width() + afterText;
    }

    void add(QString text, std::optional<std::size_t> series)
    {
        const auto before = series ? sampleWidth + afterSample : 0;
        const auto width = m_room.widthOf(text);
        if (m_place.x() > m_room.rect.left() && m_place.x() + before + width > m_room.rect.right())
            startLine();
        m_parts.push_back({.rect = {m_place.x() + before, m_place.y(), width, m_lineHeight},
                           .text = std::move(text),
                           .series = series,
                           .sample = series ? QRectF{m_place, QSizeF{sampleWidth, m_lineHeight}} : QRectF{}});
        m_place.rx() += before + width + afterText;
    }

    std::vector<ChartLegendPart> parts() && { return std::move(m_parts); }

private:
    void startLine()
    {
        m_place = {m_room.rect.left(), m_place.y() + m_lineHeight};
        m_lineHeight = m_room.lineHeight;
    }

    const ChartLayouts::Room& m_room;
    QPointF m_place;
    double m_lineHeight; // of the line in hand
    std::vector<ChartLegendPart> m_parts;
};

}

std::vector<ChartLegendPart> ChartLegends::parts(const ChartData& data, const ChartLayouts::Room& room,
                                                 std::optional<std::size_t> slot, std::string_view locale,
                                                 QSizeF heading)
{
    Flow flow{room, heading};
    if (slot)
        flow.add(data.places.at(*slot).name, std::nullopt);
    for (std::size_t at = 0; at < data.series.size(); ++at) {
        const auto& series = data.series[at];
        auto text = series.name;
        if (slot)
            text += QChar::Nbsp + qString(Money::formatDigits(series.values.at(*slot), data.currency, locale));
        flow.add(std::move(text), at);
    }
    return std::move(flow).parts();
}

double ChartLegends::height(const ChartData& data, const ChartLayouts::Room& room, std::string_view locale,
                            QSizeF heading)
{
    auto bottom = room.rect.top() + std::max(room.lineHeight, heading.height());
    const auto take = [&](std::optional<std::size_t> slot) {
        const auto all = parts(data, room, slot, locale, heading);
        if (!all.empty())
            bottom = std::max(bottom, all.back().rect.bottom());
    };
    take(std::nullopt);
    for (std::size_t slot = 0; slot < data.places.size(); ++slot)
        take(slot);
    return bottom - room.rect.top();
}
