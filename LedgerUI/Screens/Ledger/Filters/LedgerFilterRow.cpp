#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterRow.h"

#include <algorithm>
#include <chrono>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/Filters/LedgerFilterPopover.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Part = LedgerFilter::Part;

constexpr auto parts = LedgerFilter::chosenParts;
constexpr std::array buttonNames{"filterKinds", "filterAccounts", "filterCategories", "filterCurrencies",
                                 "filterReceipts"};
static_assert(buttonNames.size() == parts.size());

constexpr int searchWidth = 310;
constexpr int searchMinimum = 120;
constexpr int chipText = 320; // at most; the whole text is in the tool tip
constexpr auto typingPause = std::chrono::milliseconds{150};

/// A quiet button with its glyph at the given end.
QToolButton* filterButton(const char* name, const char* glyph, Qt::LayoutDirection direction, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("kind", QStringLiteral("ghost"));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setLayoutDirection(direction);
    button->setIcon(Icon::of(QString::fromLatin1(glyph), Token::text2, Token::accent));
    button->setIconSize({Space::chevron, Space::chevron});
    button->setFixedHeight(Space::control);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

/// A button that turns a part of the view on and off.
IconButton* viewButton(const char* name, const char* glyph, QWidget* parent)
{
    auto* button = new IconButton(QString::fromLatin1(glyph), IconButton::Frame::outlined, parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setCheckable(true);
    return button;
}

/// Its tool tip tells the key beside the name.
void setKeyedName(IconButton& button, const QString& name, Command command)
{
    button.setName(name);
    button.setToolTip(namedWithKeys(name, KeyBindings::keys(command)));
}

QString counted(const QString& name, std::size_t count)
{
    if (count == 0)
        return name;
    return word(ledgerWords(), "filter.counted", {name.toStdString(), groupedNumber(count, InterfaceLanguage::tag())});
}

}

LedgerFilterRow::LedgerFilterRow(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("filterRow"));
    buildSearch();
    buildButtons();
    m_byDay = viewButton("byDayToggle", "calendar-week", this);
    connect(m_byDay, &QToolButton::clicked, this, &LedgerFilterRow::byDayToggled);
    m_detail = viewButton("detailToggle", "layout-sidebar-inset-reverse", this);
    connect(m_detail, &QToolButton::clicked, this, &LedgerFilterRow::detailToggled);
    m_chips = new QWidget(this);
    m_chips->setObjectName(QStringLiteral("filterChips"));
    auto* wrap = new WrapLayout(m_chips, Space::step2);
    wrap->setContentsMargins(0, 0, 0, Space::step2);
    m_chips->hide();

    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, 7, 0, 7);
    row->setSpacing(Space::step1);
    row->addWidget(m_search, 100); // up to its maximum before the stretch takes any
    row->addSpacing(Space::step1);
    for (auto* button : m_buttons)
        row->addWidget(button);
    row->addWidget(m_all);
    row->addWidget(m_clear);
    row->addStretch(1);
    row->addWidget(m_byDay);
    row->addWidget(m_detail);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    rows->setSpacing(0);
    rows->addLayout(row);
    rows->addWidget(m_chips);
    // Never what keeps the window from shrinking: below its width the menus fold.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setFocusProxy(m_search);
}

void LedgerFilterRow::buildSearch()
{
    m_search = new SearchField(this);
    m_search->setObjectName(QStringLiteral("ledgerSearch"));
    m_search->setMaximumWidth(searchWidth);
    m_search->setMinimumWidth(searchMinimum);
    m_search->setFixedHeight(Space::control);
    m_search->installEventFilter(this);
    m_typing.setSingleShot(true);
    m_typing.setInterval(typingPause);
    connect(m_search, &QLineEdit::textEdited, this, [this] { m_typing.start(); });
    // The clear button edits without a key; it takes effect at once.
    connect(m_search, &QLineEdit::textChanged, this, [this](const QString& text) {
        if (text.isEmpty())
            applyText();
    });
    connect(&m_typing, &QTimer::timeout, this, &LedgerFilterRow::applyText);
}

