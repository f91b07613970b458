#include "LedgerUI/Screens/Categories/IconGrid.h"

#include <QEvent>
#include <QListView>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int cellWidth = 38; // of which nine stand beside a scroll bar
constexpr int cellHeight = 36;
constexpr int leastRows = 3;
constexpr int symbolRole = Qt::UserRole;

class IconDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// What has no text and no size of its own would not be painted.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& /*option*/, const QModelIndex& /*index*/) const override
    {
        return {cellWidth, cellHeight};
    }

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto color = [](Token token) { return Theme::current().color(token); };
        const bool isChosen = option.state.testFlag(QStyle::State_Selected);
        const auto box = QRectF{option.rect}.adjusted(2, 2, -2, -2);
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (isChosen || option.state.testFlag(QStyle::State_HasFocus)) {
            painter->setBrush(isChosen ? QBrush{color(Token::accentSoft)} : QBrush{Qt::NoBrush});
            painter->setPen(
                QPen{color(option.state.testFlag(QStyle::State_HasFocus) ? Token::focus : Token::accent), 2});
            painter->drawRoundedRect(box, Space::radiusSmall, Space::radiusSmall);
        }
        QRect glyph{0, 0, Space::icon, Space::icon};
        glyph.moveCenter(option.rect.center());
        painter->drawPixmap(glyph.topLeft(), Icon::pixmap(index.data(symbolRole).toString(),
                                                          color(isChosen ? Token::accent : Token::text2), Space::icon,
                                                          painter->device()->devicePixelRatioF()));
        painter->restore();
    }
};

}

IconGrid::IconGrid(QWidget* parent) : QWidget{parent}
{
    m_search = new SearchField(this);
    m_search->setObjectName(QStringLiteral("iconSearch"));
    m_model = new QStandardItemModel(this);
    m_grid = new QListView(this);
    m_grid->setObjectName(QStringLiteral("iconGrid"));
    m_grid->setModel(m_model);
    m_grid->setItemDelegate(new IconDelegate(m_grid));
    m_grid->setViewMode(QListView::IconMode);
    m_grid->setMovement(QListView::Static);
    m_grid->setResizeMode(QListView::Adjust);
    m_grid->setGridSize({cellWidth, cellHeight});
    m_grid->setUniformItemSizes(true);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setMinimumHeight(leastRows * cellHeight);
    m_grid->setTabKeyNavigation(false);
    m_none = new TextLabel(TypeStep::small, Token::text2, this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step2);
    rows->addWidget(m_search);
    rows->addWidget(m_none);
    rows->addWidget(m_grid, 1);
    connect(m_search, &QLineEdit::textChanged, this, &IconGrid::fill);
    const auto take = [this](const QModelIndex& index) {
        m_symbol = index.data(symbolRole).toString();
        mark();
        Q_EMIT chosenByUser(m_symbol);
    };
    connect(m_grid, &QListView::clicked, this, take);
    connect(m_grid, &QListView::activated, this, take);
    retranslate();
}

void IconGrid::choose(const QString& symbol)
{
    if (m_symbol == symbol)
        return;
    m_symbol = symbol;
    mark();
}

void IconGrid::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        retranslate();
}

void IconGrid::retranslate()
{
    m_search->setPrompt(word(categoryWords(), "searchIcons"));
    m_grid->setAccessibleName(word(categoryWords(), "icon"));
    m_none->setText(word(categoryWords(), "noIcons"));
    fill();
}

void IconGrid::fill()
{
    m_model->clear();
    const auto& locale = InterfaceLanguage::tag();
    for (const auto* icon : EnterpriseCategoryCatalog::matchingIcons(m_search->text().toStdString())) {
        auto* item = new QStandardItem;
        item->setData(qString(icon->id), symbolRole);
        item->setData(qString(icon->names.text(locale)), Qt::AccessibleTextRole);
        item->setToolTip(qString(icon->names.text(locale)));
        m_model->appendRow(item);
    }
    m_none->setVisible(m_model->rowCount() == 0);
    mark();
}

void IconGrid::mark()
{
    const auto found = m_model->match(m_model->index(0, 0), symbolRole, m_symbol, 1, Qt::MatchExactly);
    if (found.isEmpty())
        m_grid->selectionModel()->clear();
    else
        m_grid->setCurrentIndex(found.first());
}
