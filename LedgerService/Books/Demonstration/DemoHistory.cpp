#include "LedgerService/Books/Demonstration/DemoHistory.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <utility>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerService/Books/Demonstration/DemoBookkeeper.h"
#include "LedgerService/Books/Demonstration/DemoOwners.h"
#include "LedgerService/Books/Demonstration/DemoPlan.h"

namespace LedgerService {

namespace {

using std::chrono::days;
using std::chrono::months;
using std::chrono::sys_days;
using std::chrono::year_month;

constexpr int monthsBack = 24;

year_month firstMonth(sys_days lastDay)
{
    const std::chrono::year_month_day last{lastDay};
    return last.year() / last.month() - months{monthsBack};
}

/// The day itself, or the Monday after a weekend; the Friday before it where the Monday is in another month, whose
/// salaries and takings are its own.
sys_days businessDay(sys_days day)
{
    const std::chrono::weekday weekday{day};
    if (weekday != std::chrono::Saturday && weekday != std::chrono::Sunday)
        return day;
    const auto friday = day - (weekday - std::chrono::Friday);
    const auto monday = friday + days{3};
    const auto monthOf = [](sys_days each) { return std::chrono::year_month_day{each}.month(); };
    return monthOf(monday) == monthOf(day) ? monday : friday;
}

/// What the routine of this note is, to be done on another occasion.
const DemoRoutine& routineOf(std::string_view note)
{
    const auto routines = DemoPlan::routines();
    const auto found = std::ranges::find(routines, note, &DemoRoutine::note);
    require(found != routines.end(), "the plan knows the routine");
    return *found;
}

/// All that happens, in the order of time.
class Schedule {
public:
    Schedule(Books& books, const DemoIds& ids, std::string_view locale, sys_days lastDay)
        : m_keeper(books, ids, locale, lastDay), m_owners(m_keeper, books, ids, locale), m_start(firstMonth(lastDay)),
          m_lastDay(lastDay)
    {
    }

    void run()
    {
        m_keeper.turnTo(m_start / std::chrono::day{1});
        for (const auto& opening : DemoPlan::openings())
            m_keeper.open(opening);
        for (int month = 0; month <= monthsBack; ++month)
            plan(month);
        m_owners.plan(
            [this](int month, int day, std::function<void()> happen) { on(dayOf(month, day), std::move(happen)); });
        for (const auto& [day, happen] : m_steps) {
            m_keeper.turnTo(day);
            happen();
        }
    }

private:
    /// Whether there is still time on that day.
    bool on(sys_days day, std::function<void()> happen)
    {
        if (day > m_lastDay)
            return false;
        m_steps.emplace(day, std::move(happen));
        return true;
    }

    [[nodiscard]] sys_days dayOf(int month, int number) const
    {
        return businessDay(sys_days{(m_start + months{month}) / std::chrono::day{1}} + days{number - 1});
    }

    void plan(int month)
    {
        for (const auto& routine : DemoPlan::routines()) {
            if (month % routine.everyMonths == routine.offsetMonths)
                on(dayOf(month, routine.day), [this, &routine] { doRoutine(routine); });
        }
        if (month % 2 == 0 && month > 0)
            on(dayOf(month, 20), [this] { refundPartly(); });
        if (month % 9 == 7)
            on(dayOf(month, 22), [this] { refundByReference(); });
        if (month % 5 == 3)
            mistype(dayOf(month, 11), routineOf("packaging"));
        if (month % 8 == 4)
            misplace(dayOf(month, 24), routineOf("retail"));
        if (month % 12 == 6)
            postTwice(dayOf(month, 8), routineOf("topUp"));
    }

    void doRoutine(const DemoRoutine& routine)
    {
        const auto input = m_keeper.inputOf(routine);
        if (input.amountMinor == 0)
            return;
        auto id = m_keeper.post(input, routine.recorder);
        if (routine.note == "wholesale")
            m_refundable = Sale{std::move(id), input.amountMinor, input.note};
    }

    void refundPartly()
    {
        const auto sale = std::exchange(m_refundable, std::nullopt);
        if (!sale)
            return;
        const auto amount = m_keeper.between(sale->amountMinor / 34, sale->amountMinor / 18, 2'500'000);
        auto input = m_keeper.refundOf(amount, "damaged", sale->note);
        input.originalTransactionID = sale->entryID;
        m_keeper.post(input, "finance");
    }

    void refundByReference()
    {
        auto input = m_keeper.refundOf(m_keeper.between(150'000'000, 320'000'000, 500'000), "overpaid");
        input.externalReference = "TRF " + std::to_string(m_keeper.between(4'000'000, 9'000'000, 1));
        m_keeper.post(input, "finance");
    }

    /// One nought too many, put right on the next business day.
    void mistype(sys_days day, const DemoRoutine& routine)
    {
        const auto fixed = on(businessDay(day + days{1}), [this, &routine] {
            m_keeper.undo(m_mistake, "wrongAmount", routine.recorder);
            m_keeper.post(m_correct, routine.recorder);
        });
        if (!fixed)
            return;
        on(day, [this, &routine] {
            m_correct = m_keeper.inputOf(routine);
            auto wrong = m_correct;
            wrong.amountMinor *= 10;
            m_mistake = m_keeper.post(wrong, routine.recorder);
        });
    }

    void misplace(sys_days day, const DemoRoutine& routine)
    {
        on(day, [this, &routine] {
            const auto correct = m_keeper.inputOf(routine);
            auto wrong = correct;
            wrong.targetAccountID = m_keeper.inputOf(routineOf("wholesale")).targetAccountID;
            m_keeper.undo(m_keeper.post(wrong, "finance"), "wrongAccount", "finance");
            m_keeper.post(correct, "finance");
        });
    }

    void postTwice(sys_days day, const DemoRoutine& routine)
    {
        on(day, [this, &routine] {
            const auto input = m_keeper.inputOf(routine);
            m_keeper.post(input, routine.recorder);
            m_keeper.undo(m_keeper.post(input, routine.recorder), "postedTwice", routine.recorder);
        });
    }

    struct Sale {
        std::string entryID;
        std::int64_t amountMinor = 0;
        std::string note;
    };

    DemoBookkeeper m_keeper;
    DemoOwners m_owners;
    year_month m_start;
    sys_days m_lastDay;
    std::multimap<sys_days, std::function<void()>> m_steps;
    std::optional<Sale> m_refundable; // the latest sale that nothing was paid back of
    std::string m_mistake;            // an entry that waits for its reversal
    TransactionInput m_correct;       // what it should have been
};

sys_days dayOf(std::string_view day)
{
    return sys_days{promised(LedgerDay::parse(day), "the demonstration ends on a calendar day")};
}

}

std::string DemoHistory::firstDay(std::string_view lastDay)
{
    return LedgerDay::format(firstMonth(dayOf(lastDay)) / std::chrono::day{1});
}

void DemoHistory::write(Books& books, const DemoIds& ids, std::string_view locale, std::string_view lastDay)
{
    Schedule{books, ids, locale, dayOf(lastDay)}.run();
}

}
