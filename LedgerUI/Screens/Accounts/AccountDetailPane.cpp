#include "LedgerUI/Screens/Accounts/AccountDetailPane.h"

#include <QAction>
#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerUI/Components/Buttons/IconButton.h"
#include "LedgerUI/Components/Buttons/RowButton.h"
#include "LedgerUI/Components/Chart/SparklineView.h"
#include "LedgerUI/Components/Page/Action.h"
#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/EntryKindColor.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/EntryKindGlyph.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Ledger/Detail/LedgerDetailBody.h"
#include "LedgerUI/Theme/Icon.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int dayColumn = 48;

QString text(std::string_view key)
{
    return word(accountWords(), key);
}

}

AccountDetailPane::AccountDetailPane(ActionSet& actions, QWidget* parent)
    : DetailPane{{.pane = QStringLiteral("accountDetail"),
                  .headline = QStringLiteral("accountName"),
                  .close = QStringLiteral("accountDetailClose")},
                 parent},
      m_actions{actions}
{
    buildFoot();
    retranslate();
}

void AccountDetailPane::buildFoot()
{
    auto* buttons = new WrapLayout(&foot(), Space::step2);
    buttons->setContentsMargins(Space::pageMargin, Space::step3, Space::pageMargin, Space::step3);
    auto* edit = footButton(m_actions[QStringLiteral("editAccount")], QStringLiteral("accountEdit"));
    edit->setIcon(Icon::of(QStringLiteral("pencil"), Token::text));
    edit->setIconSize({Space::iconBeforeText, Space::icon});
    buttons->addWidget(edit);
    buttons->addWidget(footButton(m_actions[QStringLiteral("openingBalance")], QStringLiteral("accountOpening")));
    m_more = new IconButton(QStringLiteral("three-dots"), IconButton::Frame::outlined, &foot());
    m_more->setObjectName(QStringLiteral("accountMore"));
    connect(m_more, &QToolButton::clicked, this,
            [this] { Q_EMIT menuWanted(m_more->mapToGlobal(QPoint{0, m_more->height()})); });
    buttons->addWidget(m_more);
}

QPushButton* AccountDetailPane::footButton(QAction* action, const QString& name)
{
    auto* button = new QPushButton(&foot());
    button->setObjectName(name);
    const auto follow = [this, button, action] {
        button->setText(action->text());
        button->setEnabled(action->isEnabled());
        button->setToolTip(action->toolTip());
        button->setVisible(action->isVisible());
        presentFoot();
    };
    connect(action, &QAction::changed, button, follow);
    connect(button, &QPushButton::clicked, action, &QAction::trigger);
    button->setText(action->text());
    button->setVisible(action->isVisible());
    return button;
}

void AccountDetailPane::presentFoot()
{
    foot().setVisible(m_shown.has_value());
    foot().updateGeometry();
}

void AccountDetailPane::present(const AccountDetail& detail, const LedgerSnapshot& snapshot)
{
    if (m_shown == detail)
        return;
    m_shown = detail;
    setHead(detail.glyph, Token::text2, detail.name);
    auto* body = new LedgerDetailBody(bodyPlace());
    body->addText(detail.balanceLabel, Token::text2);
    body->addAmount(detail.balance, detail.balance.sign == MoneyText::Sign::minus ? Token::danger : Token::text, false);
    if (detail.trend) {
        auto* trend = new SparklineView;
        trend->setObjectName(QStringLiteral("accountTrend"));
        trend->present({detail.trend->values.begin(), detail.trend->values.end()}, detail.trend->spoken);
        body->addPart(trend);
    }
    body->addLines(detail.properties);
    body->addSection(text("latest"));
    if (detail.latest.empty())
        body->addText(text("latest.none"), Token::text2);
    for (const auto& movement : detail.latest) {
        body->addPart(movementRow(movement, snapshot));
        body->addLine();
    }
    if (!detail.latest.empty())
        body->addPart(ledgerLink());
    showBody(body);
    presentFoot();
}

void AccountDetailPane::presentNothing()
{
    m_shown.reset();
    setHead(QStringLiteral("bank"), Token::text3, {});
    auto* body = new LedgerDetailBody(bodyPlace());
    body->addText(text("detail.none"), Token::text2);
    showBody(body);
    presentFoot();
}

QWidget* AccountDetailPane::ledgerLink() const
{
    auto* row = new QWidget;
    auto* link = new QPushButton(Icon::of(QStringLiteral("journal-text"), Token::accent), text("inLedger"), row);
    link->setObjectName(QStringLiteral("accountInLedger"));
    link->setProperty("kind", QStringLiteral("link"));
    link->setCursor(Qt::PointingHandCursor);
    link->setIconSize({Space::iconBeforeText, Space::icon});
    connect(link, &QPushButton::clicked, m_actions[QStringLiteral("showInLedger")], &QAction::trigger);
    auto* layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, Space::step2, 0, 0);
    layout->addWidget(link);
    layout->addStretch(1);
    return row;
}

QWidget* AccountDetailPane::movementRow(const AccountDetail::Movement& movement, const LedgerSnapshot& snapshot)
{
    auto* box = new RowButton;
    box->setObjectName(QStringLiteral("accountMovement"));
    box->setAccessibleName(movement.spoken);
    box->setToolTip(movement.spoken);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(Space::step1, Space::step1 + 1, Space::step1, Space::step1 + 1);
    row->setSpacing(Space::step2);
    connect(box, &QAbstractButton::clicked, this, [this, id = qString(movement.entryID)] { Q_EMIT entryWanted(id); });
    const auto ink = entryKindColor(movement.kind, snapshot);
    auto* day = new TextLabel(TypeStep::small, Token::text2, box);
    day->setText(movement.day);
    day->setMinimumWidth(dayColumn);
    auto* title =
        new ElidedLabel(TypeStep::small, movement.isReversed ? Token::text2 : Token::text, Qt::ElideRight, box);
    title->setText(movement.title);
    auto* amount = new TextLabel(TypeStep::small, Token::text, box);
    amount->setText(movement.amount.figure());
    if (movement.amount.sign == MoneyText::Sign::plus)
        amount->setInk(ink);
    for (auto* label : {static_cast<QWidget*>(title), static_cast<QWidget*>(amount)}) {
        auto font = label->font();
        font.setStrikeOut(movement.isReversed);
        label->setFont(font);
    }
    row->addWidget(day);
    row->addWidget(new GlyphLabel(entryKindGlyph(movement.kind), ink, Space::icon, box));
    row->addWidget(title, 1);
    row->addWidget(amount);
    for (auto* each : box->findChildren<QWidget*>())
        each->setAttribute(Qt::WA_TransparentForMouseEvents);
    return box;
}

void AccountDetailPane::retranslate()
{
    m_shown.reset();
    setSpoken(text("detail"), text("detail.close"));
    m_more->setName(text("more"));
}

void AccountDetailPane::showBody(LedgerDetailBody* body)
{
    body->finish();
    setBody(body);
}
