#include "LedgerUI/Screens/Ledger/LedgerDetailPane.h"

#include <utility>

#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Receipts/ReceiptWords.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Screens/Ledger/LedgerBalancesBody.h"
#include "LedgerUI/Screens/Ledger/LedgerDetailBody.h"
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
    connect(new ReceiptInput(*this), &ReceiptInput::given, this, &LedgerDetailPane::takeFiles);
    retranslate();
}

void LedgerDetailPane::presentEntry(const LedgerEntryDetail& detail, const ThemeColor& kindColor, bool isBusy)
{
    if (!adopt(Entry{.detail = detail, .kindColor = kindColor, .isBusy = isBusy}))
        return;
    setHead(entryKindGlyph(detail.kind), kindColor, detail.kindTitle, kindColor);
    setFoot({});
    auto* body = new LedgerDetailBody;
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
    presentFoot(detail, isBusy);
}

void LedgerDetailPane::presentFoot(const LedgerEntryDetail& detail, bool isBusy)
{
    const auto id = qString(detail.id);
    std::vector<QWidget*> actions;
    if (detail.offersReversal) {
        auto* reverse =
            new QPushButton(Icon::of(QStringLiteral("arrow-counterclockwise"), Token::text), text("reverse"));
        reverse->setIconSize({Space::iconBeforeText, Space::icon});
        reverse->setObjectName(QStringLiteral("reverseButton"));
        reverse->setEnabled(!isBusy);
        reverse->setToolTip(isBusy ? text("newEntry.busy") : QString{});
        connect(reverse, &QPushButton::clicked, this, [this, id] { Q_EMIT reversalWanted(id); });
        actions.push_back(reverse);
    }
    auto* share = new IconButton(QStringLiteral("share"), IconButton::Frame::outlined);
    share->setObjectName(QStringLiteral("shareButton"));
    share->setName(word(EntryCopy::words(), "shareReceipt"));
    connect(share, &QAbstractButton::clicked, this, [this, id] { Q_EMIT sharingWanted(id); });
    actions.push_back(share);
    setFoot(actions);
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
    setHead(QStringLiteral("check2-square"), Token::text2, headline);
    setFoot({});
    auto* body = new LedgerDetailBody;
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
    setFoot({});
    auto* body = new LedgerBalancesBody(balances);
    connect(body, &LedgerBalancesBody::accountWanted, this, &LedgerDetailPane::accountWanted);
    showBody(body);
}

void LedgerDetailPane::retranslate()
{
    m_shown = {};
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
}

void LedgerDetailPane::setFoot(const std::vector<QWidget*>& actions)
{
    while (auto* item = m_footRow->takeAt(0)) {
        if (item->widget()) {
            item->widget()->hide();
            item->widget()->deleteLater();
        }
        delete item;
    }
    foot().setVisible(!actions.empty());
    auto* before = lastStop();
    for (auto* action : actions) {
        m_footRow->addWidget(action);
        setTabOrder(before, action);
        before = action;
    }
    m_footRow->addStretch(1);
}
