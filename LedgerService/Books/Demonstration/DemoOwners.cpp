#include "LedgerService/Books/Demonstration/DemoOwners.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerService/Books/Demonstration/DemoWords.h"

namespace LedgerService {

namespace {

constexpr std::string_view owner = DemoIdentity::owner;
constexpr std::string_view admin = DemoIdentity::admin;
constexpr std::string_view partner = DemoIdentity::partner;

std::string lastDayBefore(const std::optional<FinancialSettings>& settings)
{
    constexpr std::string_view promise = "the demonstration begins on a calendar day";
    const auto& start = promised(promised(settings, promise).bookkeepingStartDate, promise);
    return LedgerDay::format(std::chrono::sys_days{promised(LedgerDay::parse(start), promise)} - std::chrono::days{1});
}

CapitalCommand capital(std::string_view action)
{
    CapitalCommand command;
    command.action = action;
    return command;
}

DividendCommand dividend(std::string_view action)
{
    DividendCommand command;
    command.action = action;
    return command;
}

/// The record of the section that stands for the member.
template <class Record>
std::string idOf(const std::vector<Record>& people, const std::string& memberID)
{
    const auto found = std::ranges::find(people, std::optional{memberID}, &Record::memberID);
    require(found != people.end(), "every owner is a member of the demonstration");
    return found->id;
}

}

DemoOwners::DemoOwners(DemoBookkeeper& keeper, const Books& books, DemoIds ids, std::string_view locale)
    : m_keeper(keeper), m_books(books), m_ids(std::move(ids)), m_locale(locale)
{
}

void DemoOwners::plan(const Plan& on)
{
    planCapital(on);
    planFirstDividends(on);
    planLaterDividends(on);
}

/// What is paid out later never exceeds what was paid into the same account before.
void DemoOwners::planCapital(const Plan& on)
{
    on(0, 3, [this] { found(); });
    on(2, 14, [this] {
        contribute(owner, "operating", "IDR", 45'000'000'000);
        contribute(admin, "operating", "IDR", 22'500'000'000);
    });
    on(3, 6, [this] { m_mistake = contribute(admin, "settlement", "USD", 2'000'000); });
    on(3, 10, [this] {
        undoContribution(m_mistake);
        contribute(partner, "settlement", "USD", 2'000'000);
    });
    on(12, 4, [this] {
        share({.owner = 5'500, .admin = 2'750, .partner = 1'750});
        m_keeper.submit(dividend(DividendAction::fillFromOwnership), owner);
    });
}

/// A dividend that is paid, an advance that is set off against a later one, and what is left of it given back in part.
void DemoOwners::planFirstDividends(const Plan& on)
{
    on(6, 18, [this] { m_batch = allocate("IDR", 30'000'000'000); });
    on(6, 24, [this] {
        pay(m_batch, owner, "operating", 18'000'000'000);
        pay(m_batch, admin, "operating", 9'000'000'000);
        pay(m_batch, partner, "operating", 3'000'000'000);
    });
    on(9, 9, [this] {
        auto command = dividend(DividendAction::advance);
        command.participantID = participantID(partner);
        command.currency = "USD";
        command.amountMinor = 600'000;
        command.accountID = m_ids.account("settlement");
        command.note = note("dividendAdvance");
        m_advance = m_keeper.submit(command, owner);
    });
    on(10, 20, [this] {
        m_batch = allocate("USD", 1'500'000);
        auto command = dividend(DividendAction::apply);
        command.batchID = m_batch;
        command.participantID = participantID(partner);
        command.advanceID = m_advance;
        command.amountMinor = 150'000;
        m_keeper.submit(command, owner);
    });
    on(10, 25, [this] {
        pay(m_batch, owner, "settlement", 650'000);
        pay(m_batch, owner, "operating", 250'000);
        pay(m_batch, admin, "settlement", 450'000);
        auto command = dividend(DividendAction::returnAdvance);
        command.advanceID = m_advance;
        command.currency = "USD";
        command.amountMinor = 300'000;
        command.accountID = m_ids.account("settlement");
        command.note = note("dividendBack");
        m_keeper.submit(command, owner);
    });
}

/// One that was dropped, a payment sent wrongly, and one of which most still has to be paid.
void DemoOwners::planLaterDividends(const Plan& on)
{
    on(15, 15, [this] { m_batch = allocate("IDR", 9'000'000'000); });
    on(15, 22, [this] {
        auto command = dividend(DividendAction::cancelBatch);
        command.batchID = m_batch;
        command.note = note("dividendDropped");
        m_keeper.submit(command, owner);
    });
    on(18, 18, [this] { m_batch = allocate("IDR", 18'000'000'000); });
    on(18, 23, [this] {
        pay(m_batch, owner, "operating", 9'900'000'000);
        m_mistake = pay(m_batch, admin, "operating", 4'950'000'000);
        pay(m_batch, partner, "operating", 3'150'000'000);
    });
    on(18, 26, [this] {
        undoMovement(m_mistake);
        pay(m_batch, admin, "operating", 4'950'000'000);
    });
    on(22, 18, [this] { m_batch = allocate("IDR", 25'000'000'100); });
    on(22, 24, [this] { pay(m_batch, owner, "operating", 13'750'000'055); });
}

void DemoOwners::found()
{
    for (const auto profile : {owner, admin, partner}) {
        auto command = capital(CapitalAction::setParticipant);
        command.name = DemoWords::names().text(profile, m_locale);
        command.memberID = m_ids.member(profile);
        m_keeper.submit(command, owner);
    }
    auto history = capital(CapitalAction::setBaseline);
    history.currency = "USD";
    history.throughDate = lastDayBefore(m_books.settings);
    history.entries = {
        {ownerID(owner), {}, 18'000'000}, {ownerID(admin), {}, 9'000'000}, {ownerID(partner), {}, 3'000'000}};
    m_keeper.submit(history, owner);
    share({.owner = 6'000, .admin = 3'000, .partner = 1'000});
    m_keeper.submit(dividend(DividendAction::fillFromOwnership), owner);
}

void DemoOwners::share(Shares shares)
{
    auto command = capital(CapitalAction::setOwnership);
    command.ownership = {
        {ownerID(owner), {}, shares.owner}, {ownerID(admin), {}, shares.admin}, {ownerID(partner), {}, shares.partner}};
    m_keeper.submit(command, owner);
}

std::string DemoOwners::contribute(std::string_view profile, std::string_view account, std::string_view currency,
                                   std::int64_t amountMinor)
{
    auto command = capital(CapitalAction::contribute);
    command.participantID = ownerID(profile);
    command.currency = currency;
    command.amountMinor = amountMinor;
    command.accountID = m_ids.account(account);
    command.note = note("contribution");
    return m_keeper.submit(command, admin);
}

void DemoOwners::undoContribution(const std::string& contributionID)
{
    auto command = capital(CapitalAction::reverse);
    command.contributionID = contributionID;
    command.note = note("wrongOwner");
    m_keeper.submit(command, admin);
}

std::string DemoOwners::allocate(std::string_view currency, std::int64_t amountMinor)
{
    const auto state = DividendHistory::stateAfter(m_books.dividendChanges);
    const std::chrono::year_month_day today{m_keeper.today()};
    const auto before = today.year() / today.month() - std::chrono::months{3};
    auto command = dividend(DividendAction::allocate);
    command.period =
        fmt::format("{} Q{}", static_cast<int>(before.year()), (static_cast<unsigned>(before.month()) + 2) / 3);
    command.currency = currency;
    command.amountMinor = amountMinor;
    auto& shares = command.shares.emplace();
    for (const auto& each : state.participants)
        shares.push_back({each.id, each.ratioBps});
    return m_keeper.submit(command, owner);
}

std::string DemoOwners::pay(const std::string& batchID, std::string_view profile, std::string_view account,
                            std::int64_t amountMinor)
{
    const auto state = DividendHistory::stateAfter(m_books.dividendChanges);
    auto command = dividend(DividendAction::pay);
    command.batchID = batchID;
    command.participantID = participantID(profile);
    command.currency = std::ranges::find(state.batches, batchID, &DividendBatch::id)->currency;
    command.amountMinor = amountMinor;
    command.accountID = m_ids.account(account);
    command.note = note("dividendPaid");
    return m_keeper.submit(command, owner);
}

void DemoOwners::undoMovement(const std::string& movementID)
{
    auto command = dividend(DividendAction::reverse);
    command.movementID = movementID;
    command.note = note("dividendWrong");
    m_keeper.submit(command, owner);
}

std::string DemoOwners::ownerID(std::string_view profile) const
{
    return idOf(CapitalHistory::stateAfter(m_books.capitalChanges).participants, m_ids.member(profile));
}

std::string DemoOwners::participantID(std::string_view profile) const
{
    return idOf(DividendHistory::stateAfter(m_books.dividendChanges).participants, m_ids.member(profile));
}

std::string DemoOwners::note(std::string_view key) const
{
    const auto month = static_cast<unsigned>(std::chrono::year_month_day{m_keeper.today()}.month());
    return DemoWords::notes().filled(key, m_locale, {DemoWords::names().text(fmt::format("month{}", month), m_locale)});
}

}
