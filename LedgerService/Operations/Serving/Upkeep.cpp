#include "LedgerService/Operations/Serving/Upkeep.h"

#include <chrono>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerService/Audit/AuditSeals.h"
#include "LedgerService/Identity/Sessions/DemoCompanies.h"
#include "LedgerService/Log.h"
#include "LedgerService/Operations/Archives/CompanyArrival.h"
#include "LedgerService/Receipts/LooseReceipts.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

constexpr std::chrono::minutes pause{10};

}

Upkeep::Upkeep(std::string files, std::unique_ptr<Database> database)
    : m_files(std::move(files)), m_database(std::move(database)),
      m_thread([this](const std::stop_token& stopping) { run(stopping); })
{
}

Upkeep::~Upkeep() = default;

void Upkeep::run(const std::stop_token& stopping)
{
    while (!stopping.stop_requested()) {
        for (const auto work :
             {&Upkeep::sealAuditTrail, &Upkeep::sweepArrivals, &Upkeep::sweepDemonstrations, &Upkeep::sweepReceipts})
            attempt(work);
        std::unique_lock guard{m_guard};
        m_changed.wait_for(guard, stopping, pause, [] { return false; });
    }
}

void Upkeep::sealAuditTrail()
{
    const auto loan = m_database->borrow();
    const auto now = LedgerDay::stamp(std::chrono::system_clock::now());
    const bool isSealed = Anew::onConflict([&] {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        return AuditSeals{m_files}.sealDayBefore(*loan, now);
    });
    if (isSealed)
        Log::note("sealed the audit trail of the day before");
}

/// What keeps the one from being done does not keep the others.
void Upkeep::attempt(void (Upkeep::*work)())
{
    try {
        (this->*work)();
    } catch (const std::exception& failure) {
        Log::failure("(upkeep)", DatabaseFailure::words(failure));
    }
}

void Upkeep::sweepArrivals()
{
    if (const auto swept = CompanyArrival::sweepAbandoned(*m_database); swept > 0)
        Log::note(fmt::format("swept {} companies whose import has ended in the middle", swept));
}

void Upkeep::sweepDemonstrations()
{
    if (const auto swept = DemoCompanies::sweep(*m_database, std::chrono::system_clock::now()); swept > 0)
        Log::note(fmt::format("swept {} demonstrations whose visit is over", swept));
}

void Upkeep::sweepReceipts()
{
    const auto swept = LooseReceipts::sweep(*m_database, ReceiptFolder{m_files}, std::chrono::system_clock::now());
    if (swept.receipts + swept.files > 0)
        Log::note(fmt::format("swept {} loose receipts and {} files", swept.receipts, swept.files));
}

}
