#include "LedgerUI/Components/Table/ChoiceList.h"

#include <utility>

#include <QKeyEvent>
#include <QListWidget>
#include <QVBoxLayout>

#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerUI/Components/Fields/SearchField.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int rowHeight = 28;
constexpr int searchedFrom = 9; // shorter lists are read at one glance
constexpr int identity = Qt::UserRole;
constexpr auto indent = "      ";

std::string idOf(const QListWidgetItem& item)
{
    return item.data(identity).toString().toStdString();
}

bool isAll(const QListWidgetItem& item)
{
    return !item.data(identity).isValid();
}

}

ChoiceList::ChoiceList(QWidget* parent) : QWidget{parent}
{
    m_search = new SearchField(this);
    m_search->setObjectName(QStringLiteral("choiceSearch"));
    m_search->installEventFilter(this);
    m_list = new QListWidget(this);
    m_list->setObjectName(QStringLiteral("choices"));
    m_list->setProperty("choices", true);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_list->setUniformItemSizes(true);
    m_list->setTextElideMode(Qt::ElideRight);
    m_list->installEventFilter(this);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(Space::step2);
    m_none = new TextLabel(TypeStep::body, Token::text2, this);
    m_none->setWordWrap(true);
    m_none->setContentsMargins(Space::step2, 0, Space::step2, 0);
    m_none->hide();
    rows->addWidget(m_search);
    rows->addWidget(m_none);
    rows->addWidget(m_list, 1);
    connect(m_search, &QLineEdit::textChanged, this, &ChoiceList::narrow);
    connect(m_list, &QListWidget::itemClicked, this, &ChoiceList::toggle);
}

void ChoiceList::present(const Words& words, const std::vector<Choice>& choices, Chosen chosen)
{
    m_chosen = std::move(chosen);
    m_none->setText(words.noMatch);
    m_search->clear();
    m_search->setPrompt(words.search);
    m_search->setVisible(choices.size() >= searchedFrom);
    m_list->setAccessibleName(words.name);
    m_list->clear();
    const auto add = [this](const QString& text) {
        auto* item = new QListWidgetItem(text, m_list);
        item->setSizeHint({0, rowHeight});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        item->setToolTip(text.trimmed());
        return item;
    };
    if (!words.all.isEmpty())
        add(words.all);
    for (const auto& choice : choices)
        add((choice.isIndented ? QString::fromLatin1(indent) : QString{}) + choice.text)
            ->setData(identity, QString::fromStdString(choice.id));
    m_list->setCurrentRow(0);
    presentTicks();
}

int ChoiceList::wholeHeight() const
{
    const int search = m_search->isVisibleTo(this) ? m_search->sizeHint().height() + Space::step2 : 0;
    return search + m_list->count() * rowHeight + 2 * m_list->frameWidth();
}

QWidget* ChoiceList::firstStop() const
{
    return m_search->isVisibleTo(this) ? static_cast<QWidget*>(m_search) : m_list;
}

bool ChoiceList::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto& pressed = static_cast<QKeyEvent&>(*event);
    const auto key = pressed.key();
    // With Ctrl it is for whatever holds the list: a popover closes, a form is sent.
    const bool isReturn = (key == Qt::Key_Return || key == Qt::Key_Enter) && pressed.modifiers() != Qt::ControlModifier;
    if (watched == m_search && key == Qt::Key_Down) {
        m_list->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (isReturn || (watched == m_list && key == Qt::Key_Space)) {
        if (const auto* item = m_list->currentItem(); item && !item->isHidden())
            toggle(item);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void ChoiceList::toggle(const QListWidgetItem* item)
{
    if (item->flags() == Qt::NoItemFlags)
        return;
    if (isAll(*item))
        m_chosen.clear();
    else if (const auto id = idOf(*item); m_chosen.erase(id) == 0)
        m_chosen.insert(id);
    presentTicks();
    Q_EMIT chosenChanged(m_chosen);
}

/// A row stays when it holds what was typed, and so does what it belongs to; "all" is no match.
void ChoiceList::narrow(const QString& typed)
{
    const auto wanted = TextFold::folded(TextFold::trimmed(typed.toStdString()));
    QListWidgetItem* first = nullptr;
    QListWidgetItem* above = nullptr;
    for (int row = 0; row < m_list->count(); ++row) {
        auto* item = m_list->item(row);
        const auto text = TextFold::folded(item->text().toStdString());
        const bool matches = wanted.empty() || (!isAll(*item) && text.find(wanted) != std::string::npos);
        item->setHidden(!matches);
        if (!item->text().startsWith(QLatin1Char(' ')))
            above = item;
        else if (matches)
            above->setHidden(false);
        if (matches && !first)
            first = item;
    }
    m_list->setCurrentItem(first);
    m_none->setVisible(!first);
    m_search->setAccessibleDescription(first ? QString{} : m_none->text());
}

void ChoiceList::presentTicks()
{
    for (int row = 0; row < m_list->count(); ++row) {
        auto* item = m_list->item(row);
        const bool isTicked = isAll(*item) ? m_chosen.empty() : m_chosen.contains(idOf(*item));
        item->setCheckState(isTicked ? Qt::Checked : Qt::Unchecked);
    }
}
