#include "LedgerUI/Screens/Ledger/LedgerTotalBlock.h"

#include <QHBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Values/MoneyText.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr std::size_t ofMovements = 3; // figures; only a statement has more

}

void presentTotalFigure(TextLabel& label, const std::string& currency, const LedgerTotalFigures::Figure& figure)
{
    const auto amount = figure.minor.value_or(0);
    const bool isBalance = figure.kind == LedgerTotalFigures::Figure::Kind::balance;
    const bool isDash = !figure.minor || (amount == 0 && !isBalance);
    const auto& locale = InterfaceLanguage::tag();
    const auto money = isBalance ? balanceText(amount, currency, locale) : movementText(amount, currency, locale);
    label.setText(isDash ? QStringLiteral("–") : money.figure());
    label.setTone(isDash ? Token::text3 : figure.tone);
    label.setAccessibleName(isDash ? QString{} : money.spoken);
}

LedgerTotalFigures figuresOf(const LedgerTotal& total)
{
    return {.currency = total.currency,
            .figures = {{.name = "totals.in", .minor = total.incoming, .tone = Token::ok},
                        {.name = "totals.out", .minor = total.outgoing},
                        {.name = "totals.net", .minor = total.net}}};
}

LedgerTotalFigures figuresOf(const LedgerStatement::Line& line)
{
    using enum LedgerTotalFigures::Figure::Kind;
    return {.currency = line.currency,
            .figures = {{.name = "statement.opening", .minor = line.opening, .kind = balance},
                        {.name = "totals.in", .minor = line.incoming, .tone = Token::ok},
                        {.name = "totals.out", .minor = line.outgoing},
                        {.name = "statement.closing", .minor = line.closing, .kind = balance}}};
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
    for (std::size_t at = 0; at < ofMovements; ++at)
        m_figures[at] = addFigure();
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

void LedgerTotalBlock::present(const LedgerTotalFigures& total, Detail detail)
{
    m_code->setText(QString::fromStdString(total.currency));
    const auto count = total.figures.size();
    for (std::size_t at = 0; at < m_figures.size(); ++at) {
        if (!m_figures[at].name && at < count)
            m_figures[at] = addFigure();
        const auto& [name, amount] = m_figures[at];
        if (!name)
            continue;
        const bool isLast = at + 1 == count;
        const bool isShown = at < count && (isLast || detail == Detail::all);
        name->setVisible(isShown);
        amount->setVisible(isShown);
        if (!isShown)
            continue;
        name->setText(word(ledgerWords(), total.figures[at].name));
        amount->setBold(isLast);
        presentTotalFigure(*amount, total.currency, total.figures[at]);
    }
}
