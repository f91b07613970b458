#include "LedgerUI/Screens/Reports/ReportChart.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>

#include "LedgerUI/Components/Chart/ChartView.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int ring = 2; // that the chart keeps around itself

}

ReportChart::ReportChart(const QString& name, QWidget* parent) : QWidget{parent}
{
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_of = new TextLabel(TypeStep::small, Token::text2, this);
    m_view = new ChartView(this);
    m_view->setObjectName(name);
    m_none = new TextLabel(TypeStep::body, Token::text2, this);
    m_none->setObjectName(name + QStringLiteral("None"));
    m_none->setWordWrap(true);
    m_none->setContentsMargins(ring, Space::step2, ring, Space::step2);
    m_none->hide();
    auto* heading = new QHBoxLayout;
    heading->setContentsMargins(ring, ring, 0, 0);
    heading->setSpacing(Space::step2);
    heading->addWidget(m_title);
    heading->addWidget(m_of);
    auto* rows = new QGridLayout(this);
    rows->setContentsMargins(Space::pageMargin - ring, Space::step2 - ring, Space::pageMargin - ring, Space::step2);
    rows->setSpacing(0);
    rows->addWidget(m_view, 0, 0, 2, 1);
    rows->addLayout(heading, 0, 0, Qt::AlignLeft | Qt::AlignTop);
    rows->addWidget(m_none, 1, 0, Qt::AlignTop);
    rows->setRowStretch(1, 1);
    m_title->raise();
    m_of->raise();
}

void ReportChart::setTitle(const QString& title, const QString& of)
{
    m_title->setText(title);
    m_of->setText(of);
    m_view->setAccessibleName(of.isEmpty() ? title : QStringLiteral("%1, %2").arg(title, of));
    makeRoom();
}

void ReportChart::showTitle(bool isShown)
{
    m_title->setVisible(isShown);
    makeRoom();
}

void ReportChart::present(const ChartData& data, const ChartColors& colors, const QString& none)
{
    const bool isShown = none.isEmpty() || ChartLayouts::hasMovement(data);
    m_none->setText(none);
    m_none->setVisible(!isShown);
    m_view->setVisible(isShown);
    if (isShown)
        m_view->present(data, colors);
}

void ReportChart::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        makeRoom();
    QWidget::changeEvent(event);
}

/// The legend goes around what is to be read at the top left.
void ReportChart::makeRoom()
{
    QSize taken{0, 0};
    for (const auto* label : {m_title, m_of}) {
        if (label->isHidden() || label->text().isEmpty())
            continue;
        const auto size = label->sizeHint();
        taken.rwidth() += (taken.isEmpty() ? 0 : Space::step2) + size.width();
        taken.setHeight(std::max(taken.height(), size.height()));
    }
    m_view->setHeading(taken);
}
