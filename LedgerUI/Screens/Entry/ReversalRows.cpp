#include "LedgerUI/Screens/Entry/ReversalRows.h"

#include <QGridLayout>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/ElidedLabel.h"
#include "LedgerUI/Components/Text/GlyphLabel.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Space.h"

namespace {

enum Column { dayColumn, glyphColumn, titleColumn, currencyColumn, amountColumn, columnCount };

constexpr int dayWidth = 76;

}

ReversalRows::ReversalRows(QWidget* parent) : QFrame{parent}
{
    setProperty("card", QStringLiteral("true"));
    m_grid = new QGridLayout(this);
    m_grid->setContentsMargins(Space::step4, Space::step2, Space::step4, Space::step2);
    m_grid->setHorizontalSpacing(Space::step2);
    m_grid->setVerticalSpacing(Space::step1 + 2);
    m_grid->setColumnMinimumWidth(dayColumn, dayWidth);
    m_grid->setColumnStretch(titleColumn, 1);
}

void ReversalRows::present(const std::vector<ReversalRow>& rows, const ThemeColor& original, const ThemeColor& opposite)
{
    if (rows == m_rows)
        return;
    m_rows = rows;
    while (auto* item = m_grid->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    int at = 0;
    for (const auto& row : m_rows) {
        if (row.isOpposite && !row.day.isEmpty())
            m_grid->addWidget(new Line(Qt::Horizontal, this), at++, 0, 1, columnCount);
        addRow(at++, row, row.isOpposite ? opposite : original);
    }
}

void ReversalRows::addRow(int at, const ReversalRow& row, const ThemeColor& kindColor)
{
    auto* day = new TextLabel(TypeStep::body, Token::text2, this);
    day->setText(row.day);
    m_grid->addWidget(day, at, dayColumn);
    if (!row.glyph.isEmpty())
        m_grid->addWidget(new GlyphLabel(row.glyph, kindColor, Space::icon, this), at, glyphColumn);
    auto* title = new ElidedLabel(TypeStep::body, Token::text, Qt::ElideRight, this);
    title->setText(listed({row.title, row.account}, InterfaceLanguage::tag()));
    m_grid->addWidget(title, at, titleColumn);
    auto* currency = new TextLabel(TypeStep::micro, Token::text3, this);
    currency->setText(row.currency);
    m_grid->addWidget(currency, at, currencyColumn);
    auto* amount = new TextLabel(TypeStep::body, Token::text, this);
    amount->setText(row.amount);
    amount->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_grid->addWidget(amount, at, amountColumn);
}
