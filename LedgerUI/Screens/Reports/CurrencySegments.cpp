#include "LedgerUI/Screens/Reports/CurrencySegments.h"

#include <algorithm>

#include <QHBoxLayout>

#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

CurrencySegments::CurrencySegments(const QString& name, QWidget* parent) : QWidget{parent}
{
    m_control = new SegmentedControl(this);
    m_control->setObjectName(name);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_control);
    connect(m_control, &SegmentedControl::chosenByUser, this,
            [this](int at) { Q_EMIT currencyChosen(QString::fromStdString(m_codes[static_cast<std::size_t>(at)])); });
}

void CurrencySegments::present(std::vector<std::string> codes, const std::string& chosen)
{
    m_control->setName(word(reportWords(), "currency"));
    if (codes != m_codes) {
        m_codes = std::move(codes);
        m_control->clear();
        for (std::size_t at = 0; at < m_codes.size(); ++at)
            m_control->addSegment(static_cast<int>(at), QString::fromStdString(m_codes[at]));
    }
    m_control->choose(static_cast<int>(std::ranges::find(m_codes, chosen) - m_codes.begin()));
}
