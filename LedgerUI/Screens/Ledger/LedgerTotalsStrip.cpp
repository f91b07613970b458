#include "LedgerUI/Screens/Ledger/LedgerTotalsStrip.h"

#include <algorithm>
#include <utility>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QScrollArea>
#include <QScrollBar>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Dialogs/Popover.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Screens/Ledger/LedgerTotalBlock.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr std::size_t worthTheWidth = 3; // fewer with in and out say less than more with their net alone

TextLabel* label(const QString& text, TypeStep step, Token tone, QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    made->setText(text);
    return made;
}

/// An amount of a total, or a quiet dash for none.
TextLabel* figure(const LedgerTotal& total, const std::optional<std::int64_t>& minor, TypeStep step, Token tone,
                  QWidget* parent)
{
    auto* made = new TextLabel(step, tone, parent);
    presentTotalFigure(*made, total.currency, minor, tone);
    return made;
}

}

LedgerTotalsStrip::LedgerTotalsStrip(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("totalsStrip"));
    setFixedHeight(Space::totalsStrip);
    m_count = new TextLabel(TypeStep::small, Token::text, this);
    m_count->setObjectName(QStringLiteral("entryCount"));
    m_count->setBold(true);
    m_figures = new QWidget(this);
    m_figures->setObjectName(QStringLiteral("totals"));
    auto* figures = new QHBoxLayout(m_figures);
    figures->setContentsMargins(0, 0, 0, 0);
    figures->setSpacing(Space::step2);
    for (auto*& block : m_blocks) {
        block = new LedgerTotalBlock(&block == &m_blocks.front() ? LedgerTotalBlock::Place::first
                                                                 : LedgerTotalBlock::Place::behindAnother,
                                     m_figures);
        block->hide();
        figures->addWidget(block);
    }
    m_more = new IconButton(QStringLiteral("chevron-up"), IconButton::Frame::none, this);
    m_more->setObjectName(QStringLiteral("totalsMore"));
    m_more->setFixedSize(Space::controlSmall, Space::controlSmall);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(Space::pageMargin, 0, Space::step2, 0);
    layout->setSpacing(Space::step2);
    layout->addWidget(m_count);
    layout->addStretch(1);
    layout->addWidget(m_figures);
    layout->addWidget(m_more);
    connect(m_more, &QToolButton::clicked, this, &LedgerTotalsStrip::openAll);
    setMinimumWidth(0);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void LedgerTotalsStrip::present(std::size_t entries, std::size_t ofAll, std::vector<LedgerTotal> totals)
{
    m_entries = entries;
    m_all = ofAll;
    m_totals = std::move(totals);
    retranslate();
}

void LedgerTotalsStrip::retranslate()
{
    const auto& locale = InterfaceLanguage::tag();
    m_count->setText(m_entries == m_all ? countedIn(locale, ledgerWords(), "entries", m_entries)
                                        : word(ledgerWords(), "entries.of",
                                               {groupedNumber(m_entries, locale), groupedNumber(m_all, locale)}));
    m_more->setName(wordIn(locale, ledgerWords(), "totals.more"));
    presentFigures();
}

void LedgerTotalsStrip::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    presentFigures();
}

void LedgerTotalsStrip::presentFigures()
{
    m_more->setVisible(!m_totals.empty());
    auto shown = presentBlocks(Detail::inOutAndNet);
    if (shown < std::min(m_totals.size(), worthTheWidth))
        shown = presentBlocks(Detail::netAlone);
    for (std::size_t at = 0; at < m_blocks.size(); ++at)
        m_blocks[at]->setVisible(at < shown);
}

/// The blocks stand ready: a step to another month only changes what they say.
std::size_t LedgerTotalsStrip::presentBlocks(Detail detail)
{
    int room = width() - m_count->sizeHint().width() - m_more->width() - Space::pageMargin - 4 * Space::step2;
    std::size_t shown = 0;
    for (const auto& total : m_totals) {
        if (shown == m_blocks.size())
            break;
        auto* block = m_blocks[shown];
        block->present(total, detail);
        const int needed = block->sizeHint().width() + (shown == 0 ? 0 : Space::step2);
        if (needed > room && shown > 0)
            break;
        ++shown;
        room -= needed;
    }
    return shown;
}

void LedgerTotalsStrip::openAll()
{
    const auto& locale = InterfaceLanguage::tag();
    delete m_panel;
    auto* panel = new Popover(m_more, Popover::Edge::above);
    m_panel = panel;
    panel->setObjectName(QStringLiteral("totalsPopover"));
    panel->setFocusPolicy(Qt::StrongFocus);
    panel->setAccessibleName(wordIn(locale, ledgerWords(), "totals.all"));
    auto* scroll = new QScrollArea(panel);
    speakAsGroup(*scroll);
    scroll->setObjectName(QStringLiteral("totalsScroll"));
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroll->setWidget(table());
    scroll->setAccessibleName(panel->accessibleName());
    scroll->viewport()->setAutoFillBackground(false);
    const auto whole = scroll->widget()->sizeHint();
    // As high as all of it, but never beyond the window; then it scrolls.
    const int room = mapTo(window(), QPoint{}).y() - 2 * Space::step4;
    const int bar = whole.height() > room ? scroll->verticalScrollBar()->sizeHint().width() : 0;
    scroll->setFixedSize(whole.width() + bar, std::min(whole.height(), room));
    auto* rows = new QVBoxLayout(panel);
    rows->setContentsMargins(1, 1, 1, 1);
    rows->addWidget(scroll);
    panel->open(scroll); // whose keys scroll
}

QWidget* LedgerTotalsStrip::table() const
{
    auto* content = new QWidget;
    auto* grid = new QGridLayout(content);
    grid->setContentsMargins(Space::step4, Space::step3, Space::step4, Space::step3);
    grid->setHorizontalSpacing(Space::step6);
    grid->setVerticalSpacing(Space::step1);
    int column = 1;
    for (const auto* key : {"totals.in", "totals.out", "totals.net"})
        grid->addWidget(label(word(ledgerWords(), key), TypeStep::small, Token::text2, content), 0, column++,
                        Qt::AlignRight);
    int row = 1;
    for (const auto& total : m_totals) {
        grid->addWidget(label(QString::fromStdString(total.currency), TypeStep::micro, Token::text3, content), row, 0);
        grid->addWidget(figure(total, total.incoming, TypeStep::body, Token::ok, content), row, 1, Qt::AlignRight);
        grid->addWidget(figure(total, total.outgoing, TypeStep::body, Token::text, content), row, 2, Qt::AlignRight);
        auto* net = figure(total, total.net, TypeStep::body, Token::text, content);
        net->setBold(true);
        grid->addWidget(net, row++, 3, Qt::AlignRight);
    }
    grid->addWidget(label(word(ledgerWords(), "totals.hint"), TypeStep::small, Token::text2, content), row, 0, 1, 4);
    return content;
}
