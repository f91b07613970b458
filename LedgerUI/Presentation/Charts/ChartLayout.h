#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <QPolygonF>
#include <QRectF>
#include <QString>

/// How a series of values is drawn: bars stack, upwards above zero and downwards below it; lines lie over them.
enum class ChartMark { bar, line };

/// What a series stands for, by which the painter chooses its colour.
enum class ChartRole { income, expense, net, category1, category2, category3, category4, category5, category6, other };

struct ChartSeries {
    QString name;
    ChartMark mark = ChartMark::bar;
    ChartRole role = ChartRole::net;
    std::vector<std::int64_t> values; // one for each slot, in minor units

    bool operator==(const ChartSeries&) const = default;
};

/// One place on the horizontal axis: a month, a day, an account.
struct ChartSlot {
    QString label; // under the axis: "Nov"
    QString name;  // in full, for the legend and for readers: "November 2026"

    bool operator==(const ChartSlot&) const = default;
};

/// The figures of a chart, of one currency.
struct ChartData {
    std::string currency;
    std::vector<ChartSlot> places;
    std::vector<ChartSeries> series;
    std::optional<std::size_t> chosen; // index of a slot

    bool operator==(const ChartData&) const = default;
};

/// Where everything of a chart stands, ready to be painted. In the pixels, or whatever unit, of the room given.
struct ChartLayout {
    struct Tick {
        double y = 0;
        bool isZero = false;
        QRectF label;
        QString text; // none where it would touch another
    };
    struct Bar {
        QRectF rect;
        ChartRole role = ChartRole::net;
        std::size_t slot = 0;
    };
    struct Line {
        QPolygonF points; // one for each slot
        ChartRole role = ChartRole::net;
    };
    struct Label {
        QRectF rect;
        QString text;
        bool isChosen = false;
    };

    QRectF plot;
    std::vector<Tick> ticks;
    std::vector<Bar> bars;
    std::vector<Line> lines;
    std::vector<Label> labels;  // some are left out where they would touch
    std::optional<QRectF> band; // behind the chosen slot
};

namespace ChartLayouts {

/// Whether anything would be drawn.
bool hasMovement(const ChartData& data);

/// The room of a chart and how wide a text is in it.
struct Room {
    QRectF rect;
    double lineHeight = 14;
    std::function<double(const QString&)> widthOf;
};

/// Nothing but the room's plot when there are no slots.
ChartLayout layout(const ChartData& data, const Room& room, std::string_view locale);

/// The slot whose share of the plot holds this x, or nothing beside the plot.
std::optional<std::size_t> slotAt(const ChartLayout& layout, const ChartData& data, double x);

/// The figures of a slot in words: "November 2026: Income USD 1,200.00, Expense USD −300.00".
QString reading(const ChartData& data, std::size_t slot, std::string_view locale);

}
