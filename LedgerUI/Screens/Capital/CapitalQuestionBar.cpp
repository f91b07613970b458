#include "LedgerUI/Screens/Capital/CapitalQuestionBar.h"

#include <algorithm>

#include <QHBoxLayout>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerUI/Components/Buttons/SegmentedControl.h"
#include "LedgerUI/Components/Period/PeriodNavigator.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalPlace.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Theme/Space.h"

CapitalQuestionBar::CapitalQuestionBar(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    m_period = new PeriodNavigator(this);
    m_currency = new SegmentedControl(this);
    m_currency->setObjectName(QStringLiteral("capitalCurrency"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(Space::step2);
    row->addWidget(m_period);
    row->addWidget(m_currency);
    connect(m_period, &PeriodNavigator::periodChosen, this, &CapitalQuestionBar::choosePeriod);
    connect(m_currency, &SegmentedControl::chosenByUser, this,
            [this](int at) { chooseCurrency(m_currencies[static_cast<std::size_t>(at)]); });
}

void CapitalQuestionBar::open()
{
    if (const auto today = LedgerDay::parse(m_store.today()); today && !m_isOpened) {
        m_question.period = Period::containing(Period::Span::year, *today);
        m_isOpened = true;
    }
}

void CapitalQuestionBar::presentPeriod()
{
    const auto today = LedgerDay::parse(m_store.today());
    m_period->present(m_question.period, CapitalPlaces::countsOf(*m_store.snapshot()),
                      today.value_or(std::chrono::year_month_day{}));
}

void CapitalQuestionBar::presentCurrencies()
{
    auto currencies = CapitalCurrencies::of(*m_store.snapshot());
    m_question.currency = CapitalCurrencies::chosen(currencies, m_question.currency);
    m_currency->setName(word(capitalWords(), "currency"));
    if (currencies != m_currencies) {
        m_currencies = std::move(currencies);
        m_currency->clear();
        for (std::size_t at = 0; at < m_currencies.size(); ++at)
            m_currency->addSegment(static_cast<int>(at), QString::fromStdString(m_currencies[at]));
    }
    const auto at = std::ranges::find(m_currencies, m_question.currency);
    if (at != m_currencies.end())
        m_currency->choose(static_cast<int>(at - m_currencies.begin()));
    m_currency->setVisible(m_currencies.size() > 1);
}

void CapitalQuestionBar::chooseCurrency(const std::string& currency)
{
    if (currency == m_question.currency)
        return;
    m_question.currency = currency;
    Q_EMIT currencyChosen();
}

void CapitalQuestionBar::choosePeriod(const Period& period)
{
    m_question.period = period;
    Q_EMIT periodChosen();
}

void CapitalQuestionBar::turnTo(const std::string& currency, const std::string& date)
{
    m_question.currency = currency;
    if (const auto day = LedgerDay::parse(date); day && !m_question.period.contains(date))
        m_question.period = Period::containing(Period::Span::year, *day);
    presentCurrencies();
}

void CapitalQuestionBar::goBack()
{
    m_period->goBack();
}

void CapitalQuestionBar::goForward()
{
    m_period->goForward();
}
