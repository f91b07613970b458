#include "LedgerUI/Components/Fields/CurrencyPicker.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QStyleOptionComboBox>
#include <QStylePainter>

#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Theme/Space.h"
#include "LedgerUI/Theme/Theme.h"
#include "LedgerUI/Theme/TypeScale.h"

namespace {

constexpr int pickerWidth = 184; // the longest name of a currency fits
constexpr int arrowWidth = 28;

}

CurrencyPicker::CurrencyPicker(QWidget* parent) : QComboBox{parent}
{
    setProperty("extent", QStringLiteral("large"));
    setFixedWidth(pickerWidth);
    dressComboBox(*this);
    connect(this, &QComboBox::activated, this,
            [this](int index) { Q_EMIT currencyChosen(m_rows[static_cast<std::size_t>(index)].code); });
}

void CurrencyPicker::present(const std::vector<CurrencyChoice>& rows, const std::string& chosen, const QString& prompt)
{
    m_prompt = prompt;
    if (rows != m_rows) {
        m_rows = rows;
        clear();
        for (const auto& row : m_rows)
            addItem(QStringLiteral("%1  %2").arg(qString(row.code), row.name));
        view()->setMinimumWidth(view()->sizeHintForColumn(0) + Space::step8);
    }
    const auto found = std::ranges::find(m_rows, chosen, &CurrencyChoice::code);
    setCurrentIndex(found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin()));
}

void CurrencyPicker::paintEvent(QPaintEvent* /*event*/)
{
    QStylePainter painter{this};
    QStyleOptionComboBox option;
    initStyleOption(&option);
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    const auto& theme = Theme::current();
    auto area = rect().adjusted(Space::step3, 0, -arrowWidth, 0);
    if (currentIndex() < 0) {
        painter.setPen(theme.color(Token::text3));
        painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft, m_prompt);
        return;
    }
    const auto& row = m_rows[static_cast<std::size_t>(currentIndex())];
    painter.setFont(TypeScale::bold(TypeStep::body));
    painter.setPen(theme.color(isEnabled() ? Token::text : Token::text2));
    const auto code = qString(row.code);
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft, code);
    area.setLeft(area.left() + painter.fontMetrics().horizontalAdvance(code) + Space::step1);
    painter.setFont(TypeScale::font(TypeStep::small));
    if (painter.fontMetrics().horizontalAdvance(row.name) > area.width())
        return;
    painter.setPen(theme.color(Token::text2));
    painter.drawText(area, Qt::AlignVCenter | Qt::AlignLeft, row.name);
}
