#include "LedgerUI/Screens/Ledger/LedgerTotalBlock.h"

#include <QHBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Ledger/LedgerRow.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Theme/Space.h"

void presentTotalFigure(TextLabel& label, const std::string& currency, const std::optional<std::int64_t>& minor,
                        Token tone)
{
    const auto amount = minor.value_or(0);
    const auto money = amount == 0 ? MoneyText{} : movementText(amount, currency, InterfaceLanguage::tag());
    label.setText(amount == 0 ? QStringLiteral("–") : money.figure());
    label.setTone(amount == 0 ? Token::text3 : tone);
    label.setAccessibleName(amount == 0 ? QString{} : money.spoken);
}

LedgerTotalBlock::LedgerTotalBlock(Place place, QWidget* parent) : QWidget{parent}
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step1);
    if (place == Place::behindAnother) {
        auto* line = new Line(Qt::Vertical, this);
        line->setFixedHeight(Space::icon);
        row->addWidget(line);
        row->addSpacing(Space::step2 - Space::step1);
    }
    m_code = new TextLabel(TypeStep::micro, Token::text3, this);
    row->addWidget(m_code);
    m_incoming = addFigure();
    m_outgoing = addFigure();
    m_net = addFigure();
    m_net.amount->setBold(true);
}

LedgerTotalBlock::Figure LedgerTotalBlock::addFigure()
{
    Figure figure{.name = new TextLabel(TypeStep::micro, Token::text2, this),
                  .amount = new TextLabel(TypeStep::small, Token::text, this)};
    figure.name->setContentsMargins(Space::step2, 0, 0, 0);
    layout()->addWidget(figure.name);
    layout()->addWidget(figure.amount);
    return figure;
}

void LedgerTotalBlock::present(const LedgerTotal& total, Detail detail)
{
    m_code->setText(QString::fromStdString(total.currency));
    present(m_net, "totals.net", total.currency, total.net, Token::text);
    for (auto* each : {m_incoming.name, m_incoming.amount, m_outgoing.name, m_outgoing.amount})
        each->setVisible(detail == Detail::inOutAndNet);
    if (detail == Detail::netAlone)
        return;
    present(m_incoming, "totals.in", total.currency, total.incoming, Token::ok);
    present(m_outgoing, "totals.out", total.currency, total.outgoing, Token::text);
}

void LedgerTotalBlock::present(const Figure& figure, const char* name, const std::string& currency,
                               const std::optional<std::int64_t>& minor, Token tone)
{
    figure.name->setText(word(ledgerWords(), name));
    presentTotalFigure(*figure.amount, currency, minor, tone);
}
