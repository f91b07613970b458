#include <array>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerService/Http/Routes/RouteFamilies.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Schema/Migrations.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// The process runs and takes requests; nothing is said of the database.
Outcome live(const OpenCall&)
{
    return okReply();
}

/// The database answers, and its schema is this program's.
Outcome ready(const OpenCall& call)
{
    const auto loan = call.service.database.borrow();
    const auto version = Anew::onConflict([&] {
        const Transaction transaction{*loan, Transaction::Mode::reading};
        return Migrations::version(*loan);
    });
    if (!version || *version != Migrations::newest())
        return std::unexpected(Refusal::of(ServiceCode::serviceUnavailable, "The database is not this program's."));
    return okReply();
}

constexpr std::array routes{
    Route{"GET", "/health/ready", ready},
    Route{"GET", "/health/live", live, Lane::immediate},
};

}

std::span<const Route> RouteFamilies::health()
{
    return routes;
}

}
