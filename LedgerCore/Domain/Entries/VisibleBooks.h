#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string_view>
#include <vector>

#include "LedgerCore/Domain/Access/OpeningBalancePolicy.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// The books as a member sees them, and what the rules about entries ask of them. What takes a pass over all entries
/// is gathered when it is asked for the first time and kept, so that a form asks at every key: make one for a
/// snapshot and keep it as long. The snapshot must outlive it. Copies share what was gathered; for one thread.
class VisibleBooks {
public:
    explicit VisibleBooks(const LedgerSnapshot& snapshot);
    explicit VisibleBooks(const LedgerSnapshot&& snapshot) = delete;

    [[nodiscard]] const LedgerSnapshot& snapshot() const;

    /// The account of this id that the member sees, or null.
    [[nodiscard]] const Account* account(std::string_view id) const;

    /// The same, or as much as is known of an account that the member may fill without seeing it: no balances.
    [[nodiscard]] const Account* destination(std::string_view id) const;

    /// The accounts that are known in this way only.
    [[nodiscard]] std::span<const Account> unseenDestinations() const;

    [[nodiscard]] const Category* category(std::string_view id) const;
    [[nodiscard]] const LedgerTransaction* entry(std::string_view id) const;

    /// What refunds that are not reversed have paid back of an income; positive minor units.
    [[nodiscard]] std::int64_t refundedMinor(std::string_view incomeID, std::string_view currency) const;

    /// Whether a refund that is not reversed names this entry.
    [[nodiscard]] bool hasRefunds(std::string_view entryID) const;

    /// Whether a refund that is not reversed carries this reference, in whichever case.
    [[nodiscard]] bool isReferenceUsed(std::string_view reference) const;

    /// Whether an opening that is not reversed stands on the account in the currency.
    [[nodiscard]] bool hasOpening(std::string_view accountID, std::string_view currency) const;

    [[nodiscard]] const OpeningBalanceEligibility& opening(std::string_view accountID, std::string_view currency) const;

    /// The same of each account and each of its currencies, in snapshot order.
    [[nodiscard]] const std::vector<OpeningBalanceEligibility>& openings() const;

    /// False for an account that names no balance in the currency although visible entries move it there.
    [[nodiscard]] bool isBalanceKnown(const Account& account, std::string_view currency) const;

private:
    struct Gathered;

    std::shared_ptr<Gathered> m_gathered;
};
