#include "LedgerUI/Components/Fields/AccountPicker.h"

#include <algorithm>

#include <QElapsedTimer>
#include <QKeyEvent>
#include <QListView>
#include <QStandardItemModel>
#include <QStyleOptionComboBox>
#include <QStylePainter>
#include <QStyledItemDelegate>

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int idRole = Qt::UserRole;
constexpr int balancesRole = Qt::UserRole + 1;
constexpr int glyphRole = Qt::UserRole + 2;
constexpr int arrowWidth = 32;
constexpr int headHeight = 26;
constexpr int popupRows = 9;
constexpr qint64 typingPause = 1000; // milliseconds

/// One account as it stands in the list and in the closed box.
struct AccountText {
    QString glyph;
    QString name;
    QString balances;
};

void paintAccount(QPainter& painter, const QRect& area, const AccountText& text, Token tone)
{
    const auto& theme = Theme::current();
    const auto icon =
        Icon::pixmap(text.glyph, theme.color(Token::text2), Space::icon, painter.device()->devicePixelRatioF());
    painter.drawPixmap(area.left(), area.center().y() - Space::icon / 2 + 1, icon);
    auto lines = area.adjusted(Space::icon + Space::step2 + 2, 0, 0, 0);
    const QFontMetrics name{TypeScale::font(TypeStep::body)};
    const QFontMetrics balances{TypeScale::font(TypeStep::small)};
    const int height = name.height() + (text.balances.isEmpty() ? 0 : balances.height());
    lines.setTop(area.center().y() - height / 2 + 1);
    painter.setFont(TypeScale::font(TypeStep::body));
    painter.setPen(theme.color(tone));
    painter.drawText(lines, Qt::AlignLeft | Qt::AlignTop, name.elidedText(text.name, Qt::ElideRight, lines.width()));
    lines.setTop(lines.top() + name.height());
    painter.setFont(TypeScale::font(TypeStep::small));
    painter.setPen(theme.color(Token::text2));
    painter.drawText(lines, Qt::AlignLeft | Qt::AlignTop,
                     balances.elidedText(text.balances, Qt::ElideRight, lines.width()));
}

class AccountDelegate final : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        const auto& theme = Theme::current();
        painter->save();
        const auto area = option.rect.adjusted(Space::step2, 0, -Space::step2, 0);
        if (index.data(idRole).isNull()) {
            painter->setFont(TypeScale::font(TypeStep::small));
            painter->setPen(theme.color(Token::text2));
            painter->drawText(area, Qt::AlignVCenter | Qt::AlignLeft, index.data().toString());
        } else {
            if (option.state.testFlag(QStyle::State_Selected))
                painter->fillRect(option.rect, theme.color(Token::accentSoft));
            paintAccount(
                *painter, area,
                {index.data(glyphRole).toString(), index.data().toString(), index.data(balancesRole).toString()},
                Token::text);
        }
        painter->restore();
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        return {option.rect.width(), index.data(idRole).isNull() ? headHeight : Space::controlLarge};
    }
};

/// The accounts of the list. What is typed leaves those in sight whose name holds it, wherever and without its
/// diacritics: "ngan" finds "Ngân hàng". The closed box finds the first of them.
class AccountList final : public QListView {
public:
    using QListView::QListView;

    void keyboardSearch(const QString& typed) override
    {
        if (!isVisible() && m_pause.hasExpired(typingPause))
            m_typed.clear();
        m_pause.start();
        search(typed.isEmpty() ? QString{} : m_typed + typed);
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        if (event->key() == Qt::Key_Backspace && !m_typed.isEmpty())
            search(m_typed.chopped(1));
        else
            QListView::keyPressEvent(event);
    }

    void showEvent(QShowEvent* event) override
    {
        search({}); // what was typed into the closed box is done with
        QListView::showEvent(event);
    }

    void hideEvent(QHideEvent* event) override
    {
        QListView::hideEvent(event);
        search({});
    }

