#include "LedgerUI/Screens/Company/Access/GrantMatrixView.h"

#include <algorithm>
#include <cmath>

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Components/Text/TextLines.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"

namespace {

constexpr int accountLeast = 150;
constexpr int accountMost = 232;
constexpr int headHeight = 47;
constexpr int rowLow = 28;
constexpr int rowHigh = 36; // where a name takes two lines
constexpr int checkExtent = 16;
constexpr int ringWidth = 2;
constexpr int aroundHead = 12; // both sides together
constexpr int rowsAtLeast = 4;
constexpr int rowsAtMost = 8; // further ones scroll

QColor colorOf(Token token)
{
    return Theme::current().color(token);
}

int textWidth(const QFont& font, const QString& text)
{
    return static_cast<int>(std::ceil(QFontMetricsF{font}.horizontalAdvance(text)));
}

/// The accounts at the left.
class AccountHeads final : public QHeaderView {
public:
    explicit AccountHeads(QWidget* parent) : QHeaderView{Qt::Vertical, parent}
    {
        setSectionResizeMode(Fixed);
        setHighlightSections(false);
        setMinimumSectionSize(1);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        painter->fillRect(rect, colorOf(Token::surface));
        painter->fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, colorOf(Token::hairline));
        painter->fillRect(QRect{rect.right(), rect.top(), 1, rect.height()}, colorOf(Token::divider));
        painter->setFont(TypeScale::font(TypeStep::body));
        painter->setPen(colorOf(Token::text));
        drawTwoLines(*painter, rect.adjusted(Space::cellPaddingOuter, 0, -Space::cellPadding, -1),
                     model()->headerData(section, Qt::Vertical).toString());
    }
};

/// The actions on top, as wide as their longest word and standing on the line below.
class ActionHeads final : public QHeaderView {
public:
    explicit ActionHeads(QWidget* parent) : QHeaderView{Qt::Horizontal, parent}
    {
        setSectionResizeMode(Fixed);
        setHighlightSections(false);
        setMinimumSectionSize(1);
        setFixedHeight(headHeight);
    }

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override
    {
        painter->fillRect(rect, colorOf(Token::surfaceAlt));
        painter->fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, colorOf(Token::divider));
        painter->setFont(TypeScale::font(TypeStep::micro));
        painter->setPen(colorOf(Token::text2));
        painter->drawText(rect.adjusted(2, 2, -2, -Space::step1 - 2),
                          Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap,
                          model()->headerData(section, Qt::Horizontal).toString());
    }
    [[nodiscard]] QSize sectionSizeFromContents(int section) const override
    {
        int widest = 0;
        const auto words = model()->headerData(section, Qt::Horizontal).toString().split(QLatin1Char{' '});
        for (const auto& word : words)
            widest = std::max(widest, textWidth(TypeScale::font(TypeStep::micro), word));
        return {widest + aroundHead, headHeight};
    }
};

void paintCheck(QPainter& painter, bool isGranted, bool mayChange, const QRect& box)
{
    const auto fill = !mayChange ? Token::fieldOff : isGranted ? Token::accent : Token::field;
    const auto border = !mayChange ? Token::divider : isGranted ? Token::accent : Token::control;
    painter.setPen(colorOf(border));
    painter.setBrush(colorOf(fill));
    painter.drawRoundedRect(QRectF{box}.adjusted(0.5, 0.5, -0.5, -0.5), Space::radiusSmall, Space::radiusSmall);
    if (isGranted)
        painter.drawPixmap(box.topLeft(),
                           Icon::pixmap(QStringLiteral("check"), colorOf(mayChange ? Token::onAccent : Token::text2),
                                        checkExtent, painter.device()->devicePixelRatioF()));
}

class CheckDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto& cell = static_cast<const GrantMatrixModel*>(index.model())->cell(index);
        const auto& rect = option.rect;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->fillRect(rect, colorOf(cell.isMeaningful ? Token::surface : Token::surfaceAlt));
        painter->fillRect(QRect{rect.left(), rect.bottom(), rect.width(), 1}, colorOf(Token::hairline));
        if (!cell.isMeaningful && !cell.isGranted) {
            painter->setPen(colorOf(Token::text3));
            painter->drawText(rect, Qt::AlignCenter, QStringLiteral("·"));
        } else {
            QRect box{0, 0, checkExtent, checkExtent};
            box.moveCenter(rect.center());
            const bool isLocked = !option.state.testFlag(QStyle::State_Enabled);
            paintCheck(*painter, cell.isGranted, cell.mayChange() && !isLocked, box);
        }
        if (option.state.testFlag(QStyle::State_HasFocus)) {
            painter->setBrush(Qt::NoBrush);
            painter->setPen(QPen{colorOf(Token::focus), ringWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin});
            painter->drawRect(rect.adjusted(1, 1, -1, -2));
        }
        painter->restore();
    }
};

}

