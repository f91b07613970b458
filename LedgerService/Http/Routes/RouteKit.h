#pragma once

#include <concepts>
#include <expected>
#include <string>
#include <type_traits>
#include <utility>

#include "LedgerService/Http/Dispatch/CommandOnce.h"
#include "LedgerService/Http/Route.h"
#include "LedgerService/Http/Routes/RequestBody.h"
#include "LedgerService/Identity/Sessions/Authentication.h"

/// Makes routes of functions that say nothing of HTTP. A row of a route table reads
///
///     Route{"POST", "/v1/accounts", writing<&createAccount>}
///
/// where the function takes the call and, when there is one, the record of the body:
///
///     std::expected<Account, Refusal> createAccount(const MemberCall& call, const AccountCreate& body);
///
/// What it returns is the reply: a record, `Done` or `NewSnapshot`. A body with an `idempotencyKey` makes the command
/// one that is carried out once. `writing<&createAccount, &whyNotShaped>` names a check of the body alone, made before
/// anybody waits for the database.
namespace LedgerService {

/// Replied as {"ok":true}.
struct Done {};

/// Replied as the caller's snapshot, read once the command is committed.
struct NewSnapshot {
    std::string key = {}; // with a value that stands beside the snapshot, such as "createdCategoryID"
    std::string value = {};
};
BOOST_DESCRIBE_STRUCT(NewSnapshot, (), (key, value))

/// {"token":"…","snapshot":{…}}
SnapshotReply sessionReply(const IssuedSession& session);

/// The snapshot after a command, unless it was refused.
std::expected<NewSnapshot, Refusal> snapshotUnless(std::optional<Refusal> refusal);

/// How a result becomes a reply, and how the reply to a repeated command is made from what was kept of the first.
template <class Result>
struct Answer {
    static Outcome reply(const MemberCall&, const Result& result) { return Reply{.body = Json::encode(result)}; }
    static std::string kept(const Result& result) { return Json::encode(result); }
    static Outcome repeated(const MemberCall&, const std::string& kept) { return Reply{.body = kept}; }
};

template <>
struct Answer<Done> {
    static Outcome reply(const MemberCall&, Done) { return okReply(); }
    static std::string kept(Done) { return {}; }
    static Outcome repeated(const MemberCall&, const std::string&) { return okReply(); }
};

template <>
struct Answer<NewSnapshot> {
    static Outcome reply(const MemberCall& call, const NewSnapshot& result);
    static std::string kept(const NewSnapshot& result) { return Json::encode(result); }
    static Outcome repeated(const MemberCall& call, const std::string& kept);
};

/// Replied as the token with the snapshot that it opens.
template <>
struct Answer<IssuedSession> {
    static Outcome reply(const MemberCall&, const IssuedSession& result) { return sessionReply(result); }
};

template <>
struct Answer<SnapshotReply> {
    static Outcome reply(const MemberCall&, const SnapshotReply& result) { return result; }
};

/// The name by which a repeated command with this body is known again, with what its path names. Once a program has
/// been used, its commands keep their names.
template <class Body>
std::string commandName(const MemberCall& call)
{
    return call.request.method + " " + call.request.path;
}

/// Whether all that a command with this body does is told by the entries that it records.
template <class Body>
inline constexpr bool isToldByEntries = false;

namespace Detail {

struct NoBody {};

/// Whether a body holds what nobody may read again.
template <class Body>
consteval bool isSecret()
{
    bool secret = false;
    boost::mp11::mp_for_each<Json::Detail::Fields<Body>>([&](auto field) {
        constexpr std::string_view name = field.name;
        secret = secret || name.find("assword") != name.npos || name == "code" || name == "ticket" ||
                 name == "invitationCode";
    });
    return secret;
}

template <class Function>
struct Signature;
template <class Made, class Call>
struct Signature<std::expected<Made, Refusal> (*)(const Call&)> {
    using Result = Made;
    using Body = NoBody;
};
template <class Made, class Call, class Read>
struct Signature<std::expected<Made, Refusal> (*)(const Call&, const Read&)> {
    using Result = Made;
    using Body = Read;
};

template <class Body>
concept CarriedOutOnce = requires(const Body& body) {
    { body.idempotencyKey } -> std::convertible_to<std::string>;
};

template <class Body>
std::expected<Body, Refusal> bodyOf(Request& request)
{
    if constexpr (std::is_same_v<Body, NoBody>)
        return NoBody{};
    else
        return RequestBody::decode<Body>(request);
}

template <auto carryOut, class Body>
auto invoke(const auto& call, const Body& body)
{
    if constexpr (std::is_same_v<Body, NoBody>)
        return carryOut(call);
    else
        return carryOut(call, body);
}

/// The audit trail tells a command as it was given, where the command says nothing else of itself.
template <class Body>
void tell(const MemberCall& call, const Body& body)
{
    if constexpr (!std::is_same_v<Body, NoBody> && !isToldByEntries<Body>) {
        if constexpr (!isSecret<Body>()) {
            if (!call.note.after)
                call.note.after = Json::encode(body);
        }
    }
}

template <auto carryOut, class Body>
Outcome answer(const MemberCall& call, const Body& body)
{
    using Made = Answer<typename Signature<decltype(carryOut)>::Result>;
    const auto result = invoke<carryOut>(call, body);
    if (!result)
        return std::unexpected(result.error());
    tell(call, body);
    return Made::reply(call, *result);
}

template <auto carryOut, class Body>
Outcome answerOnce(const MemberCall& call, const Body& body)
{
    using Made = Answer<typename Signature<decltype(carryOut)>::Result>;
    const CommandOnce once{call, body.idempotencyKey, CommandFingerprint::of(commandName<Body>(call), body)};
    if (const auto earlier = once.earlier(); !earlier)
        return std::unexpected(earlier.error());
    else if (const auto& kept = *earlier) {
        call.note.isRepetition = true;
        return Made::repeated(call, *kept);
    }
    const auto result = invoke<carryOut>(call, body);
    if (!result)
        return std::unexpected(result.error());
    if (!call.note.isRepetition) // else somebody else's command is kept as the one that did it
        once.keep(Made::kept(*result));
    tell(call, body);
    return Made::reply(call, *result);
}

template <auto carryOut, auto whyNotShaped>
Prepared prepare(const OpenCall& opened)
{
    using Body = typename Signature<decltype(carryOut)>::Body;
    auto body = bodyOf<Body>(opened.request);
    if (!body)
        return std::unexpected(std::move(body.error()));
    if constexpr (!std::is_null_pointer_v<decltype(whyNotShaped)>) {
        if (auto refusal = whyNotShaped(*body))
            return std::unexpected(*std::move(refusal));
    }
    if constexpr (CarriedOutOnce<Body>) {
        if (auto refusal = CommandOnce::whyNot(body->idempotencyKey))
            return std::unexpected(*std::move(refusal));
        return [body = *std::move(body)](const MemberCall& call) { return answerOnce<carryOut>(call, body); };
    } else {
        return [body = *std::move(body)](const MemberCall& call) { return answer<carryOut>(call, body); };
    }
}

template <auto carryOut>
Outcome openAnswer(const OpenCall& call)
{
    using Body = typename Signature<decltype(carryOut)>::Body;
    const auto body = bodyOf<Body>(call.request);
    if (!body)
        return std::unexpected(body.error());
    return invoke<carryOut>(call, *body);
}

}

template <auto carryOut, auto whyNotShaped = nullptr>
inline constexpr Reading reading{Detail::prepare<carryOut, whyNotShaped>};

template <auto carryOut, auto whyNotShaped = nullptr>
inline constexpr Writing writing{Detail::prepare<carryOut, whyNotShaped>};

/// Without a token. The function returns an `Outcome`.
template <auto carryOut>
inline constexpr OpenHandler open{Detail::openAnswer<carryOut>};

}
