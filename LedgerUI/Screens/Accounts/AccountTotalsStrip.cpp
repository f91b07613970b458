#include "LedgerUI/Screens/Accounts/AccountTotalsStrip.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

namespace {

QWidget* figure(const MoneyText& money, QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step1 + 2);
    auto* code = new TextLabel(TypeStep::micro, Token::text2, box);
    code->setText(money.currency);
    auto* digits = new TextLabel(TypeStep::small, Token::text, box);
    digits->setBold(true);
    digits->setText(money.figure());
    digits->setAccessibleName(money.spoken);
    row->addWidget(code);
    row->addWidget(digits);
    return box;
}

}

AccountTotalsStrip::AccountTotalsStrip(QWidget* parent) : QFrame{parent}
{
    setObjectName(QStringLiteral("accountTotals"));
    m_hint = new TextLabel(TypeStep::small, Token::text2, this);
    m_hint->setObjectName(QStringLiteral("accountsHint"));
    m_hint->setWordWrap(true);
    m_hint->setContentsMargins(Space::pageMargin, Space::step1, Space::pageMargin, Space::step1 + 2);
    m_label = new TextLabel(TypeStep::small, Token::text, this);
    m_label->setBold(true);
    m_figures = new QWidget(this);
    m_figures->setObjectName(QStringLiteral("accountTotalFigures"));
    m_figures->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    m_row = new WrapLayout(m_figures, Space::step3);
    m_row->setContentsMargins(0, 0, 0, 0);
    auto* strip = new QHBoxLayout;
    strip->setContentsMargins(Space::pageMargin, Space::step2, Space::pageMargin, Space::step2);
    strip->setSpacing(Space::step4);
    strip->addWidget(m_label, 0, Qt::AlignTop);
    strip->addWidget(m_figures, 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(m_hint);
    rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addLayout(strip);
}

void AccountTotalsStrip::present(const std::vector<MoneyText>& totals)
{
    while (auto* item = m_row->takeAt(0)) {
        item->widget()->hide();
        item->widget()->deleteLater();
        delete item;
    }
    for (const auto& total : totals) {
        auto* shown = figure(total, m_figures);
        m_row->addWidget(shown);
        shown->show();
    }
    m_figures->updateGeometry();
}

void AccountTotalsStrip::retranslate()
{
    m_hint->setText(word(accountWords(), "notConverted"));
    m_label->setText(word(accountWords(), "total"));
}