GrantMatrixView::GrantMatrixView(QWidget* parent)
    : QTableView{parent}, m_model{new GrantMatrixModel{this}},
      m_corner{new TextLabel(TypeStep::micro, Token::text2, this)}
{
    setObjectName(QStringLiteral("grantMatrix"));
    setModel(m_model);
    setItemDelegate(new CheckDelegate(this));
    setSelectionMode(NoSelection);
    setShowGrid(false);
    setFrameShape(NoFrame);
    setTabKeyNavigation(false);
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerPixel);
    setVerticalHeader(new AccountHeads(this));
    setHorizontalHeader(new ActionHeads(this));
    setCornerButtonEnabled(false);
    setMinimumHeight(headHeight + rowsAtLeast * rowLow);
    m_corner->setObjectName(QStringLiteral("grantCorner"));
    m_corner->setWordWrap(true);
    m_corner->setAlignment(Qt::AlignBottom | Qt::AlignLeft);
    connect(m_model, &QAbstractItemModel::dataChanged, this, &GrantMatrixView::currentMoved);
    connect(&Theme::current(), &Theme::changed, viewport(), qOverload<>(&QWidget::update));
}

void GrantMatrixView::present(const QString& corner, std::vector<QString> heads, std::vector<GrantRow> rows)
{
    m_corner->setText(corner);
    m_model->present(std::move(heads), std::move(rows));
    layOut();
    updateGeometry();
}

QString GrantMatrixView::whyNot() const
{
    return currentIndex().isValid() ? m_model->cell(currentIndex()).whyNot : QString{};
}

QSize GrantMatrixView::sizeHint() const
{
    const int rows = std::clamp(m_model->rowCount(), rowsAtLeast, rowsAtMost);
    return {accountLeast, headHeight + rows * rowLow + 2};
}

void GrantMatrixView::layOut()
{
    const auto font = TypeScale::font(TypeStep::body);
    int widest = 0;
    for (const auto& row : m_model->rows())
        widest = std::max(widest, textWidth(font, row.account) + Space::cellPaddingOuter + Space::cellPadding + 1);
    const int columns = m_model->columnCount();
    std::vector<int> widths;
    int taken = 0;
    for (int column = 0; column < columns; ++column) {
        widths.push_back(horizontalHeader()->sectionSizeHint(column));
        taken += widths.back();
    }
    const int room = viewport()->width() + verticalHeader()->width();
    // Where the actions need the room, the names go on in a second line.
    const int accounts = std::clamp(room - taken, accountLeast, std::clamp(widest, accountLeast, accountMost));
    verticalHeader()->setFixedWidth(accounts);
    verticalHeader()->setDefaultSectionSize(widest > accounts ? rowHigh : rowLow);
    const int rest = std::max(0, room - accounts - taken);
    for (int column = 0; column < columns; ++column) {
        const int share = rest * (column + 1) / columns - rest * column / columns;
        setColumnWidth(column, widths[static_cast<std::size_t>(column)] + share);
    }
    updateGeometries();
    m_corner->setGeometry(0, 0, accounts, headHeight);
    m_corner->raise();
}

void GrantMatrixView::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    layOut();
}

void GrantMatrixView::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        layOut();
}

void GrantMatrixView::keyPressEvent(QKeyEvent* event)
{
    const auto current = currentIndex();
    if (event->key() != Qt::Key_Space || !current.isValid()) {
        QTableView::keyPressEvent(event);
        return;
    }
    const auto row = static_cast<std::size_t>(current.row());
    const auto column = static_cast<std::size_t>(current.column());
    if (event->modifiers().testFlag(Qt::ControlModifier))
        Q_EMIT columnToggleWanted(column);
    else if (event->modifiers().testFlag(Qt::ShiftModifier))
        Q_EMIT rowToggleWanted(row);
    else
        Q_EMIT toggleWanted(row, column);
}

void GrantMatrixView::mousePressEvent(QMouseEvent* event)
{
    QTableView::mousePressEvent(event);
    m_pressed = indexAt(event->position().toPoint());
}

void GrantMatrixView::mouseReleaseEvent(QMouseEvent* event)
{
    QTableView::mouseReleaseEvent(event);
    const auto index = indexAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && index.isValid() && index == m_pressed)
        Q_EMIT toggleWanted(static_cast<std::size_t>(index.row()), static_cast<std::size_t>(index.column()));
    m_pressed = QPersistentModelIndex{};
}

void GrantMatrixView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    if (!currentIndex().isValid() && m_model->rowCount() > 0)
        setCurrentIndex(m_model->index(0, 0));
}

void GrantMatrixView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QTableView::currentChanged(current, previous);
    Q_EMIT currentMoved();
}
