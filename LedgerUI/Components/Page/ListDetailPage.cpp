#include "LedgerUI/Components/Page/ListDetailPage.h"

#include <QResizeEvent>
#include <QSplitter>
#include <QStackedWidget>

#include "LedgerUI/Components/Page/PlainRows.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

constexpr int theRest = 10000; // of a splitter's width, for the part that takes what the others leave

}

ListDetailPage::ListDetailPage(QWidget* parent) : QWidget{parent}
{
    m_splitter = new QSplitter(Qt::Horizontal, this);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->setHandleWidth(1);
    m_list = new QWidget(m_splitter);
    m_stack = new QStackedWidget(m_list);
    m_stack->installEventFilter(this);
}

QWidget* ListDetailPage::listPlace() const
{
    return m_stack;
}

QWidget* ListDetailPage::detailPlace() const
{
    return m_splitter;
}

void ListDetailPage::arrange(const ListDetailParts& parts)
{
    m_parts = parts;
    m_stack->addWidget(m_parts.table);
    m_stack->addWidget(m_parts.notice);
    auto* column = plainRows(m_list);
    column->addWidget(m_stack, 1);
    column->addWidget(m_parts.strip);

    m_splitter->addWidget(m_list);
    m_splitter->addWidget(m_parts.detail);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setStretchFactor(1, 0);
    m_splitter->setSizes({theRest, Space::detailPane});

    auto* rows = plainRows(this);
    for (auto* part : {m_parts.header, m_parts.filters, m_parts.message}) {
        if (part)
            rows->addWidget(part);
    }
    rows->addWidget(m_splitter, 1);
}

void ListDetailPage::show(Content content)
{
    auto* shown = content == Content::table ? m_parts.table : m_parts.notice;
    if (m_stack->currentWidget() == shown)
        return;
    const auto* focus = focusWidget();
    const bool hadFocus = focus && m_stack->isAncestorOf(focus);
    m_stack->setCurrentWidget(shown);
    m_parts.strip->setVisible(content == Content::table);
    if (hadFocus)
        focusContent();
}

void ListDetailPage::setHasContents(bool hasContents)
{
    m_hasContents = hasContents;
    if (m_parts.filters)
        m_parts.filters->setVisible(hasContents);
    m_parts.detail->setVisible(hasContents && isDetailShown());
}

void ListDetailPage::toggleDetail()
{
    if (m_hasContents)
        setPlace(isDetailShown() ? Place::hidden : isNarrow() ? Place::over : Place::beside);
}

void ListDetailPage::openDetail()
{
    if (!isDetailShown())
        toggleDetail();
    m_parts.detailStop->setFocus(Qt::OtherFocusReason);
}

void ListDetailPage::closeDetail()
{
    setPlace(Place::hidden);
    focusContent();
}

void ListDetailPage::leaveDetail()
{
    if (m_place == Place::over)
        closeDetail();
    else
        focusContent();
}

void ListDetailPage::focusContent()
{
    auto* content = m_stack->currentWidget();
    const bool isStop = content->focusProxy() || content->focusPolicy() != Qt::NoFocus;
    auto* const above = m_parts.filters ? m_parts.filters : m_parts.header;
    (isStop ? content : above)->setFocus(Qt::OtherFocusReason);
}

bool ListDetailPage::isNarrow() const
{
    return window()->width() < Space::foldBelow;
}

QList<QWidget*> ListDetailPage::panes() const
{
    QList<QWidget*> all{m_stack->currentWidget(), m_parts.header};
    if (m_parts.filters)
        all.append(m_parts.filters);
    for (auto* each : {m_parts.message, m_parts.detail}) {
        if (each && each->isVisibleTo(this))
            all.append(each);
    }
    return all;
}

void ListDetailPage::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const bool narrow = isNarrow();
    if (narrow != m_wasNarrow) {
        m_wasNarrow = narrow;
        setPlace(narrow ? Place::hidden : Place::beside);
    }
    placeOverlay();
}

bool ListDetailPage::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_stack && event->type() == QEvent::Resize)
        placeOverlay();
    return QWidget::eventFilter(watched, event);
}

void ListDetailPage::setPlace(Place place)
{
    auto* detail = m_parts.detail;
    const auto* focus = focusWidget();
    const bool hadFocus = focus && detail->isAncestorOf(focus);
    m_place = place;
    if (place == Place::over && detail->parentWidget() != this) {
        detail->setParent(this);
    } else if (place == Place::beside && detail->parentWidget() != m_splitter) {
        m_splitter->addWidget(detail);
        m_splitter->setSizes({theRest, Space::detailPane});
    }
    setStyleProperty(detail, "over", place == Place::over);
    detail->setVisible(m_hasContents && place != Place::hidden);
    placeOverlay();
    if (place == Place::hidden && hadFocus)
        focusContent();
    Q_EMIT arranged();
}

void ListDetailPage::placeOverlay()
{
    if (m_place != Place::over)
        return;
    // The strip stays in sight, for its figures would be cut.
    const QRect area{m_stack->mapTo(this, QPoint{}), m_stack->size()};
    m_parts.detail->setGeometry(area.right() + 1 - Space::detailPane, area.top(), Space::detailPane, area.height());
    m_parts.detail->raise();
}