    /// What is looked for stands at the foot of the list.
    void paintEvent(QPaintEvent* event) override
    {
        QListView::paintEvent(event);
        if (m_typed.isEmpty())
            return;
        QPainter painter{viewport()};
        const auto strip = viewport()->rect().adjusted(0, viewport()->height() - headHeight, 0, 0);
        painter.fillRect(strip, Theme::current().color(Token::sunken));
        painter.setFont(TypeScale::font(TypeStep::small));
        painter.setPen(Theme::current().color(Token::text2));
        painter.drawText(strip.adjusted(Space::step2, 0, -Space::step2, 0), Qt::AlignVCenter | Qt::AlignLeft, m_typed);
    }

private:
    /// A letter that would leave nothing is not taken.
    void search(const QString& typed)
    {
        const auto wanted = TextFold::folded(TextFold::trimmed(typed.toStdString()));
        std::vector<bool> matches;
        for (int row = 0; row < model()->rowCount(); ++row) {
            const auto index = model()->index(row, 0);
            const auto name = TextFold::folded(index.data().toString().toStdString());
            matches.push_back(!index.data(idRole).isNull() && name.find(wanted) != std::string::npos);
        }
        const auto first = std::ranges::find(matches, true);
        if (first == matches.end())
            return;
        m_typed = typed;
        if (isVisible() || wanted.empty())
            narrow(matches, wanted.empty());
        if (!wanted.empty())
            setCurrentIndex(model()->index(static_cast<int>(first - matches.begin()), 0));
        viewport()->update();
    }

    /// The head of a group stays with its accounts.
    void narrow(const std::vector<bool>& matches, bool showsAll)
    {
        int head = -1;
        for (int row = 0; row < model()->rowCount(); ++row) {
            const bool isHead = model()->index(row, 0).data(idRole).isNull();
            const bool matched = matches[static_cast<std::size_t>(row)];
            setRowHidden(row, !showsAll && !matched);
            if (isHead)
                head = row;
            else if (matched && head >= 0)
                setRowHidden(head, false);
        }
    }

    QString m_typed;
    QElapsedTimer m_pause;
};

}

AccountPicker::AccountPicker(QWidget* parent) : QComboBox{parent}
{
    setView(new AccountList(this));
    setProperty("extent", QStringLiteral("large"));
    setMaxVisibleItems(popupRows);
    setItemDelegate(new AccountDelegate(this));
    connect(this, &QComboBox::activated, this,
            [this](int index) { Q_EMIT accountChosen(itemData(index, idRole).toString().toStdString()); });
}

void AccountPicker::present(const std::vector<AccountChoice>& rows, const std::string& chosen, const QString& prompt)
{
    m_prompt = prompt;
    if (rows != m_rows) {
        m_rows = rows;
        fill();
    }
    setCurrentIndex(chosen.empty() ? -1 : findData(qString(chosen), idRole));
    update();
}

/// Heads are shown only where there is more than one group.
void AccountPicker::fill()
{
    clear();
    const bool isMixed =
        std::ranges::any_of(m_rows, [&](const auto& row) { return row.group != m_rows.front().group; });
    QString head;
    for (const auto& row : m_rows) {
        if (isMixed && row.group != head) {
            head = row.group;
            addItem(head);
            static_cast<QStandardItemModel*>(model())->item(count() - 1)->setEnabled(false);
        }
        addChoice(row);
    }
}

void AccountPicker::addChoice(const AccountChoice& choice)
{
    addItem(choice.name, qString(choice.id));
    setItemData(count() - 1, choice.balances, balancesRole);
    setItemData(count() - 1, choice.glyph, glyphRole);
    setItemData(count() - 1, listed({choice.name, choice.balances}, InterfaceLanguage::tag()), Qt::AccessibleTextRole);
}

void AccountPicker::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter{this};
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const auto area = rect().adjusted(Space::step3, 0, -arrowWidth, 0);
    if (currentIndex() < 0)
        paintAccount(painter, area, {QStringLiteral("bank"), m_prompt, {}}, Token::text3);
    else
        paintAccount(painter, area,
                     {currentData(glyphRole).toString(), currentText(), currentData(balancesRole).toString()},
                     isEnabled() ? Token::text : Token::text2);
}
