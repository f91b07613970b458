#include "LedgerUI/Presentation/Charts/ChartLayout.h"

#include <algorithm>
#include <cmath>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/Money.h"
#include "LedgerUI/Presentation/Charts/ChartScale.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

constexpr double barShare = 0.42; // of a slot
constexpr double widestBar = 18;
constexpr double labelGap = 8;      // between the axis' labels and the plot, and between two labels
constexpr double headroom = 0.04;   // of the plot, above the highest value and below the lowest
constexpr double tickDistance = 28; // at least, between two grid lines

struct Extent {
    std::int64_t lowest = 0;
    std::int64_t highest = 0;

    void take(std::int64_t value)
    {
        lowest = std::min(lowest, value);
        highest = std::max(highest, value);
    }
};

std::int64_t sum(std::int64_t left, std::int64_t right)
{
    const auto total = Money::add(left, right);
    require(total.has_value(), "the bars of a slot add up");
    return *total;
}

Extent extentOf(const ChartData& data)
{
    Extent extent;
    for (std::size_t slot = 0; slot < data.places.size(); ++slot) {
        std::int64_t above = 0;
        std::int64_t below = 0;
        for (const auto& series : data.series) {
            const auto value = series.values[slot];
            if (series.mark == ChartMark::line)
                extent.take(value);
            else
                (value < 0 ? below : above) = sum(value < 0 ? below : above, value);
        }
        extent.take(above);
        extent.take(below);
    }
    return extent;
}

class Arrangement {
public:
    Arrangement(const ChartData& data, const ChartLayouts::Room& room, std::string_view locale)
        : m_data(data), m_room(room), m_locale(locale)
    {
    }

    ChartLayout arranged() &&
    {
        measure();
        if (m_data.places.empty())
            return std::move(m_layout);
        addTicks();
        for (std::size_t slot = 0; slot < m_data.places.size(); ++slot)
            addBars(slot);
        addLines();
        addLabels();
        if (m_data.chosen)
            m_layout.band = QRectF{m_layout.plot.left() + static_cast<double>(*m_data.chosen) * m_slotWidth,
                                   m_layout.plot.top(), m_slotWidth, m_layout.plot.height()};
        return std::move(m_layout);
    }

private:
    void measure()
    {
        const auto extent = extentOf(m_data);
        // The label of the lowest line reaches half a line below the plot.
        const auto below = m_room.lineHeight + std::max(labelGap, m_room.lineHeight / 2);
        auto plot = m_room.rect.adjusted(0, m_room.lineHeight / 2, 0, -below);
        const auto mostTicks = static_cast<int>(plot.height() / tickDistance) + 1;
        m_scale = ChartScales::spanning(extent.lowest, extent.highest, m_data.currency, mostTicks);
        for (const auto& text : ChartScales::labels(m_scale, m_data.currency, m_locale))
            m_tickTexts.push_back(qString(text));
        double widest = 0;
        for (const auto& text : m_tickTexts)
            widest = std::max(widest, m_room.widthOf(text));
        if (widest > 0)
            plot.setLeft(plot.left() + widest + labelGap);
        m_layout.plot = plot;
        m_slotWidth = m_data.places.empty() ? 0 : plot.width() / static_cast<double>(m_data.places.size());
    }

    [[nodiscard]] double yOf(std::int64_t value) const
    {
        const auto inner = m_layout.plot.height() * (1 - 2 * headroom);
        return m_layout.plot.bottom() - m_layout.plot.height() * headroom - m_scale.position(value) * inner;
    }

    [[nodiscard]] double centerOf(std::size_t slot) const
    {
        return m_layout.plot.left() + (static_cast<double>(slot) + 0.5) * m_slotWidth;
    }

    /// Where texts are large, only lines as far apart as these need are named, zero among them.
    void addTicks()
    {
        const auto ticks = m_scale.ticks();
        const auto gap = yOf(0) - yOf(m_scale.step);
        const auto every = gap > 0 ? static_cast<std::int64_t>(std::ceil(m_room.lineHeight / gap)) : 1;
        for (std::size_t at = 0; at < ticks.size(); ++at) {
            const auto y = yOf(ticks[at]);
            const QRectF label{m_room.rect.left(), y - m_room.lineHeight / 2,
                               m_layout.plot.left() - labelGap - m_room.rect.left(), m_room.lineHeight};
            const bool isNamed = ticks[at] == 0 || ticks[at] / m_scale.step % every == 0;
            m_layout.ticks.push_back(
                {.y = y, .isZero = ticks[at] == 0, .label = label, .text = isNamed ? m_tickTexts[at] : QString{}});
        }
    }

