#include "LedgerUI/Components/Print/PagesView.h"

#include <algorithm>
#include <cmath>

#include <QKeyEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>

#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Print/PagePainter.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int gap = Space::step4; // around pages
constexpr QSize wanted{520, 560};

}

PagesView::PagesView(QWidget* parent) : QAbstractScrollArea{parent}
{
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::StrongFocus);
    speakAsPicture(*this);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn); // pages must not change their width with their number
    connect(&Theme::current(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

QSize PagesView::sizeHint() const
{
    return wanted;
}

void PagesView::present(std::shared_ptr<const PrintedPages> pages)
{
    m_pages = std::move(pages);
    layOut();
    verticalScrollBar()->setValue(0);
    m_shown = 0;
    noteShown();
    viewport()->update();
}

double PagesView::scale() const
{
    return m_pages ? std::max(1, viewport()->width() - 2 * gap) / m_pages->size.width() : 1;
}

double PagesView::pitch() const
{
    return m_pages ? m_pages->size.height() * scale() + gap : 1;
}

void PagesView::layOut()
{
    const auto count = m_pages ? static_cast<double>(m_pages->pages.size()) : 0;
    const int height = static_cast<int>(std::ceil(count * pitch())) + gap;
    verticalScrollBar()->setPageStep(viewport()->height());
    verticalScrollBar()->setSingleStep(Space::step8);
    verticalScrollBar()->setRange(0, std::max(0, height - viewport()->height()));
}

int PagesView::pageShown() const
{
    if (!m_pages || m_pages->pages.empty())
        return 0;
    const double middle = verticalScrollBar()->value() + viewport()->height() / 2.0;
    return std::clamp(static_cast<int>(middle / pitch()) + 1, 1, static_cast<int>(m_pages->pages.size()));
}

void PagesView::turnTo(int page)
{
    verticalScrollBar()->setValue(static_cast<int>((page - 1) * pitch()));
}

void PagesView::noteShown()
{
    const int now = pageShown();
    if (now != m_shown)
        Q_EMIT pageChanged(m_shown = now);
}

void PagesView::scrollContentsBy(int /*dx*/, int /*dy*/)
{
    viewport()->update();
    noteShown();
}

void PagesView::resizeEvent(QResizeEvent* event)
{
    const int page = m_shown;
    QAbstractScrollArea::resizeEvent(event);
    layOut();
    if (page > 1)
        turnTo(page);
    noteShown();
}

void PagesView::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_PageDown:
    case Qt::Key_Space:
        return turnTo(pageShown() + 1);
    case Qt::Key_PageUp:
        return turnTo(std::max(1, pageShown() - 1));
    case Qt::Key_Home:
        return turnTo(1);
    case Qt::Key_End:
        return verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    default:
        QAbstractScrollArea::keyPressEvent(event);
    }
}

void PagesView::paintEvent(QPaintEvent* event)
{
    QPainter painter{viewport()};
    painter.fillRect(event->rect(), Theme::current().color(Token::sunken));
    if (!m_pages)
        return;
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const int top = verticalScrollBar()->value();
    const auto first = static_cast<std::size_t>(std::max(0.0, std::floor((top - gap) / pitch())));
    for (auto page = first; page < m_pages->pages.size(); ++page) {
        const QRectF paper{static_cast<double>(gap), gap + static_cast<double>(page) * pitch() - top,
                           m_pages->size.width() * scale(), m_pages->size.height() * scale()};
        if (paper.top() > viewport()->height())
            break;
        painter.fillRect(paper, Qt::white);
        painter.setPen(Theme::current().color(Token::divider));
        painter.drawRect(paper);
        painter.save();
        painter.translate(paper.topLeft());
        painter.scale(scale(), scale());
        PagePainter::paint(painter, *m_pages, page);
        painter.restore();
    }
    if (hasFocus()) {
        painter.setPen(QPen{Theme::current().color(Token::focus), 2});
        painter.drawRect(QRectF{viewport()->rect()}.adjusted(1, 1, -1, -1));
    }
}
