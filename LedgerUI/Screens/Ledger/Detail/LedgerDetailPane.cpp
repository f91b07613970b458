#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailPane.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerBalancesBody.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailBody.h"
#include "LedgerUI/Screens/Receipts/ReceiptInput.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QString text(std::string_view key)
{
    return word(ledgerWords(), key);
}

}

LedgerDetailPane::LedgerDetailPane(QWidget* parent)
    : DetailPane{{.pane = QStringLiteral("detailPane"),
                  .headline = QStringLiteral("detailHeadline"),
                  .close = QStringLiteral("detailClose")},
                 parent}
{
    m_footRow = new QHBoxLayout(&foot());
    m_footRow->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    m_footRow->setSpacing(Space::step1);
    connect(new ReceiptInput(*this), &ReceiptInput::given, this, &LedgerDetailPane::takeFiles);
    retranslate();
}

void LedgerDetailPane::offer(const Offered& offered)
{
    m_offered = offered;
    foot().hide();
}

/// With the first choice: nothing can be done while nothing is chosen.
void LedgerDetailPane::makeFoot()
{
    if (!m_actions.empty())
        return;
    for (auto* action : m_offered.main) {
        auto* button = new QPushButton(action->icon(), text("reverse"), &foot());
        button->setIconSize({Space::iconBeforeText, Space::icon});
        m_main.push_back(button);
        add(*button, *action);
    }
    for (auto* action : m_offered.others) {
        auto* button = new IconButton({}, IconButton::Frame::outlined, &foot());
        button->setIcon(action->icon());
        add(*button, *action);
    }
    m_footRow->addStretch(1);
}

void LedgerDetailPane::add(QAbstractButton& button, QAction& action)
{
    button.setObjectName(action.objectName() + QStringLiteral("Button"));
    m_actions.push_back(&button);
    m_footRow->addWidget(&button);
    connect(&button, &QAbstractButton::clicked, &action, &QAction::trigger);
    connect(&action, &QAction::changed, &button, [this, &button, &action] { follow(button, action); });
    follow(button, action);
}

void LedgerDetailPane::presentEntry(const LedgerEntryDetail& detail, const ThemeColor& kindColor)
{
    if (!adopt(Entry{.detail = detail, .kindColor = kindColor}))
        return;
    makeFoot();
    setHead(entryKindGlyph(detail.kind), kindColor, detail.kindTitle, kindColor);
    auto* body = new LedgerDetailBody(bodyPlace());
    for (const auto& amount : detail.amounts) {
        const bool isIncoming = amount.sign == MoneyText::Sign::plus && !detail.isReversed;
        body->addAmount(amount, isIncoming ? kindColor : ThemeColor{Token::text}, detail.isReversed);
    }
    if (!detail.title.isEmpty())
        body->addText(detail.title, Token::text2);
    body->addLines(detail.lines);
    if (!detail.caution.isEmpty()) {
        body->addGap(Space::step2);
        body->addText(detail.caution, Token::warn);
    }
    body->addSection(text("detail.movements"));
    for (const auto& leg : detail.legs)
        body->addLeg(leg, text("detail.balanceAfter"));
    if (!detail.links.empty()) {
        body->addSection(text("detail.links"));
        for (const auto& link : detail.links) {
            const auto target = QString::fromStdString(link.targetID);
            body->addLink(
                link.label, link.text,
                target.isEmpty() ? LedgerDetailBody::Action{} : [this, target] { Q_EMIT entryWanted(target); });
        }
    }
    addReceipts(*body, detail);
    if (!detail.correction.isEmpty()) {
        body->addGap(Space::sectionGap);
        body->addText(detail.correction, Token::text2);
    }
    if (detail.record)
        body->addLink(text("detail.record"), text("detail.openRecord"),
                      [this, record = *detail.record] { Q_EMIT recordWanted(record); });
    showBody(body);
}

void LedgerDetailPane::addReceipts(LedgerDetailBody& body, const LedgerEntryDetail& detail)
{
    if (detail.receipts.empty() && !detail.takesReceipts)
        return;
    const auto id = qString(detail.id);
    body.addSection(text("detail.receipts"), QString::number(detail.receipts.size()));
    for (std::size_t at = 0; at < detail.receipts.size(); ++at)
        body.addReceipt(detail.receipts[at], [this, id, at] { Q_EMIT receiptWanted(id, at); });
    if (detail.takesReceipts)
        body.addButton(QStringLiteral("addReceiptsButton"), QStringLiteral("plus-lg"), word(receiptWords(), "add"),
                       [this, id] { Q_EMIT receiptsOffered(id, {}); });
}

void LedgerDetailPane::takeFiles(const std::vector<ReceiptSource>& sources)
{
    const auto* shown = std::get_if<Entry>(&m_shown);
    if (shown && shown->detail.takesReceipts)
        Q_EMIT receiptsOffered(qString(shown->detail.id), sources);
}

void LedgerDetailPane::presentSelection(const QString& headline, const std::vector<MoneyText>& sums)
{
    if (!adopt(Selection{.headline = headline, .sums = sums}))
        return;
    makeFoot();
    setHead(QStringLiteral("check2-square"), Token::text2, headline);
    auto* body = new LedgerDetailBody(bodyPlace());
    if (!sums.empty())
        body->addTotals(sums, text("totals.net"));
    body->addGap(Space::step3);
    body->addText(text("totals.hint"), Token::text3);
    showBody(body);
}

void LedgerDetailPane::presentBalances(const LedgerBalances& balances)
{
    const bool isShown = std::holds_alternative<LedgerBalances>(m_shown);
    if (!adopt(balances))
        return;
    auto* shown = isShown ? qobject_cast<LedgerBalancesBody*>(body()) : nullptr;
    if (shown && shown->renew(balances))
        return;
    setHead(QStringLiteral("wallet2"), Token::text2, text("balances"));
    auto* body = new LedgerBalancesBody(balances, bodyPlace());
    connect(body, &LedgerBalancesBody::accountWanted, this, &LedgerDetailPane::accountWanted);
    showBody(body);
}

void LedgerDetailPane::retranslate()
{
    m_shown = {};
    for (auto* button : m_main)
        button->setText(text("reverse"));
    setSpoken(text("detail"), text("detail.close"));
}

bool LedgerDetailPane::adopt(Shown wanted)
{
    if (wanted == m_shown)
        return false;
    m_shown = std::move(wanted);
    return true;
}

void LedgerDetailPane::showBody(LedgerDetailBody* body)
{
    body->finish();
    setBody(body);
    auto* before = lastStop();
    for (auto* button : m_actions) {
        setTabOrder(before, button);
        before = button;
    }
}

void LedgerDetailPane::follow(QAbstractButton& button, const QAction& action)
{
    button.setEnabled(action.isEnabled());
    button.setVisible(action.isVisible());
    button.setAccessibleName(action.text());
    button.setToolTip(action.toolTip());
    foot().setVisible(std::ranges::any_of(m_actions, [](const auto* each) { return !each->isHidden(); }));
}
