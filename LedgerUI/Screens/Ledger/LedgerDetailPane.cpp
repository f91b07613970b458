#include "LedgerUI/Screens/Ledger/LedgerDetailPane.h"

#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Dialogs/FocusChain.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Entry/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Receipts/ReceiptWords.h"
#include "LedgerUI/Screens/Ledger/LedgerBalancesBody.h"
#include "LedgerUI/Screens/Ledger/LedgerDetailBody.h"
#include "LedgerUI/Screens/Receipts/ReceiptInput.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int headHeight = 38;

QString text(std::string_view key)
{
    return word(ledgerWords(), key);
}

}

LedgerDetailPane::LedgerDetailPane(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("detailPane"));
    setMinimumWidth(Space::detailPaneMinimum);
    setMaximumWidth(Space::detailPaneMaximum);
    setAutoFillBackground(true);
    m_glyph = new GlyphLabel(QStringLiteral("wallet2"), Token::text2, Space::icon, this);
    m_headline = new TextLabel(TypeStep::body, Token::text, this);
    m_headline->setObjectName(QStringLiteral("detailHeadline"));
    m_headline->setBold(true);
    m_close = new IconButton(QStringLiteral("x-lg"), IconButton::Frame::none, this);
    m_close->setObjectName(QStringLiteral("detailClose"));
    m_scroll = new QScrollArea(this);
    m_scroll->setObjectName(QStringLiteral("detailScroll"));
    m_scroll->setWidgetResizable(true);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setFocusPolicy(Qt::NoFocus);
    m_scroll->viewport()->setAutoFillBackground(false);
    auto* place = new QWidget;
    m_bodyRow = new QVBoxLayout(place);
    m_bodyRow->setContentsMargins(0, 0, 0, 0);
    m_scroll->setWidget(place);
    m_foot = new QFrame(this);
    m_foot->setObjectName(QStringLiteral("detailFoot"));
    m_footRow = new QHBoxLayout(m_foot);
    m_footRow->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);

    auto* head = new QHBoxLayout;
    head->setContentsMargins(Space::pageMargin, Space::step1, Space::step1, 0);
    head->setSpacing(Space::step2);
    head->addWidget(m_glyph);
    head->addWidget(m_headline, 1);
    head->addWidget(m_close);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(1, 0, 0, 0);
    rows->setSpacing(0);
    rows->addLayout(head);
    rows->addWidget(m_scroll, 1);
    rows->addWidget(m_foot);
    m_headline->setMinimumHeight(headHeight - Space::step1);
    connect(m_close, &QToolButton::clicked, this, &LedgerDetailPane::closeWanted);
    connect(new ReceiptInput(*this), &ReceiptInput::given, this, &LedgerDetailPane::takeFiles);
    retranslate();
}

void LedgerDetailPane::presentEntry(const LedgerEntryDetail& detail, const ThemeColor& kindColor, bool isBusy)
{
    if (!adopt(Entry{.detail = detail, .kindColor = kindColor, .isBusy = isBusy}))
        return;
    setHead(entryKindGlyph(detail.kind), detail.kindTitle, kindColor, kindColor);
    auto* body = new LedgerDetailBody;
    for (const auto& amount : detail.amounts) {
        const bool isIncoming = amount.sign == MoneyText::Sign::plus && !detail.isReversed;
        body->addAmount(amount, isIncoming ? kindColor : ThemeColor{Token::text}, detail.isReversed);
    }
    if (!detail.title.isEmpty())
        body->addText(detail.title, Token::text2);
    body->addLines(detail.lines);
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
    if (!detail.offersReversal)
        return;
    auto* reverse = new QPushButton(Icon::of(QStringLiteral("arrow-counterclockwise"), Token::text), text("reverse"));
    reverse->setIconSize({Space::iconBeforeText, Space::icon});
    reverse->setObjectName(QStringLiteral("reverseButton"));
    reverse->setEnabled(!isBusy);
    reverse->setToolTip(isBusy ? text("newEntry.busy") : QString{});
    const auto id = QString::fromStdString(detail.id);
    connect(reverse, &QPushButton::clicked, this, [this, id] { Q_EMIT reversalWanted(id); });
    setFoot({reverse});
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
    setHead(QStringLiteral("check2-square"), headline, Token::text2, Token::text);
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
    auto* shown = isShown ? qobject_cast<LedgerBalancesBody*>(m_body) : nullptr;
    if (shown && shown->renew(balances))
        return;
    setHead(QStringLiteral("wallet2"), text("balances"), Token::text2, Token::text);
    auto* body = new LedgerBalancesBody(balances);
    connect(body, &LedgerBalancesBody::accountWanted, this, &LedgerDetailPane::accountWanted);
    showBody(body);
}

void LedgerDetailPane::retranslate()
{
    m_shown = {};
    setAccessibleName(text("detail"));
    m_close->setName(text("detail.close"));
}

QWidget* LedgerDetailPane::firstStop() const
{
    return m_close;
}

void LedgerDetailPane::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        Q_EMIT left();
    else
        QFrame::keyPressEvent(event);
}

bool LedgerDetailPane::adopt(Shown wanted)
{
    if (wanted == m_shown)
        return false;
    m_shown = std::move(wanted);
    return true;
}

void LedgerDetailPane::setHead(const QString& glyph, const QString& headline, const ThemeColor& glyphColor,
                               const ThemeColor& headlineColor)
{
    m_glyph->setGlyph(glyph, glyphColor);
    m_headline->setText(headline);
    m_headline->setInk(headlineColor);
    setFoot({});
}

void LedgerDetailPane::showBody(LedgerDetailBody* body)
{
    body->finish();
    if (m_body) {
        // It may be where the click came from, so it goes once that is over; taken out at once it would be styled anew.
        m_bodyRow->removeWidget(m_body);
        m_body->hide();
        m_body->deleteLater();
    }
    m_body = body;
    m_bodyRow->addWidget(body);
    m_scroll->verticalScrollBar()->setValue(0);
    m_lastStop = FocusChain::insert(m_close, body);
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
    m_foot->setVisible(!actions.empty());
    auto* before = m_lastStop;
    for (auto* action : actions) {
        m_footRow->addWidget(action);
        setTabOrder(before, action);
        before = action;
    }
    m_footRow->addStretch(1);
}
