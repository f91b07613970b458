#pragma once

#include <chrono>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

#include "LedgerService/Books/Books.h"
#include "LedgerService/Books/Demonstration/DemoIds.h"
#include "LedgerService/Books/Demonstration/DemoPlan.h"

namespace LedgerService {

/// Turns the plan into recorded entries: amounts that vary, notes in the language of the demonstration, and the hours
/// of a working day. The same books and days give the same entries.
class DemoBookkeeper {
public:
    DemoBookkeeper(Books& books, DemoIds ids, std::string_view locale, std::chrono::sys_days lastDay);

    /// Goes on to a later day, on which all further entries are booked.
    void turnTo(std::chrono::sys_days day);

    void open(const DemoPlan::Opening& opening);

    /// The amount is zero when there is nothing to move.
    [[nodiscard]] TransactionInput inputOf(const DemoRoutine& routine);

    /// A refund from the refund account, in rupiah; `note` is a key, `saleNote` what was noted of the sale.
    [[nodiscard]] TransactionInput refundOf(std::int64_t amountMinor, std::string_view note,
                                            std::string_view saleNote = {});

    /// Records and gives the id of the entry. The plan never breaks a rule of the books.
    std::string post(const TransactionInput& input, std::string_view recorder);

    /// `reason` is a key of a note.
    void undo(std::string_view entryID, std::string_view reason, std::string_view recorder);

    /// Changes capital or dividends, today and on the section as it stands, and gives the id of what is added.
    std::string submit(CapitalCommand command, std::string_view recorder);
    std::string submit(DividendCommand command, std::string_view recorder);

    [[nodiscard]] std::chrono::sys_days today() const { return m_day; }

    /// Evenly between both, rounded to `step`.
    [[nodiscard]] std::int64_t between(std::int64_t low, std::int64_t high, std::int64_t step);

private:
    [[nodiscard]] std::int64_t amountOf(const DemoRoutine& routine);
    [[nodiscard]] std::string noteOf(std::string_view key);
    template <class Command>
    std::string carryOut(Command command, std::size_t revision, std::string_view recorder);
    [[nodiscard]] BookAct act(std::string_view profile);

    Books& m_books;
    DemoIds m_ids;
    std::string_view m_locale;
    std::chrono::sys_days m_lastDay;
    std::chrono::sys_days m_day;
    int m_actsToday = 0;
    int m_entries = 0;
    int m_records = 0;   // of capital and dividends
    int m_documents = 0; // of this month: invoices, orders and the like
    std::mt19937 m_chance{20'240'229};
};

}
