#include "LedgerUI/Screens/Reports/AttentionList.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

using Kind = AttentionItem::Kind;

constexpr int headHeight = 36;
constexpr int rowHeight = 32;

QString glyphOf(Kind kind)
{
    switch (kind) {
    case Kind::entryDue:
    case Kind::entriesDue:
        return QStringLiteral("arrow-repeat");
    case Kind::entryUnconfirmed:
    case Kind::requestsUnconfirmed:
        return QStringLiteral("question-circle");
    case Kind::invitationsExpiring:
        return QStringLiteral("envelope");
    case Kind::receiptsMissing:
        return QStringLiteral("paperclip");
    case Kind::floatEmpty:
    case Kind::floatLow:
    case Kind::floatBelowZero:
        return QStringLiteral("wallet2");
    case Kind::startUnconfirmed:
        return QStringLiteral("calendar3");
    case Kind::openingsMissing:
        return QStringLiteral("flag");
    case Kind::entriesReversed:
        return QStringLiteral("arrow-counterclockwise");
    case Kind::dividendsUnpaid:
    case Kind::advancesUnapplied:
        return QStringLiteral("pie-chart");
    }
    return {};
}

std::string_view actionKey(const AttentionItem& item)
{
    switch (item.kind) {
    case Kind::entryDue:
        return "attention.record";
    case Kind::entryUnconfirmed:
        return "attention.finish";
    case Kind::entriesDue:
    case Kind::receiptsMissing:
    case Kind::floatBelowZero:
    case Kind::entriesReversed:
    case Kind::requestsUnconfirmed:
    case Kind::invitationsExpiring:
        return "attention.show";
    case Kind::floatEmpty:
    case Kind::floatLow:
        return item.canFund ? "attention.fund" : "attention.show";
    case Kind::startUnconfirmed:
        return "attention.setUp";
    case Kind::openingsMissing:
        return "attention.enter";
    case Kind::dividendsUnpaid:
    case Kind::advancesUnapplied:
        return "attention.settle";
    }
    return {};
}

QPushButton* link(const QString& text, const QString& name, QWidget* parent)
{
    auto* button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setProperty("kind", QStringLiteral("link"));
    return button;
}

}

AttentionList::AttentionList(QWidget* parent) : QWidget{parent}
{
    setObjectName(QStringLiteral("attention"));
    m_title = new TextLabel(TypeStep::section, Token::text, this);
    m_count = new TextLabel(TypeStep::small, Token::text2, this);
    auto* head = new QWidget(this);
    head->setMinimumHeight(headHeight);
    auto* headRow = new QHBoxLayout(head);
    headRow->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    headRow->setSpacing(Space::step2);
    headRow->addWidget(m_title);
    headRow->addWidget(m_count);
    headRow->addStretch(1);
    m_rows = new QWidget(this);
    m_layout = new QVBoxLayout(m_rows);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(head);
    rows->addWidget(m_rows);
}

void AttentionList::present(std::vector<AttentionItem> items)
{
    m_title->setText(word(reportWords(), "attention"));
    const bool isSame = items == m_items && m_layout->count() > 0;
    m_items = std::move(items);
    if (!isSame)
        fill();
    m_count->setText(m_items.empty() ? word(reportWords(), "attention.none") : QString::number(m_items.size()));
}

void AttentionList::showFirst(std::size_t rows)
{
    if (std::exchange(m_shownFirst, rows) != rows)
        fill();
}

QWidget* AttentionList::firstStop() const
{
    return m_rows->findChild<QPushButton*>();
}

void AttentionList::fill()
{
    for (auto* each : m_rows->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        m_layout->removeWidget(each);
        each->hide();
        each->deleteLater();
    }
    const auto shown = m_showsAll ? m_items.size() : std::min(m_shownFirst, m_items.size());
    for (std::size_t at = 0; at < shown; ++at)
        addRow(at);
    if (shown == m_items.size())
        return;
    auto* all = link(word(reportWords(), "attention.all", {std::to_string(m_items.size())}),
                     QStringLiteral("attentionAll"), m_rows);
    all->setContentsMargins(Space::pageMargin, 0, 0, 0);
    connect(all, &QPushButton::clicked, this, [this] {
        m_showsAll = true;
        fill();
        if (auto* stop = firstStop())
            stop->setFocus(Qt::OtherFocusReason);
    });
    m_layout->addWidget(all, 0, Qt::AlignHCenter);
}

void AttentionList::addRow(std::size_t at)
{
    const auto& item = m_items[at];
    auto* row = new QWidget(m_rows);
    row->setMinimumHeight(rowHeight);
    auto* text = new TextLabel(TypeStep::body, Token::text, row);
    text->setText(item.text);
    text->setWordWrap(true);
    auto* act = link(word(reportWords(), actionKey(item)), QStringLiteral("attention%1").arg(at), row);
    act->setAccessibleName(QStringLiteral("%1, %2").arg(act->text(), item.text));
    connect(act, &QPushButton::clicked, this, [this, item] { Q_EMIT wanted(item); });
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(Space::pageMargin, 0, Space::pageMargin, 0);
    layout->setSpacing(Space::step2);
    layout->addWidget(new GlyphLabel(glyphOf(item.kind), Token::warn, Space::icon, row));
    layout->addWidget(text, 1);
    layout->addWidget(act);
    m_layout->addWidget(new Line(Qt::Horizontal, m_rows));
    m_layout->addWidget(row);
}
