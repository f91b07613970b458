#include "LedgerUI/Screens/Ledger/LedgerFilterRow.h"

#include <algorithm>
#include <chrono>

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QToolButton>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Ledger/LedgerFilterChoices.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Screens/Ledger/LedgerFilterMenu.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/StyleProperty.h"

namespace {

using Part = LedgerFilter::Part;

struct MenuPart {
    Part part;
    const char* name;
};
constexpr std::array menuParts{MenuPart{Part::kinds, "filterKinds"}, MenuPart{Part::accounts, "filterAccounts"},
                               MenuPart{Part::categories, "filterCategories"},
                               MenuPart{Part::currencies, "filterCurrencies"},
                               MenuPart{Part::receipts, "filterReceipts"}};

constexpr int searchWidth = 310;
constexpr int chipText = 320; // at most; the whole text is in the tool tip
constexpr auto typingPause = std::chrono::milliseconds{150};

/// A quiet button with its glyph at the given end.
QToolButton* menuButton(const char* name, const char* glyph, Qt::LayoutDirection direction, QWidget* parent)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QString::fromLatin1(name));
    button->setProperty("kind", QStringLiteral("ghost"));
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setLayoutDirection(direction);
    button->setIcon(Icon::of(QString::fromLatin1(glyph), Token::text2, Token::accent));
    button->setIconSize({Space::chevron, Space::chevron});
    button->setFixedHeight(Space::control);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setCheckable(true);
    return button;
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
    buildMenus();
    m_detail = new IconButton(QStringLiteral("layout-sidebar-inset-reverse"), IconButton::Frame::outlined, this);
    m_detail->setObjectName(QStringLiteral("detailToggle"));
    m_detail->setCheckable(true);
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
    row->addWidget(m_all);
    for (auto* button : m_buttons)
        row->addWidget(button);
    row->addStretch(1);
    row->addWidget(m_detail);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    rows->setSpacing(0);
    rows->addLayout(row);
    rows->addWidget(m_chips);
    // Never what keeps the window from shrinking: below its width the menus fold.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    retranslate();
}

