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
#include "LedgerUI/Presentation/Ledger/Listing/LedgerListing.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
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

TextLabel* figure(const std::string& currency, const LedgerTotalFigures::Figure& shown, TypeStep step, QWidget* parent)
{
    auto* made = new TextLabel(step, shown.tone, parent);
    presentTotalFigure(*made, currency, shown);
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

void LedgerTotalsStrip::makeReady()
{
    if (m_blocks.front())
        return;
    for (auto*& block : m_blocks) {
        block = new LedgerTotalBlock(&block == &m_blocks.front() ? LedgerTotalBlock::Place::first
                                                                 : LedgerTotalBlock::Place::behindAnother,
                                     m_figures);
        block->hide();
        m_figures->layout()->addWidget(block);
    }
}

LedgerTotalsStrip::Content LedgerTotalsStrip::contentOf(const LedgerListing& listing, std::size_t selected,
                                                        const std::vector<LedgerTotal>& sums)
{
    using Part = LedgerFilter::Part;
    const auto& locale = InterfaceLanguage::tag();
    const auto rows = listing.rows.size();
    const auto all = listing.book->size();
    const auto& filter = listing.query.filter;
    const auto entries =
        rows == all ? countedIn(locale, ledgerWords(), "entries", all)
                    : word(ledgerWords(), "entries.of", {groupedNumber(rows, locale), groupedNumber(all, locale)});
    Content content{.count = entries, .totals = {}, .hint = word(ledgerWords(), "totals.hint")};
    const auto add = [&](const auto& each) { content.totals.push_back(figuresOf(each)); };
    if (selected > 1) {
        content.count = countedIn(locale, ledgerWords(), "selected", selected);
        std::ranges::for_each(sums, add);
    } else if (listing.statement && !filter.without(Part::accounts).without(Part::currencies).narrows()) {
        content.hint = word(ledgerWords(), "statement.hint");
        for (const auto& line : listing.statement->lines) {
            if (filter.currencies.empty() || filter.currencies.contains(line.currency))
                add(line);
        }
    } else {
        std::ranges::for_each(listing.totals, add);
    }
    return content;
}

void LedgerTotalsStrip::present(Content content)
{
    m_content = std::move(content);
    retranslate();
}

void LedgerTotalsStrip::retranslate()
{
    m_count->setText(m_content.count);
    m_more->setName(word(ledgerWords(), "totals.more"));
    presentFigures();
}

void LedgerTotalsStrip::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    presentFigures();
}

void LedgerTotalsStrip::presentFigures()
{
    m_more->setVisible(!m_content.totals.empty());
    if (!m_content.totals.empty())
        makeReady();
    else if (!m_blocks.front())
        return;
    auto shown = presentBlocks(Detail::all);
    if (shown < std::min(m_content.totals.size(), worthTheWidth))
        shown = presentBlocks(Detail::lastAlone);
    for (std::size_t at = 0; at < m_blocks.size(); ++at)
        m_blocks[at]->setVisible(at < shown);
}

/// The blocks stand ready: a step to another month only changes what they say.
std::size_t LedgerTotalsStrip::presentBlocks(Detail detail)
{
    int room = width() - m_count->sizeHint().width() - m_more->width() - Space::pageMargin - 4 * Space::step2;
    std::size_t shown = 0;
    for (const auto& total : m_content.totals) {
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
    int row = 0;
    for (const auto& total : m_content.totals) {
        int column = 1;
        for (const auto& each : total.figures) {
            if (row == 0)
                grid->addWidget(label(word(ledgerWords(), each.name), TypeStep::small, Token::text2, content), 0,
                                column, Qt::AlignRight);
            auto* shown = figure(total.currency, each, TypeStep::body, content);
            shown->setBold(&each == &total.figures.back());
            grid->addWidget(shown, row + 1, column++, Qt::AlignRight);
        }
        grid->addWidget(label(QString::fromStdString(total.currency), TypeStep::micro, Token::text3, content), ++row,
                        0);
    }
    if (!m_content.hint.isEmpty())
        grid->addWidget(label(m_content.hint, TypeStep::small, Token::text2, content), row + 1, 0, 1, 5);
    return content;
}
