#include "LedgerUI/Components/Table/DetailPane.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int headHeight = 38;

QScrollArea* scrollArea(QWidget* parent)
{
    auto* scroll = new QScrollArea(parent);
    scroll->setObjectName(QStringLiteral("detailScroll"));
    scroll->setWidgetResizable(true);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->viewport()->setAutoFillBackground(false);
    return scroll;
}

}

DetailPane::DetailPane(const Names& names, QWidget* parent) : QFrame{parent}
{
    setObjectName(names.pane);
    setMinimumWidth(Space::detailPaneMinimum);
    setMaximumWidth(Space::detailPaneMaximum);
    setAutoFillBackground(true);
    m_glyph = new GlyphLabel({}, Token::text2, Space::icon, this);
    m_glyph->hide();
    m_headline = new TextLabel(TypeStep::body, Token::text, this);
    m_headline->setObjectName(names.headline);
    m_headline->setTextFormat(Qt::PlainText);
    m_headline->setBold(true);
    m_headline->setWordWrap(true);
    m_headline->setMinimumHeight(headHeight - Space::step1);
    m_close = new IconButton(QStringLiteral("x-lg"), IconButton::Frame::none, this);
    m_close->setObjectName(names.close);
    m_lastStop = m_close;
    m_scroll = scrollArea(this);
    auto* place = new QWidget(m_scroll->viewport());
    m_bodyRow = new QVBoxLayout(place);
    m_bodyRow->setContentsMargins(0, 0, 0, 0);
    m_scroll->setWidget(place);
    m_foot = new QFrame(this);
    m_foot->setObjectName(QStringLiteral("detailFoot"));

    auto* head = new QHBoxLayout;
    head->setContentsMargins(Space::pageMargin, Space::step1, Space::step1, 0);
    head->setSpacing(Space::step2);
    head->addWidget(m_glyph);
    head->addWidget(m_headline, 1);
    head->addWidget(m_close, 0, Qt::AlignTop);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(1, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(head);
    rows->addWidget(m_scroll, 1);
    rows->addWidget(m_foot);
    connect(m_close, &QToolButton::clicked, this, &DetailPane::closeWanted);
}

QWidget* DetailPane::bodyPlace() const
{
    return m_scroll->widget();
}

QWidget* DetailPane::firstStop() const
{
    return m_close;
}

void DetailPane::setSpoken(const QString& pane, const QString& close)
{
    setAccessibleName(pane);
    m_close->setName(close);
}

void DetailPane::setHead(const QString& glyph, const ThemeColor& glyphInk, const QString& headline,
                         const ThemeColor& headlineInk)
{
    m_glyph->setGlyph(glyph, glyphInk);
    m_glyph->setVisible(!glyph.isEmpty());
    m_headline->setText(headline);
    m_headline->setInk(headlineInk);
}

void DetailPane::setBody(QWidget* body)
{
    if (m_body) {
        // It may be where the click came from, so it goes once that is over; taken out at once it would be styled anew.
        m_bodyRow->removeWidget(m_body);
        m_body->hide();
        m_body->deleteLater();
    }
    m_body = body;
    m_bodyRow->addWidget(body);
    m_scroll->verticalScrollBar()->setValue(0);
    m_lastStop = FocusChain::insert(m_close, body);
}

void DetailPane::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT left();
    else
        QFrame::keyPressEvent(event);
}
