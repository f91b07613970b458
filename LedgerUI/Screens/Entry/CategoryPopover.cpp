#include "LedgerUI/Screens/Entry/CategoryPopover.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QListView>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerCore/Domain/Entries/EntryWords.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Categories/CategoryPins.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
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
constexpr int isPinnedRole = Qt::UserRole + 5;
constexpr int popoverHeight = 312;
constexpr int pinExtent = Space::control; // of the square at the end of a row that pins it
constexpr int indent = 22;

/// Paints a category with the searched words in the accent colour and its pin at the end; parents are bold.
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
        paintPin(*painter, option, index);
        area.setRight(area.right() - pinExtent + Space::step3);
        paintName(*painter, area, index, isChild);
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return {0, Space::control}; // as wide as the list
    }

private:
    /// Pinned rows show it, and the one that the keys or the mouse are on, which it can be pinned by.
    static void paintPin(QPainter& painter, const QStyleOptionViewItem& option, const QModelIndex& index)
    {
        const bool isPinned = index.data(isPinnedRole).toBool();
        const bool isNear =
            option.state.testFlag(QStyle::State_Selected) || option.state.testFlag(QStyle::State_MouseOver);
        if (!isPinned && !isNear)
            return;
        const auto glyph = isPinned ? QStringLiteral("pin-angle-fill") : QStringLiteral("pin-angle");
        const auto color = Theme::current().color(isPinned ? Token::accent : Token::text3);
        const int inset = (pinExtent - Space::icon) / 2;
        painter.drawPixmap(option.rect.right() - pinExtent + inset, option.rect.center().y() - Space::icon / 2 + 1,
                           Icon::pixmap(glyph, color, Space::icon, painter.device()->devicePixelRatioF()));
    }

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
    m_list->setMouseTracking(true);
    m_list->viewport()->installEventFilter(this);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_empty = new TextLabel(TypeStep::body, Token::text2, this);
    m_empty->setAlignment(Qt::AlignCenter);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Space::step2, Space::step2, Space::step2, Space::step2);
    layout->setSpacing(Space::step2);
    layout->addWidget(m_search);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_empty, 1);
    buildFoot();
    layout->addWidget(m_foot);
    connect(m_search, &QLineEdit::textChanged, this, &CategoryPopover::search);
    connect(m_list, &QListView::clicked, this, &CategoryPopover::choose);
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, &CategoryPopover::presentFoot);
    retranslate();
}

void CategoryPopover::buildFoot()
{
    m_foot = new QWidget(this);
    m_footHint = new TextLabel(TypeStep::small, Token::text2, m_foot);
    m_footHint->setObjectName(QStringLiteral("entryCategoryHint"));
    m_footHint->setWordWrap(true);
    const auto button = [this](const char* name) {
        auto* made = new QPushButton(m_foot);
        made->setObjectName(QString::fromLatin1(name));
        made->setAutoDefault(false);
        return made;
    };
    m_pin = button("entryCategoryPin");
    m_pin->setIconSize({Space::iconBeforeText, Space::icon});
    m_edit = button("entryCategoryEdit");
    m_create = button("entryCategoryNew");
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Space::step2);
    buttons->addWidget(m_pin);
    buttons->addStretch(1);
    buttons->addWidget(m_edit);
    buttons->addWidget(m_create);
    auto* rows = new QVBoxLayout(m_foot);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step1);
    rows->addWidget(m_footHint);
    rows->addLayout(buttons);
    connect(m_pin, &QPushButton::clicked, this, [this] { togglePin(m_list->currentIndex()); });
    connect(m_edit, &QPushButton::clicked, this, [this] {
        const auto id = m_list->currentIndex().data(idRole).toString().toStdString();
        hide();
        Q_EMIT editWanted(id);
    });
    connect(m_create, &QPushButton::clicked, this, [this] {
        const auto name = m_search->text().trimmed();
        hide();
        Q_EMIT creationWanted(name);
    });
}

void CategoryPopover::presentFoot()
{
    if (!m_snapshot)
        return;
    const auto current = m_list->currentIndex();
    const bool isPinned = current.data(isPinnedRole).toBool();
    const auto whyNot = CategoryPins::whyNotMore(*m_snapshot, m_kind, InterfaceLanguage::tag());
    const bool mayManage = MemberRights::canManage(m_snapshot->currentMember);
    m_pin->setText(word(EntryCopy::words(), isPinned ? "unpin" : "pin"));
    m_pin->setIcon(Icon::of(isPinned ? QStringLiteral("pin-angle-fill") : QStringLiteral("pin-angle"), Token::text));
    m_pin->setEnabled(current.isValid() && (isPinned || whyNot.isEmpty()));
    m_pin->setToolTip(whyNot.isEmpty() ? word(EntryCopy::words(), "pinHint") : whyNot);
    m_edit->setText(word(categoryWords(), "editHere"));
    m_edit->setEnabled(current.isValid());
    m_edit->setVisible(mayManage);
    m_create->setText(word(categoryWords(), "newHere"));
    m_create->setVisible(mayManage);
    const bool isFull = current.isValid() && !isPinned && !whyNot.isEmpty();
    m_footHint->setText(isFull      ? whyNot
                        : mayManage ? QString{}
                                    : word(EntryCopy::words(), "companyCategoryMaintainer"));
    m_footHint->setVisible(!m_footHint->text().isEmpty());
}

void CategoryPopover::togglePin(const QModelIndex& index)
{
    const bool isPinned = index.data(isPinnedRole).toBool();
    const bool isFull = !CategoryPins::whyNotMore(*m_snapshot, m_kind, InterfaceLanguage::tag()).isEmpty();
    if (index.isValid() && (isPinned || !isFull))
        Q_EMIT pinWanted(index.data(idRole).toString().toStdString(), !isPinned);
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

void CategoryPopover::renew(SnapshotPointer snapshot)
{
    const auto current = m_list->currentIndex().data(idRole);
    m_snapshot = std::move(snapshot);
    if (!isVisible())
        return;
    search();
    const auto again = m_model->match(m_model->index(0, 0), idRole, current, 1, Qt::MatchExactly);
    if (!again.isEmpty())
        m_list->setCurrentIndex(again.front());
}

void CategoryPopover::keyPressEvent(QKeyEvent* event)
{
    Popover::keyPressEvent(event);
    event->accept(); // nothing that is typed here is meant for the form
}

/// Keys of the search move in the list.
bool CategoryPopover::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list->viewport() && event->type() == QEvent::MouseButtonRelease) {
        const auto place = static_cast<QMouseEvent*>(event)->position().toPoint();
        const auto index = m_list->indexAt(place);
        if (index.isValid() && place.x() > m_list->viewport()->width() - pinExtent) {
            m_list->setCurrentIndex(index);
            togglePin(index);
            return true;
        }
    }
    if (watched == m_search && event->type() == QEvent::KeyPress && takeKey(*static_cast<QKeyEvent*>(event)))
        return true;
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

void CategoryPopover::hideEvent(QHideEvent* event)
{
    Popover::hideEvent(event);
    if (m_snapshot)
        Q_EMIT closed();
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
        item->setData(row.isPinned, isPinnedRole);
        if (row.isPinned)
            item->setData(listed({row.name, word(categoryWords(), "spoken.pinned")}, InterfaceLanguage::tag()),
                          Qt::AccessibleTextRole);
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
    presentFoot();
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
