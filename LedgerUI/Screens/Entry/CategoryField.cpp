#include "LedgerUI/Screens/Entry/CategoryField.h"

#include <algorithm>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Categories/CategoryPins.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Entry/CategoryPopover.h"
#include "LedgerUI/Screens/Entry/CategoryTile.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int tilesPerRow = 4;
constexpr int tileGap = 6;

}

CategoryField::CategoryField(QWidget* parent) : QWidget{parent}
{
    m_label = new TextLabel(TypeStep::small, Token::text2, this);
    m_tileArea = new QWidget(this);
    for (std::size_t at = 0; at < CategoryPins::maximum; ++at) {
        auto* tile = new CategoryTile(m_tileArea);
        tile->setObjectName(QStringLiteral("entryCategory%1").arg(at));
        tile->installEventFilter(this);
        connect(tile, &QAbstractButton::clicked, this, [this, tile] { Q_EMIT categoryChosen(tile->categoryID()); });
        m_tiles.push_back(tile);
    }
    m_all = new QToolButton(this);
    m_all->setObjectName(QStringLiteral("entryAllCategories"));
    m_all->setProperty("kind", QStringLiteral("flat"));
    m_all->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_all->setFixedHeight(Space::controlSmall);
    m_all->setFocusPolicy(Qt::StrongFocus);
    m_all->setIcon(Icon::of(QStringLiteral("chevron-down"), Token::accent));
    m_all->setIconSize({Space::chevron, Space::chevron});
    m_all->setLayoutDirection(Qt::RightToLeft);
    m_error = new FieldError(m_tileArea, this);
    m_error->setObjectName(QStringLiteral("entryCategoryError"));
    m_path = new TextLabel(TypeStep::small, Token::text2, this);
    m_path->setObjectName(QStringLiteral("entryCategoryPath"));
    m_pinned = new TextLabel(TypeStep::small, Token::text2, this);
    connect(m_all, &QToolButton::clicked, this, [this] {
        m_all->setFocus(Qt::OtherFocusReason);
        openAll({});
    });
    buildLayout();
}

void CategoryField::buildLayout()
{
    auto* head = new QHBoxLayout;
    head->addWidget(m_label);
    head->addStretch(1);
    head->addWidget(m_all);
    auto* grid = new QGridLayout(m_tileArea);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(tileGap);
    for (int at = 0; at < static_cast<int>(m_tiles.size()); ++at)
        grid->addWidget(m_tiles[static_cast<std::size_t>(at)], at / tilesPerRow, at % tilesPerRow);
    for (int column = 0; column < tilesPerRow; ++column)
        grid->setColumnStretch(column, 1);
    auto* below = new QHBoxLayout;
    below->setContentsMargins(0, Space::step1, 0, 0);
    below->addWidget(m_path);
    below->addStretch(1);
    below->addWidget(m_pinned);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(head);
    layout->addSpacing(Space::labelToField);
    layout->addWidget(m_tileArea);
    layout->addWidget(m_error);
    layout->addLayout(below);
}

void CategoryField::offer(SnapshotPointer snapshot, const std::string& kind)
{
    m_snapshot = std::move(snapshot);
    m_kind = kind;
    m_label->setText(word(entryFormWords(), "category"));
    m_tileArea->setAccessibleName(word(entryFormWords(), "categoryTiles"));
    m_all->setText(word(EntryWords::words(), "allCategories"));
    // Tiles that come and go would move what the open list stands on.
    if (m_popover && m_popover->isVisible())
        m_popover->renew(m_snapshot);
    else
        offerTiles();
}

void CategoryField::offerTiles()
{
    m_offered = EntryCategories::tiles(*m_snapshot, m_kind, InterfaceLanguage::tag());
    const auto pins = CategoryPins::of(*m_snapshot, m_kind).size();
    m_pinned->setText(
        word(EntryCopy::words(), "pinnedCount", {std::to_string(pins), std::to_string(CategoryPins::maximum)}));
    m_pinned->setVisible(pins > 0);
}

void CategoryField::present(const std::string& chosen, const QString& path, const QString& message)
{
    m_chosen = chosen;
    presentTiles();
    m_path->setText(path);
    m_path->setVisible(!path.isEmpty());
    // The focus stands on a tile or on the button, never on the area around them.
    for (auto* tile : m_tiles)
        tile->setAccessibleDescription(message);
    m_all->setAccessibleDescription(message);
}

void CategoryField::presentTiles()
{
    for (std::size_t at = 0; at < m_tiles.size(); ++at) {
        const bool isUsed = at < m_offered.size();
        m_tiles[at]->setVisible(isUsed);
        if (isUsed)
            m_tiles[at]->present(m_offered[at], m_offered[at].id == m_chosen);
    }
}

QWidget* CategoryField::focusTarget() const
{
    return m_offered.empty() ? static_cast<QWidget*>(m_all) : m_tiles.front();
}

bool CategoryField::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    auto* const tile = static_cast<CategoryTile*>(watched);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Left:
        moveFrom(tile, -1);
        return true;
    case Qt::Key_Right:
        moveFrom(tile, 1);
        return true;
    case Qt::Key_Up:
        moveFrom(tile, -tilesPerRow);
        return true;
    case Qt::Key_Down:
        moveFrom(tile, tilesPerRow);
        return true;
    default:
        break;
    }
    const bool isPlain = (key->modifiers() & ~Qt::ShiftModifier) == Qt::NoModifier;
    if (!isPlain || key->text().isEmpty() || !key->text().front().isLetterOrNumber())
        return QWidget::eventFilter(watched, event);
    openAll(key->text());
    return true;
}

void CategoryField::openAll(const QString& text)
{
    if (!m_popover) {
        m_popover = new CategoryPopover(m_tileArea);
        connect(m_popover, &CategoryPopover::categoryChosen, this, [this](const std::string& id) {
            Q_EMIT categoryChosen(id);
            Q_EMIT finished();
        });
        connect(m_popover, &CategoryPopover::closed, this, [this] {
            offerTiles();
            presentTiles();
        });
        connect(m_popover, &CategoryPopover::pinWanted, this, &CategoryField::pinWanted);
        connect(m_popover, &CategoryPopover::editWanted, this, &CategoryField::editWanted);
        connect(m_popover, &CategoryPopover::creationWanted, this, &CategoryField::creationWanted);
    }
    m_popover->openOn(m_snapshot, m_kind, text);
}

void CategoryField::moveFrom(CategoryTile* tile, int step)
{
    const auto found = std::ranges::find(m_tiles, tile) - m_tiles.begin() + step;
    if (found >= 0 && found < static_cast<std::ptrdiff_t>(m_offered.size()))
        m_tiles[static_cast<std::size_t>(found)]->setFocus(Qt::TabFocusReason);
}
