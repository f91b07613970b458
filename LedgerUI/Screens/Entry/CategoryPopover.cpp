#include "LedgerUI/Screens/Entry/CategoryPopover.h"

#include <QKeyEvent>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryFormWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int symbolRole = Qt::UserRole + 1;
constexpr int isChildRole = Qt::UserRole + 2;
constexpr int matchStartRole = Qt::UserRole + 3;
constexpr int matchLengthRole = Qt::UserRole + 4;
constexpr int popoverHeight = 272;
constexpr int indent = 22;

bool isReturn(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// Paints a category with the searched words in the accent colour; parents are bold.
class CategoryDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto& theme = Theme::current();
        painter->save();
        if (option.state.testFlag(QStyle::State_Selected))
            painter->fillRect(option.rect, theme.color(Token::accentSoft));
        const bool isChild = index.data(isChildRole).toBool();
        auto area = option.rect.adjusted(Space::step3 + (isChild ? indent : 0), 0, -Space::step3, 0);
        const auto symbol = index.data(symbolRole).toString();
        const auto glyph = Icon::exists(symbol) ? symbol : QStringLiteral("tag");
        painter->drawPixmap(
            area.left(), area.center().y() - Space::icon / 2 + 1,
            Icon::pixmap(glyph, theme.color(Token::text2), Space::icon, painter->device()->devicePixelRatioF()));
        area.setLeft(area.left() + Space::icon + Space::step2 + 2);
        paintName(*painter, area, index, isChild);
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return {0, Space::control}; // as wide as the list
    }

private:
    static void paintName(QPainter& painter, QRect area, const QModelIndex& index, bool isChild)
    {
        const auto name = index.data().toString();
        const auto start = index.data(matchStartRole).toInt();
        const auto length = index.data(matchLengthRole).toInt();
        const auto regular = isChild ? TypeScale::font(TypeStep::body) : TypeScale::bold(TypeStep::body);
        const auto part = [&](const QString& text, const QFont& font, Token tone) {
            painter.setFont(font);
            painter.setPen(Theme::current().color(tone));
            const auto shown = painter.fontMetrics().elidedText(text, Qt::ElideRight, area.width());
            painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft, shown);
            area.setLeft(area.left() + painter.fontMetrics().horizontalAdvance(shown));
        };
        part(name.left(start), regular, Token::text);
        part(name.mid(start, length), TypeScale::bold(TypeStep::body), Token::accent);
        part(name.mid(start + length), regular, Token::text);
    }
};

}

CategoryPopover::CategoryPopover(QWidget* tiles) : Popover{tiles, Edge::over}
{
    setObjectName(QStringLiteral("entryCategoryPopover"));
    m_search = new SearchField(this);
    m_search->setObjectName(QStringLiteral("entryCategorySearch"));
    m_search->installEventFilter(this);
    m_model = new QStandardItemModel(this);
    m_list = new QListView(this);
    m_list->setObjectName(QStringLiteral("entryCategoryList"));
    m_list->setModel(m_model);
    m_list->setItemDelegate(new CategoryDelegate(m_list));
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setFocusPolicy(Qt::NoFocus);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_empty = new TextLabel(TypeStep::body, Token::text2, this);
    m_empty->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    layout->setSpacing(Space::step2);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_empty, 1);
    connect(m_search, &QLineEdit::textChanged, this, &CategoryPopover::search);
    connect(m_list, &QListView::clicked, this, &CategoryPopover::choose);
    retranslate();
}

void CategoryPopover::openOn(SnapshotPointer snapshot, std::string kind, const QString& text)
{
    m_snapshot = std::move(snapshot);
    m_kind = std::move(kind);
    setFixedHeight(popoverHeight);
    m_search->setText(text);
    search();
    open(m_search);
}

void CategoryPopover::keyPressEvent(QKeyEvent* event)
{
    Popover::keyPressEvent(event);
    event->accept(); // nothing that is typed here is meant for the form
}

/// Keys of the search move in the list.
bool CategoryPopover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search) {
        // While the list is open, the keys that confirm the form belong to it.
        if (event->type() == QEvent::ShortcutOverride && isReturn(static_cast<QKeyEvent*>(event)->key())) {
            event->accept();
            return true;
        }
        if (event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent*>(event)))
            return true;
    }
    return Popover::eventFilter(watched, event);
}

bool CategoryPopover::takeKey(const QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Down:
        moveBy(1);
        return true;
    case Qt::Key_Up:
        moveBy(-1);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_list->currentIndex().isValid())
            choose(m_list->currentIndex());
        else if (key.modifiers().testFlag(Qt::ControlModifier))
            hide();
        return true;
    case Qt::Key_Escape:
        hide();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        hide();
        return false;
    default:
        return false;
    }
}

void CategoryPopover::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    Popover::changeEvent(event);
}

void CategoryPopover::search()
{
    if (!m_snapshot)
        return;
    const auto rows = EntryCategories::matching(*m_snapshot, m_kind, m_search->text(), InterfaceLanguage::tag());
    m_model->clear();
    const EntryCategory* best = nullptr;
    for (const auto& row : rows) {
        auto* item = new QStandardItem(row.name);
        item->setData(qString(row.id), idRole);
        item->setData(row.symbol, symbolRole);
        item->setData(row.hasParent, isChildRole);
        item->setData(row.matchStart, matchStartRole);
        item->setData(row.matchLength, matchLengthRole);
        m_model->appendRow(item);
        if (!best && row.matchLength > 0)
            best = &row;
    }
    // Return takes the first category that bears the words itself, not a parent that is only shown around it.
    const auto first = best ? static_cast<int>(best - rows.data()) : 0;
    m_list->setCurrentIndex(m_model->index(first, 0));
    m_list->setVisible(!rows.empty());
    m_empty->setVisible(rows.empty());
    m_empty->setText(word(EntryCopy::words(), m_search->text().isEmpty() ? "noCategories" : "noCategoryMatch"));
}

void CategoryPopover::choose(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const auto id = index.data(idRole).toString().toStdString();
    hide();
    Q_EMIT categoryChosen(id);
}

void CategoryPopover::moveBy(int step)
{
    const int row = m_list->currentIndex().row() + step;
    if (row >= 0 && row < m_model->rowCount())
        m_list->setCurrentIndex(m_model->index(row, 0));
}

void CategoryPopover::retranslate()
{
    m_search->setPrompt(word(EntryWords::words(), "searchCategory"));
    m_list->setAccessibleName(word(EntryWords::words(), "allCategories"));
    search();
}