    void addBars(std::size_t slot)
    {
        const auto width = std::min(barShare * m_slotWidth, widestBar);
        const auto left = centerOf(slot) - width / 2;
        std::int64_t above = 0;
        std::int64_t below = 0;
        for (const auto& series : m_data.series) {
            const auto value = series.values[slot];
            if (series.mark != ChartMark::bar || value == 0)
                continue;
            auto& reached = value < 0 ? below : above;
            const auto from = yOf(reached);
            reached += value;
            const auto to = yOf(reached);
            m_layout.bars.push_back(
                {.rect = QRectF{QPointF{left, std::min(from, to)}, QPointF{left + width, std::max(from, to)}},
                 .role = series.role,
                 .slot = slot});
        }
    }

    void addLines()
    {
        for (const auto& series : m_data.series) {
            if (series.mark != ChartMark::line)
                continue;
            ChartLayout::Line line{.points = {}, .role = series.role};
            for (std::size_t slot = 0; slot < m_data.places.size(); ++slot)
                line.points << QPointF{centerOf(slot), yOf(series.values[slot])};
            m_layout.lines.push_back(std::move(line));
        }
    }

    /// The chosen slot is always named, the others as often as their names leave a gap, counted from it. At the ends,
    /// where a name moves inwards to stay in the room, the gap decides.
    void addLabels()
    {
        double widest = 0;
        for (const auto& place : m_data.places)
            widest = std::max(widest, m_room.widthOf(place.label));
        std::size_t every = 1;
        while (static_cast<double>(every) * m_slotWidth < widest + labelGap && every < m_data.places.size())
            ++every;
        const auto last = m_data.places.size() - 1;
        const auto chosen = m_data.chosen.value_or(last);
        std::vector<ChartLayout::Label> named;
        const auto add = [&](std::size_t slot) {
            auto label = labelOf(slot);
            const auto reach = label.rect.adjusted(1 - labelGap, 0, labelGap - 1, 0);
            if (std::ranges::none_of(named, [&](const auto& other) { return other.rect.intersects(reach); }))
                named.push_back(std::move(label));
        };
        add(chosen);
        for (auto slot = chosen + every; slot <= last; slot += every)
            add(slot);
        for (auto slot = chosen; slot >= every; slot -= every)
            add(slot - every);
        std::ranges::sort(named, {}, [](const auto& label) { return label.rect.left(); });
        m_layout.labels = std::move(named);
    }

    [[nodiscard]] ChartLayout::Label labelOf(std::size_t slot) const
    {
        const auto& text = m_data.places[slot].label;
        const auto width = m_room.widthOf(text);
        const auto left = std::clamp(centerOf(slot) - width / 2, m_room.rect.left(),
                                     std::max(m_room.rect.left(), m_room.rect.right() - width));
        const auto top = m_room.rect.bottom() - m_room.lineHeight;
        return {.rect = QRectF{left, top, width, m_room.lineHeight}, .text = text, .isChosen = m_data.chosen == slot};
    }

    const ChartData& m_data;
    const ChartLayouts::Room& m_room;
    std::string_view m_locale;
    ChartScale m_scale;
    std::vector<QString> m_tickTexts;
    double m_slotWidth = 0;
    ChartLayout m_layout;
};

}

bool ChartLayouts::hasMovement(const ChartData& data)
{
    return std::ranges::any_of(data.series, [](const ChartSeries& series) {
        return std::ranges::any_of(series.values, [](std::int64_t value) { return value != 0; });
    });
}

ChartLayout ChartLayouts::layout(const ChartData& data, const Room& room, std::string_view locale)
{
    for (const auto& series : data.series)
        require(series.values.size() == data.places.size(), "a series has a value for each slot");
    return Arrangement{data, room, locale}.arranged();
}

std::optional<std::size_t> ChartLayouts::slotAt(const ChartLayout& layout, const ChartData& data, double x)
{
    if (data.places.empty() || x < layout.plot.left() || x >= layout.plot.right())
        return std::nullopt;
    const auto share = (x - layout.plot.left()) / layout.plot.width();
    return std::min(static_cast<std::size_t>(share * static_cast<double>(data.places.size())), data.places.size() - 1);
}

QString ChartLayouts::reading(const ChartData& data, std::size_t slot, std::string_view locale)
{
    QStringList figures;
    for (const auto& series : data.series)
        figures << series.name + QLatin1Char{' '} +
                       qString(Money::format(series.values.at(slot), data.currency, locale));
    return data.places.at(slot).name + QStringLiteral(": ") + listed(figures, locale);
}