void LedgerFilterRow::buildButtons()
{
    m_all = filterButton("filterAll", "funnel", Qt::LeftToRight, this);
    m_all->setProperty("kind", QStringLiteral("outlined"));
    m_all->setIconSize({Space::iconBeforeText, Space::icon});
    for (std::size_t at = 0; at < parts.size(); ++at)
        m_buttons[at] = filterButton(buttonNames[at], "chevron-down", Qt::RightToLeft, this);
    for (auto* button : m_buttons)
        connect(button, &QToolButton::clicked, this, [this, button] { open(button); });
    connect(m_all, &QToolButton::clicked, this, [this] { open(m_all); });
    m_all->setCheckable(true);
    for (auto* button : m_buttons)
        button->setCheckable(true);
    m_clear = filterButton("filterClear", "x", Qt::LeftToRight, this);
    m_clear->setIconSize({Space::icon, Space::icon});
    m_clear->hide();
    connect(m_clear, &QToolButton::clicked, this, &LedgerFilterRow::clearWanted);
}

void LedgerFilterRow::present(const LedgerBrowser& browser)
{
    m_browser = &browser;
    m_filter = browser.filter();
    m_byDay->setChecked(browser.isByDay());
    if (!m_typing.isActive() && m_search->text().toStdString() != m_filter.text)
        m_search->setText(QString::fromStdString(m_filter.text));
    presentButtons();
    presentChips();
}

void LedgerFilterRow::retranslate()
{
    const auto& locale = InterfaceLanguage::tag();
    m_search->setPrompt(wordIn(locale, ledgerWords(), "search"));
    setKeyedName(*m_byDay, wordIn(locale, ledgerWords(), "group.byDay"), Command::groupByDay);
    setKeyedName(*m_detail, wordIn(locale, ledgerWords(), "detail.toggle"), Command::toggleDetail);
    m_clear->setText(wordIn(locale, ledgerWords(), "filters.clear"));
    m_clear->setAccessibleName(wordIn(locale, ledgerWords(), "filters.clearHint"));
    m_clear->setToolTip(m_clear->accessibleName());
    presentButtons();
    presentChips();
}

void LedgerFilterRow::setNarrow(bool isNarrow)
{
    m_isNarrow = isNarrow;
    adapt();
}

void LedgerFilterRow::resizeEvent(QResizeEvent* event)
{
    QFrame::resizeEvent(event);
    arrange();
}

/// Not while its width is still to come: the buttons would be dressed and folded for one that the row never has.
void LedgerFilterRow::adapt()
{
    if (!testAttribute(Qt::WA_PendingResizeEvent))
        arrange();
}

void LedgerFilterRow::arrange()
{
    const bool folds = m_isNarrow || unfoldedWidth() > width();
    if (folds == m_isFolded)
        return;
    m_isFolded = folds;
    for (auto* button : m_buttons)
        button->setVisible(!folds);
    presentButtons();
    presentChips();
}

/// What the row needs with a button for each part, however it stands now.
int LedgerFilterRow::unfoldedWidth() const
{
    int width = 2 * Space::pageMargin + searchMinimum + Space::step1;
    const auto add = [&](const QWidget& widget) { width += Space::step1 + widget.sizeHint().width(); };
    for (const auto* button : m_buttons)
        add(*button);
    add(*m_all);
    const auto metrics = m_all->fontMetrics();
    width += metrics.horizontalAdvance(allText(false)) - metrics.horizontalAdvance(m_all->text());
    if (m_filter.narrows())
        add(*m_clear);
    width += Space::step1; // before the stretch
    add(*m_byDay);
    add(*m_detail);
    return width;
}

/// Wide, the button offers the parts that have none of their own.
QString LedgerFilterRow::allText(bool isFolded) const
{
    std::size_t set = 0;
    for (const auto part : LedgerFilter::furtherParts)
        set += m_filter.isSet(part) ? 1 : 0;
    for (const auto part : parts)
        set += isFolded && !chosenIn(m_filter, part).empty() ? 1 : 0;
    return counted(word(ledgerWords(), isFolded ? "filters" : "filters.more"), set);
}

void LedgerFilterRow::setDetailShown(bool isShown)
{
    m_detail->setChecked(isShown);
}

void LedgerFilterRow::focusSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

bool LedgerFilterRow::openFocused()
{
    for (auto* button : findChildren<QToolButton*>()) {
        const bool isFilter = button == m_all || std::ranges::find(m_buttons, button) != m_buttons.end();
        if (isFilter && button->hasFocus()) {
            open(button);
            return true;
        }
    }
    return false;
}