void LedgerFilterRow::buildSearch()
{
    m_search = new SearchField(this);
    m_search->setObjectName(QStringLiteral("ledgerSearch"));
    m_search->setMaximumWidth(searchWidth);
    m_search->setMinimumWidth(180);
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

void LedgerFilterRow::buildMenus()
{
    m_all = menuButton("filterAll", "funnel", Qt::LeftToRight, this);
    m_all->setProperty("kind", QStringLiteral("outlined"));
    m_all->setIconSize({Space::iconBeforeText, Space::icon});
    m_allMenu = new QMenu(m_all);
    m_all->setMenu(m_allMenu);
    m_all->hide();
    connect(m_allMenu, &QMenu::aboutToShow, this, &LedgerFilterRow::fillMenus);
    for (std::size_t at = 0; at < menuParts.size(); ++at) {
        auto* button = menuButton(menuParts[at].name, "chevron-down", Qt::RightToLeft, this);
        auto* menu = new LedgerFilterMenu(menuParts[at].part, button);
        menu->setLayoutDirection(Qt::LeftToRight);
        button->setMenu(menu);
        m_allMenu->addMenu(menu);
        connect(menu, &QMenu::aboutToShow, this, &LedgerFilterRow::fillMenus);
        connect(menu, &LedgerFilterMenu::choicesChanged, this, [this](Part part, const LedgerFilter::Choices& choices) {
            Q_EMIT filterWanted(withChosen(m_filter, part, choices));
        });
        m_buttons[at] = button;
        m_menus[at] = menu;
    }
}

void LedgerFilterRow::present(const LedgerBrowser& browser)
{
    m_browser = &browser;
    m_filter = browser.filter();
    if (!m_typing.isActive() && m_search->text().toStdString() != m_filter.text)
        m_search->setText(QString::fromStdString(m_filter.text));
    presentButtons();
    presentChips();
}

void LedgerFilterRow::retranslate()
{
    const auto& locale = InterfaceLanguage::tag();
    m_search->setPrompt(wordIn(locale, ledgerWords(), "search"));
    m_detail->setName(wordIn(locale, ledgerWords(), "detail.toggle"));
    presentButtons();
    presentChips();
}

void LedgerFilterRow::setFolded(bool isFolded)
{
    m_isFolded = isFolded;
    m_all->setVisible(isFolded);
    for (auto* button : m_buttons)
        button->setVisible(!isFolded);
    presentChips();
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

bool LedgerFilterRow::clearSearch()
{
    const bool hadText = !m_search->text().isEmpty();
    m_search->clear();
    return hadText;
}

bool LedgerFilterRow::openFocusedMenu()
{
    for (auto* button : findChildren<QToolButton*>()) {
        if (button->hasFocus() && button->menu()) {
            button->showMenu();
            return true;
        }
    }
    return false;
}

bool LedgerFilterRow::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const auto key = static_cast<QKeyEvent*>(event)->key();
        const auto modifiers = static_cast<QKeyEvent*>(event)->modifiers();
        if (key == Qt::Key_Escape) {
            if (!clearSearch())
                Q_EMIT leftByEscape();
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
    std::size_t set = 0;
    for (std::size_t at = 0; at < menuParts.size(); ++at) {
        const auto part = menuParts[at].part;
        const auto chosen = chosenIn(m_filter, part).size();
        set += chosen > 0 ? 1 : 0;
        m_buttons[at]->setText(counted(partName(part, locale), chosen));
        m_buttons[at]->setChecked(chosen > 0);
        m_buttons[at]->setAccessibleName(m_buttons[at]->text());
        m_menus[at]->setTitle(m_buttons[at]->text());
    }
    m_all->setText(counted(wordIn(locale, ledgerWords(), "filters"), set));
    m_all->setChecked(set > 0);
    m_all->setAccessibleName(m_all->text());
}

void LedgerFilterRow::presentChips()
{
    for (auto* chip : m_chips->findChildren<QPushButton*>(Qt::FindDirectChildrenOnly)) {
        chip->hide();
        chip->deleteLater();
        m_chips->layout()->removeWidget(chip);
    }
    const bool hasBook = m_browser && m_browser->book();
    const auto addChip = [&](const QString& text, const QString& name, const LedgerFilter& without) {
        auto* chip = new QPushButton(m_chips);
        chip->setText(chip->fontMetrics().elidedText(text, Qt::ElideRight, chipText));
        chip->setProperty("kind", QStringLiteral("chip"));
        chip->setObjectName(QStringLiteral("filterChip"));
        chip->setAccessibleName(name);
        chip->setToolTip(name);
        connect(chip, &QPushButton::clicked, this, [this, without] { Q_EMIT filterWanted(without); });
        m_chips->layout()->addWidget(chip);
        chip->show();
        return chip;
    };
    bool any = false;
    const auto& locale = InterfaceLanguage::tag();
    for (const auto& each : menuParts) {
        if (!m_isFolded || !hasBook || !m_filter.isSet(each.part))
            continue;
        any = true;
        const auto text = partText(*m_browser->book(), m_filter, each.part);
        auto* chip = addChip(text, wordIn(locale, ledgerWords(), "chip.remove", {text.toStdString()}),
                             m_filter.without(each.part));
        chip->setIcon(Icon::of(QStringLiteral("x"), Token::text2));
        chip->setLayoutDirection(Qt::RightToLeft);
    }
    if (any) {
        LedgerFilter cleared{.period = m_filter.period, .text = m_filter.text};
        const auto clear = wordIn(locale, ledgerWords(), "filters.clear");
        setStyleProperty(addChip(clear, clear, cleared), "kind", QStringLiteral("link"));
    }
    m_chips->setVisible(any);
}

void LedgerFilterRow::fillMenus()
{
    if (!m_browser || !m_browser->book())
        return;
    for (auto* menu : m_menus) {
        if (!menu->isVisible())
            menu->present(*m_browser->book(), m_filter);
    }
}

void LedgerFilterRow::applyText()
{
    m_typing.stop();
    auto filter = m_filter;
    filter.text = m_search->text().toStdString();
    if (filter != m_filter)
        Q_EMIT filterWanted(filter);
}
