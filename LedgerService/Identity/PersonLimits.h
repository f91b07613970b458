#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/Identity/AttemptLimit.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Connection;
struct User;

/// How often somebody may be guessed at. Strangers share one allowance for each person, wherever they are; whoever
/// comes from a place where the person has signed in before does not draw on it. So neither can many addresses guess
/// together, nor can they lock the person out of the places that the person uses.
class PersonLimits {
public:
    /// `remote` is the client's address as limits count it.
    PersonLimits(std::string_view email, std::string_view remote);

    /// What an attempt to sign in counts towards. Opens its own transaction.
    [[nodiscard]] std::vector<AttemptLimit::Scope> ofSignIn(const Service& service) const;

    /// What asking for a one-time code by mail counts towards. Opens its own transaction.
    [[nodiscard]] std::vector<AttemptLimit::Scope> ofCodes(const Service& service) const;

    /// The attempt was the person's: it no longer counts, and its place is known from now on. Expects a writing
    /// transaction.
    void settle(Connection& connection, const Service& service, const User& person) const;

private:
    [[nodiscard]] bool isKnownPlace(const Service& service) const;

    std::string m_email;
    std::string m_remote;
    std::string m_person; // digest of the address: the table of attempts names nobody
};

}
