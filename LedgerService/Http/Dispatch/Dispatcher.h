#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "LedgerService/Http/Reply.h"
#include "LedgerService/Http/Request.h"
#include "LedgerService/Http/RouteTable.h"
#include "LedgerService/Identity/Sessions/KnownTokens.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// A member's command on its way, and what becomes of it.
struct Command {
    RouteMatch match;
    Request request;
    MemberWork work = {}; // once the command was found sound
    Outcome outcome = {}; // once it was carried out
};

/// Answers requests: understands them, opens the one transaction, finds the member behind the token, has the route's
/// work done and turns whatever comes of it into a reply. Called by many threads at once. Never throws: a failure of
/// the database becomes a 5xx reply.
class Dispatcher {
public:
    explicit Dispatcher(Service service) : m_service(std::move(service)) {}

    /// Who asks, as far as it is known before the token is looked at: requests of one person wait for each other.
    [[nodiscard]] std::string personOf(const Request& request) const;

    /// Whether the request's token was in force lately.
    [[nodiscard]] bool knows(const Request& request) const;

    /// Why the request's token is none to work for. Asks the database.
    [[nodiscard]] std::optional<Refusal> whyNotSignedIn(const RouteMatch& match, const Request& request) const;

    /// The reply to anything but a command.
    [[nodiscard]] Reply answer(const RouteMatch& match, Request& request) const;

    /// Whether preparing the command waits for nothing: it stores no file, and its token was in force lately.
    [[nodiscard]] bool preparesAtOnce(const Command& command) const;

    /// Makes a command ready to be carried out, or gives the reply that refuses it. Waits for no writer.
    [[nodiscard]] std::optional<Reply> prepare(Command& command) const;

    /// Carries out a group of commands: `first` and those that `next` gives until it gives none. Each is done or undone
    /// by itself, all are kept together. When this returns each has its outcome, and what was accepted is durable.
    void carryOut(Command& first, const std::function<Command*()>& next) const;

    /// Whether the reply to the command is made from a snapshot, which takes a while.
    [[nodiscard]] static bool repliesWithSnapshot(const Command& command);

    /// The reply to a command that was carried out.
    [[nodiscard]] Reply replyTo(const Command& command) const;

private:
    [[nodiscard]] Service servicing(const Request& request) const;
    [[nodiscard]] OpenCall opened(Request& request) const;
    [[nodiscard]] Outcome begin(const RouteMatch& match, Request& request) const;
    [[nodiscard]] std::optional<Refusal> whyNotCaller(const Request& request) const;
    bool carryOutTogether(Connection& connection, std::vector<Command*>& group, const std::function<Command*()>& next,
                          bool last) const;
    [[nodiscard]] Outcome carryOut(Connection& connection, const Command& command) const;
    [[nodiscard]] Outcome carryOutAsPart(Connection& connection, const Command& command) const;
    [[nodiscard]] Outcome inTransaction(Connection& connection, const RouteMatch& match, const Request& request,
                                        const MemberWork& work) const;
    [[nodiscard]] Reply replyTo(const RouteMatch& match, std::string_view requestID,
                                const std::variant<Reply, SnapshotReply>& made) const;
    [[nodiscard]] Reply withSnapshot(const SnapshotReply& reply) const;

    Service m_service;
    mutable KnownTokens m_known;
};

}