void LedgerFilterRow::open(QToolButton* button)
{
    presentButtons(); // a press alone ticks nothing
    if (!m_browser || !m_browser->book())
        return;
    if (m_popover) {
        const bool isOpen = m_popover->isVisible() && m_openedBy == button;
        m_popover->hide();
        m_popover->deleteLater();
        if (isOpen)
            return;
    }
    auto* popover = new LedgerFilterPopover(button);
    m_popover = popover;
    m_openedBy = button;
    connect(popover, &LedgerFilterPopover::choicesWanted, this,
            [this](Part part, const LedgerFilter::Choices& choices) {
                Q_EMIT filterWanted(withChosen(m_filter, part, choices));
            });
    connect(popover, &LedgerFilterPopover::amountsWanted, this, [this](const LedgerFilter::Amounts& amounts) {
        auto filter = m_filter;
        filter.amounts = amounts;
        Q_EMIT filterWanted(filter);
    });
    if (button == m_all) {
        popover->openOnAll(m_browser->book(), m_filter, m_isFolded ? parts.front() : Part::members);
        return;
    }
    const auto at = static_cast<std::size_t>(std::ranges::find(m_buttons, button) - m_buttons.begin());
    popover->openOn(m_browser->book(), m_filter, parts[at]);
}

bool LedgerFilterRow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const auto key = static_cast<QKeyEvent*>(event)->key();
        const auto modifiers = static_cast<QKeyEvent*>(event)->modifiers();
        if (key == Qt::Key_Escape) {
            if (m_search->text().isEmpty())
                Q_EMIT leftByEscape();
            m_search->clear();
            return true;
        }
        const bool goesDown = key == Qt::Key_Down || key == Qt::Key_Return || key == Qt::Key_Enter;
        if (goesDown && modifiers == Qt::NoModifier) {
            applyText();
            Q_EMIT leftDownwards();
            return true;
        }
    }
    return QFrame::eventFilter(watched, event);
}

void LedgerFilterRow::presentButtons()
{
    const auto& locale = InterfaceLanguage::tag();
    for (std::size_t at = 0; at < parts.size(); ++at) {
        const auto chosen = chosenIn(m_filter, parts[at]).size();
        m_buttons[at]->setText(counted(partName(parts[at], locale), chosen));
        m_buttons[at]->setChecked(chosen > 0);
        m_buttons[at]->setAccessibleName(m_buttons[at]->text());
    }
    m_all->setText(allText(m_isFolded));
    m_all->setChecked(m_all->text() != word(ledgerWords(), m_isFolded ? "filters" : "filters.more"));
    m_all->setAccessibleName(m_all->text());
    m_clear->setVisible(m_filter.narrows());
    adapt();
}

void LedgerFilterRow::presentChips()
{
    for (auto* chip : m_chips->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
        chip->hide();
        chip->deleteLater();
        m_chips->layout()->removeWidget(chip);
    }
    const auto book = m_browser ? m_browser->book() : nullptr;
    const auto& locale = InterfaceLanguage::tag();
    bool any = false;
    std::vector<Part> chips; // what no button shows
    if (m_isFolded)
        chips.assign(parts.begin(), parts.end());
    chips.insert(chips.end(), LedgerFilter::furtherParts.begin(), LedgerFilter::furtherParts.end());
    chips.push_back(Part::figure);
    for (const auto part : chips) {
        if (!book || !m_filter.isSet(part))
            continue;
        any = true;
        const auto text = partText(*book, m_filter, part);
        auto* chip = new QPushButton(m_chips);
        chip->setText(chip->fontMetrics().elidedText(text, Qt::ElideRight, chipText));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setObjectName(QStringLiteral("filterChip"));
        chip->setAccessibleName(wordIn(locale, ledgerWords(), "chip.remove", {text.toStdString()}));
        chip->setToolTip(chip->accessibleName());
        chip->setIcon(Icon::of(QStringLiteral("x"), Token::text2));
        chip->setLayoutDirection(Qt::RightToLeft);
        connect(chip, &QPushButton::clicked, this,
                [this, without = m_filter.without(part)] { Q_EMIT filterWanted(without); });
        m_chips->layout()->addWidget(chip);
        chip->show();
    }
    m_chips->setVisible(any);
}

void LedgerFilterRow::applyText()
{
    m_typing.stop();
    auto filter = m_filter;
    filter.text = m_search->text().toStdString();
    if (filter != m_filter)
        Q_EMIT filterWanted(filter);
}
