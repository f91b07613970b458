#pragma once

#include <functional>
#include <optional>
#include <variant>

#include "LedgerService/Http/Reply.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Http/RouteTable.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Answers requests: understands them, opens the one transaction, finds the member behind the token, has the route's
/// work done and turns whatever comes of it into a reply. Called by many threads at once. Never throws: a failure of
/// the database becomes a 5xx reply.
class Dispatcher {
public:
    explicit Dispatcher(Service service) : m_service(std::move(service)) {}

    [[nodiscard]] Reply answer(const RouteMatch& match, Request& request) const;

    /// The part of it that waits for no writer: the reply, or nothing when a command is left to be carried out, which
    /// then has a sound body and was sent by a member.
    [[nodiscard]] std::optional<Reply> prepare(const RouteMatch& match, Request& request, MemberWork& left) const;

    /// The rest: waits for its turn to write.
    [[nodiscard]] Reply carryOut(const RouteMatch& match, const Request& request, const MemberWork& work) const;

private:
    [[nodiscard]] OpenCall opened(Request& request) const;
    static Reply guarded(const RouteMatch& match, const std::function<Reply()>& make);
    [[nodiscard]] Outcome begin(const RouteMatch& match, Request& request, MemberWork& work) const;
    [[nodiscard]] Outcome read(const RouteMatch& match, Request& request, const Reading& reading) const;
    [[nodiscard]] Outcome write(const RouteMatch& match, const Request& request, const MemberWork& work) const;
    [[nodiscard]] Outcome inTransaction(Connection& connection, const RouteMatch& match, const Request& request,
                                        const MemberWork& work) const;
    [[nodiscard]] Reply replyTo(const RouteMatch& match, const Request& request,
                                const std::variant<Reply, SnapshotReply>& made) const;
    [[nodiscard]] Reply withSnapshot(const SnapshotReply& reply) const;

    Service m_service;
};

}
