#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterPopover.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QListWidget>

#include "LedgerUI/Components/Table/ChoiceList.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/Filters/AmountRangeFields.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Part = LedgerFilter::Part;

constexpr int choicesWidth = 300;
constexpr int partsWidth = 136;
constexpr int partRow = 30;
constexpr int highest = 392; // even in a high window a list is not longer than the eye likes
constexpr int lowest = 160;

}

LedgerFilterPopover::LedgerFilterPopover(QWidget* anchor) : Popover{anchor}, m_below{anchor}
{
    setObjectName(QStringLiteral("filterPopover"));
    m_parts = new QListWidget(this);
    m_parts->setObjectName(QStringLiteral("filterParts"));
    m_parts->setFixedWidth(partsWidth);
    m_parts->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_choices = new ChoiceList(this);
    m_choices->setFixedWidth(choicesWidth);
    m_amounts = new AmountRangeFields(this);
    m_amounts->setFixedWidth(choicesWidth);
    m_amounts->hide();
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    row->setSpacing(Space::step2);
    row->addWidget(m_parts);
    row->addWidget(m_choices, 1);
    row->addWidget(m_amounts, 1);
    connect(m_choices, &ChoiceList::chosenChanged, this, [this](const ChoiceList::Chosen& chosen) {
        m_filter = withChosen(m_filter, m_part, chosen);
        Q_EMIT choicesWanted(m_part, chosen);
    });
    connect(m_amounts, &AmountRangeFields::amountsWanted, this, [this](const LedgerFilter::Amounts& amounts) {
        m_filter.amounts = amounts;
        Q_EMIT amountsWanted(amounts);
    });
    connect(m_parts, &QListWidget::currentRowChanged, this, [this](int at) {
        if (at >= 0)
            presentPart(LedgerFilter::listedParts[static_cast<std::size_t>(at)]);
    });
    connect(m_parts, &QListWidget::itemActivated, this,
            [this] { (m_part == Part::amounts ? m_amounts->firstStop() : m_choices->firstStop())->setFocus(); });
}

void LedgerFilterPopover::openOn(const LedgerBookPointer& book, const LedgerFilter& filter, Part part)
{
    m_parts->hide();
    start(book, filter, part);
    setFixedHeight(
        std::clamp(m_choices->wholeHeight() + 2 * Space::step2 + 2, partRow, std::min(roomBelow(), highest)));
    open(m_choices->firstStop());
}

void LedgerFilterPopover::openOnAll(const LedgerBookPointer& book, const LedgerFilter& filter, Part first)
{
    const QSignalBlocker quiet{m_parts};
    m_parts->clear();
    m_parts->setAccessibleName(word(ledgerWords(), "filters"));
    for (const auto part : LedgerFilter::listedParts)
        (new QListWidgetItem(partName(part, InterfaceLanguage::tag()), m_parts))->setSizeHint({0, partRow});
    m_parts->setCurrentRow(
        static_cast<int>(std::ranges::find(LedgerFilter::listedParts, first) - LedgerFilter::listedParts.begin()));
    m_parts->show();
    start(book, filter, first);
    setFixedHeight(std::min(roomBelow(), highest));
    open(m_parts);
}

void LedgerFilterPopover::start(const LedgerBookPointer& book, const LedgerFilter& filter, Part part)
{
    m_book = book;
    m_filter = filter;
    presentPart(part);
}

void LedgerFilterPopover::presentPart(Part part)
{
    m_part = part;
    m_choices->setVisible(part != Part::amounts);
    m_amounts->setVisible(part == Part::amounts);
    if (part == Part::amounts) {
        setAccessibleName(partName(part, InterfaceLanguage::tag()));
        m_amounts->present(m_filter.amounts);
        return;
    }
    std::vector<ChoiceList::Choice> choices;
    for (const auto& choice : filterChoices(*m_book, part))
        choices.push_back({choice.id, choice.text, choice.level == LedgerFilterChoice::Level::child});
    const auto name = partName(part, InterfaceLanguage::tag());
    setAccessibleName(name);
    m_choices->present({.name = name,
                        .all = word(ledgerWords(), "filter.all"),
                        .search = word(ledgerWords(), "filter.search"),
                        .noMatch = word(ledgerWords(), "filter.noMatch")},
                       choices, chosenIn(m_filter, part));
}

int LedgerFilterPopover::roomBelow() const
{
    const auto* frame = m_below->window();
    const int bottom = m_below->mapTo(frame, QPoint{0, m_below->height()}).y();
    return std::max(lowest, frame->height() - bottom - Space::step4);
}
