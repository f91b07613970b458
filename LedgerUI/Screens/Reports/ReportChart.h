#pragma once

#include <QWidget>

#include "LedgerUI/Components/Chart/ChartPainter.h"

class ChartView;
class TextLabel;

/// A chart of a report with its title at the top left, beside which the legend begins.
class ReportChart final : public QWidget {
    Q_OBJECT
public:
    explicit ReportChart(const QString& name, QWidget* parent = nullptr);

    /// `of` says in smaller letters what the chart is about.
    void setTitle(const QString& title, const QString& of);
    /// Where there is little room the chart says alone what it is about: what it shows stands in its legend.
    void showTitle(bool isShown);
    /// `none` stands in its place where there is nothing to draw.
    void present(const ChartData& data, const ChartColors& colors, const QString& none = {});

    [[nodiscard]] ChartView& view() const { return *m_view; }

protected:
    void changeEvent(QEvent* event) override;

private:
    void makeRoom();

    TextLabel* m_title = nullptr;
    TextLabel* m_of = nullptr;
    ChartView* m_view = nullptr;
    TextLabel* m_none = nullptr;
};
