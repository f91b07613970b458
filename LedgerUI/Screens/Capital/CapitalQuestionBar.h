#pragma once

#include <string>
#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Records/CapitalQuestion.h"

class LedgerStore;
class PeriodNavigator;
class SegmentedControl;

/// What the page of capital and dividends is asked: a period, and one of the currencies that the company keeps.
class CapitalQuestionBar final : public QWidget {
    Q_OBJECT
public:
    explicit CapitalQuestionBar(LedgerStore& store, QWidget* parent = nullptr);

    [[nodiscard]] const CapitalQuestion& question() const { return m_question; }
    /// This year, the first time.
    void open();
    void presentPeriod();
    void presentCurrencies();

    void chooseCurrency(const std::string& currency);
    /// The currency of a record, and a year that holds it; no day where none is to be looked for.
    void turnTo(const std::string& currency, const std::string& date);
    void goBack();
    void goForward();

Q_SIGNALS:
    void periodChosen();
    void currencyChosen();

private:
    void choosePeriod(const Period& period);

    LedgerStore& m_store;
    CapitalQuestion m_question;
    std::vector<std::string> m_currencies;
    bool m_isOpened = false; // the period was set once
    PeriodNavigator* m_period = nullptr;
    SegmentedControl* m_currency = nullptr;
};
