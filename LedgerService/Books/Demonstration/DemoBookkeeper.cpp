#include "LedgerService/Books/Demonstration/DemoBookkeeper.h"

#include <algorithm>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Access/LedgerEntryAccess.h"
#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Money/CurrencyInfo.h"
#include "LedgerService/Books/Demonstration/DemoWords.h"

namespace LedgerService {

namespace {

constexpr int tradingPartners = 8;

std::int64_t unitOf(std::string_view currency)
{
    std::int64_t unit = 1;
    for (int digit = 0; digit < CurrencyInfo::scaleOf(currency); ++digit)
        unit *= 10;
    return unit;
}

/// What arrives for an amount sent, to the minor unit below.
std::int64_t exchanged(std::int64_t sentMinor, const DemoRoutine& routine)
{
    return sentMinor * routine.rateMicro / 1'000'000 * unitOf(routine.received) / unitOf(routine.currency);
}

}

DemoBookkeeper::DemoBookkeeper(Books& books, DemoIds ids, std::string_view locale, std::chrono::sys_days lastDay)
    : m_books(books), m_ids(std::move(ids)), m_locale(locale), m_lastDay(lastDay)
{
}

void DemoBookkeeper::turnTo(std::chrono::sys_days day)
{
    const std::chrono::year_month_day before{m_day};
    const std::chrono::year_month_day now{day};
    if (m_day != day)
        m_actsToday = 0;
    if (before.month() != now.month())
        m_documents = 0;
    m_day = day;
}

void DemoBookkeeper::open(const DemoPlan::Opening& opening)
{
    TransactionInput input;
    input.kind = EntryKind::opening;
    input.note = noteOf("opening");
    input.targetAccountID = m_ids.account(opening.account);
    input.currency = opening.currency;
    input.amountMinor = opening.amountMinor;
    post(input, "owner");
}

TransactionInput DemoBookkeeper::inputOf(const DemoRoutine& routine)
{
    TransactionInput input;
    input.kind = routine.kind;
    input.note = noteOf(routine.note);
    input.currency = routine.currency;
    input.amountMinor = amountOf(routine);
    if (!routine.category.empty())
        input.categoryID = m_ids.category(routine.category);
    if (!routine.source.empty())
        input.sourceAccountID = m_ids.account(routine.source);
    if (!routine.target.empty())
        input.targetAccountID = m_ids.account(routine.target);
    if (routine.kind == EntryKind::exchange) {
        auto market = routine;
        market.rateMicro = between(routine.rateMicro / 1000 * 988, routine.rateMicro / 1000 * 1012, 1);
        input.targetCurrency = routine.received;
        input.targetAmountMinor = exchanged(input.amountMinor, market);
    }
    if (routine.kind == EntryKind::transfer) {
        const auto* const source = m_books.account(m_ids.account(routine.source));
        input.transferPurpose =
            LedgerEntryAccess::transferPurpose(*source, *m_books.account(m_ids.account(routine.target)));
    }
    return input;
}

std::int64_t DemoBookkeeper::amountOf(const DemoRoutine& routine)
{
    const auto unit = unitOf(routine.currency);
    if (routine.keep > 0) {
        const auto held = m_books.account(m_ids.account(routine.source))->balance(routine.currency);
        return std::max<std::int64_t>(0, (held - routine.keep * unit) / routine.roundTo * routine.roundTo);
    }
    const auto month = std::chrono::year_month_day{m_day}.month();
    const auto usual = routine.amount * unit / 100 * DemoPlan::seasonPercentOf(routine, month);
    const auto spread = usual / 100 * routine.spreadPercent;
    return between(usual - spread, usual + spread, routine.roundTo);
}

TransactionInput DemoBookkeeper::refundOf(std::int64_t amountMinor, std::string_view note, std::string_view saleNote)
{
    TransactionInput input;
    input.kind = EntryKind::refund;
    input.note = DemoWords::notes().filled(note, m_locale, {saleNote});
    input.sourceAccountID = m_ids.account("refunds");
    input.currency = "IDR";
    input.amountMinor = amountMinor;
    return input;
}

std::string DemoBookkeeper::post(const TransactionInput& input, std::string_view recorder)
{
    auto dated = input;
    dated.date = LedgerDay::format(m_day);
    const auto by = act(recorder);
    dated.idempotencyKey = by.entryID;
    const auto recorded = m_books.record(dated, by);
    require(recorded.has_value(), recorded ? "" : recorded.error().message);
    return by.entryID;
}

void DemoBookkeeper::undo(std::string_view entryID, std::string_view reason, std::string_view recorder)
{
    const auto by = act(recorder);
    const auto reversed = m_books.reverse(entryID, {noteOf(reason), by.entryID, by.today}, by);
    require(reversed.has_value(), reversed ? "" : reversed.error().message);
}

std::string DemoBookkeeper::submit(CapitalCommand command, std::string_view recorder)
{
    return carryOut(std::move(command), m_books.capitalChanges.size(), recorder);
}

std::string DemoBookkeeper::submit(DividendCommand command, std::string_view recorder)
{
    return carryOut(std::move(command), m_books.dividendChanges.size(), recorder);
}

template <class Command>
std::string DemoBookkeeper::carryOut(Command command, std::size_t revision, std::string_view recorder)
{
    auto by = act(recorder);
    by.recordID = m_ids.record(++m_records);
    command.expectedRevision = static_cast<int>(revision);
    command.date = by.today;
    command.idempotencyKey = by.recordID;
    const auto done = m_books.submit(command, by);
    require(done.has_value(), done ? "" : done.error().message);
    return by.recordID;
}

std::int64_t DemoBookkeeper::between(std::int64_t low, std::int64_t high, std::int64_t step)
{
    const auto steps = (high - low) / step;
    return low / step * step + step * static_cast<std::int64_t>(m_chance() % static_cast<std::uint64_t>(steps + 1));
}

std::string DemoBookkeeper::noteOf(std::string_view key)
{
    const std::chrono::year_month_day day{m_day};
    const auto& names = DemoWords::names();
    const auto month = names.text(fmt::format("month{}", static_cast<unsigned>(day.month())), m_locale);
    if (DemoWords::notes().text(key, m_locale).contains("%2"))
        m_documents += static_cast<int>(between(1, 7, 1));
    const auto document = fmt::format("{:02}{:02}-{:03}", static_cast<int>(day.year()) % 100,
                                      static_cast<unsigned>(day.month()), m_documents);
    const auto partner = names.text(fmt::format("partner{}", m_chance() % tradingPartners), m_locale);
    return DemoWords::notes().filled(key, m_locale, {month, document, partner});
}

BookAct DemoBookkeeper::act(std::string_view profile)
{
    // Entries of the last day, which may be today, are stamped right after midnight so that none lies in the future.
    using namespace std::chrono;
    const auto sinceMidnight = m_day == m_lastDay
                                   ? milliseconds{seconds{m_actsToday}}
                                   : milliseconds{minutes{62 + 37 * std::min(m_actsToday, 12) + m_entries * 13 % 31}} +
                                         seconds{m_entries % 60} + milliseconds{m_entries * 7 % 1000};
    ++m_actsToday;
    return {m_ids.entry(++m_entries), m_ids.member(profile), LedgerDay::format(m_day),
            LedgerDay::stamp(m_day + sinceMidnight)};
}

}
