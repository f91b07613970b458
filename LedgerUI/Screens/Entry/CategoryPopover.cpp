#include "LedgerUI/Screens/Entry/CategoryPopover.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

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
constexpr int leastHeight = 200; // the search and five categories
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

CategoryPopover::CategoryPopover(QWidget* parent) : QFrame{parent}
{
    setProperty("popover", QStringLiteral("true"));
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
    hide();
}

void CategoryPopover::openAt(QWidget* anchor, QWidget* opener, SnapshotPointer snapshot, std::string kind,
                             const QString& text)
{
    m_opener = opener;
    m_snapshot = std::move(snapshot);
    m_kind = std::move(kind);
    auto* const window = parentWidget();
    const auto over = anchor->mapTo(window, QPoint{0, 0});
    const int height = std::clamp(window->height() - over.y() - Space::step2, leastHeight, popoverHeight);
    const int top = std::min(over.y(), window->height() - height - Space::step2);
    setGeometry(over.x(), top, anchor->width(), height);
    m_search->setText(text);
    search();
    show();
    raise();
    m_search->setFocus(Qt::PopupFocusReason);
    qApp->installEventFilter(this);
}

void CategoryPopover::dismiss()
{
    qApp->removeEventFilter(this);
    const bool hadFocus = isAncestorOf(QApplication::focusWidget());
    hide();
    if (hadFocus && m_opener)
        m_opener->setFocus(Qt::PopupFocusReason);
}

void CategoryPopover::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        dismiss();
    event->accept();
}

/// Keys of the search move in the list; a press elsewhere closes.
bool CategoryPopover::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress && isVisible()) {
        const auto at = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
        auto* const pressed = qobject_cast<QWidget*>(watched);
        if (pressed && !rect().contains(mapFromGlobal(at)))
            dismiss();
    }
    if (watched != m_search)
        return QFrame::eventFilter(watched, event);
    // While the list is open, the keys that confirm the form belong to it.
    if (event->type() == QEvent::ShortcutOverride && isReturn(static_cast<QKeyEvent*>(event)->key())) {
        event->accept();
        return true;
    }
    return event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent*>(event));
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
            dismiss();
        return true;
    case Qt::Key_Escape:
        dismiss();
        return true;
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        dismiss();
        return false;
    default:
        return false;
    }
}

void CategoryPopover::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        retranslate();
    QFrame::changeEvent(event);
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
    m_empty->setText(
        entryWord(m_search->text().isEmpty() ? "noCategories" : "noCategoryMatch", InterfaceLanguage::tag()));
}

void CategoryPopover::choose(const QModelIndex& index)
{
    if (!index.isValid())
        return;
    const auto id = index.data(idRole).toString().toStdString();
    dismiss();
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
    m_search->setPrompt(entryWord("searchCategory", InterfaceLanguage::tag()));
    m_list->setAccessibleName(entryWord("allCategories", InterfaceLanguage::tag()));
    search();
}
