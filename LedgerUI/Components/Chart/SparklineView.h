#pragma once

#include <cstdint>
#include <vector>

#include <QWidget>

/// How one figure went, as a line without axes that ends in a dot. What it says stands in words beside it or is its
/// name for readers.
class SparklineView final : public QWidget {
    Q_OBJECT
public:
    explicit SparklineView(QWidget* parent = nullptr);

    /// `values` are of one currency, oldest first; `spoken` is what readers hear.
    void present(std::vector<std::int64_t> values, const QString& spoken);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::vector<std::int64_t> m_values;
};

/// Where the points of a sparkline stand in `rect`; values that are all the same lie in the middle.
std::vector<QPointF> sparklinePoints(const std::vector<std::int64_t>& values, const QRectF& rect);
