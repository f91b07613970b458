#pragma once

#include "LedgerService/Http/Reply.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Http/RouteTable.h"
#include "LedgerService/Service.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

/// Answers requests: opens the one transaction, finds the member behind the token, calls the route and turns whatever
/// comes of it into a reply. Called by many threads at once.
class Dispatcher {
public:
    explicit Dispatcher(Service service) : m_service(std::move(service)) {}

    /// Never throws: a failure of the database becomes a 5xx reply.
    [[nodiscard]] Reply answer(const RouteMatch& match, const Request& request) const;

private:
    [[nodiscard]] Outcome outcomeOf(const RouteMatch& match, const Request& request) const;
    [[nodiscard]] Outcome openOutcome(OpenHandler handler, const Request& request) const;
    [[nodiscard]] Outcome memberOutcome(const RouteMatch& match, MemberHandler handler, Transaction::Mode mode,
                                        const Request& request) const;
    [[nodiscard]] Reply withSnapshot(const SnapshotReply& reply) const;

    Service m_service;
};

}
