#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/LedgerSnapshot.h"

/// Builds small, whole snapshots for tests. Entries move the balances of the accounts that they name.
///
///     const auto books = snapshot().account("bank", {"USD"}).grantAll().income("t1", "2026-11-20", "bank", "USD",
///     500); store answers with books.json()
class SnapshotBuilder {
public:
    /// A company "c1" whose current member is the active owner "m1", without grants.
    SnapshotBuilder()
    {
        m_snapshot.company = {.id = "c1",
                              .name = "Harbour Trading",
                              .countries = {"ID"},
                              .enabledLocales = {"zh-CN", "en-US", "id-ID", "vi-VN"},
                              .createdAt = "2024-01-02T03:04:05Z",
                              .demo = {},
                              .approvalStatus = {},
                              .transactionColors = {}};
        m_snapshot.currentMember = person("m1", "Mira Owner", "owner");
        m_snapshot.currentMember.permissions = {{"viewCompany", "manageCompany", "exportData"}};
        m_snapshot.currentMember.accountGrants.emplace();
        m_snapshot.members = {m_snapshot.currentMember};
    }

    /// An active member without permissions or grants.
    static Member person(const std::string& id, std::string name, std::string role = "employee")
    {
        return {.id = id,
                .userID = "user-" + id,
                .name = std::move(name),
                .email = id + "@example.com",
                .role = std::move(role),
                .accountIDs = {},
                .locale = "en-US",
                .active = true,
                .permissions = {},
                .accountGrants = {},
                .selectedCategoryIDs = {},
                .transactionColors = {}};
    }

    SnapshotBuilder& companyName(std::string name)
    {
        m_snapshot.company.name = std::move(name);
        return *this;
    }

    SnapshotBuilder& settings(FinancialSettings settings)
    {
        m_snapshot.financialSettings = std::move(settings);
        return *this;
    }

    SnapshotBuilder& approvalStatus(std::string status)
    {
        m_snapshot.company.approvalStatus = std::move(status);
        return *this;
    }

    /// Makes `member` the signed-in one.
    SnapshotBuilder& currentMember(Member member)
    {
        m_snapshot.members.front() = member;
        m_snapshot.currentMember = std::move(member);
        return *this;
    }

    /// The company's colours by kind of entry.
    SnapshotBuilder& colors(TextMap byKind)
    {
        m_snapshot.company.transactionColors = std::move(byKind);
        return *this;
    }

    SnapshotBuilder& member(Member member)
    {
        m_snapshot.members.push_back(std::move(member));
        return *this;
    }

    SnapshotBuilder& permissions(std::vector<std::string> permissions)
    {
        m_snapshot.currentMember.permissions = std::move(permissions);
        return keepMemberTheSame();
    }

    /// Gives the current member these actions on the account.
    SnapshotBuilder& grant(std::string accountID, std::vector<std::string> actions)
    {
        auto& grants = m_snapshot.currentMember.accountGrants;
        (grants ? *grants : grants.emplace()).push_back({std::move(accountID), std::move(actions)});
        return keepMemberTheSame();
    }

    /// Gives the current member every action on every account built so far.
    SnapshotBuilder& grantAll()
    {
        m_snapshot.currentMember.accountGrants.emplace();
        for (const auto& account : m_snapshot.accounts)
            grant(account.id, {AccountGrant::knownActions.begin(), AccountGrant::knownActions.end()});
        return *this;
    }

    /// A company account that is named like its identifier.
    SnapshotBuilder& account(const std::string& id, std::vector<std::string> currencies)
    {
        return account({.id = id,
                        .name = id,
                        .currencies = std::move(currencies),
                        .ownerMemberID = {},
                        .archived = false,
                        .balances = {},
                        .purpose = {},
                        .operatorMemberID = {},
                        .returnAccountID = {}});
    }

    SnapshotBuilder& account(Account account)
    {
        for (const auto& currency : account.currencies)
            account.balances.emplace(currency, 0);
        m_snapshot.accounts.push_back(std::move(account));
        return *this;
    }

    /// An employee's float that `operatorMemberID` answers for.
    SnapshotBuilder& employeeAccount(std::string id, std::vector<std::string> currencies, std::string operatorMemberID)
    {
        account(std::move(id), std::move(currencies));
        m_snapshot.accounts.back().purpose = AccountPurpose::employee;
        m_snapshot.accounts.back().operatorMemberID = std::move(operatorMemberID);
        return *this;
    }

    SnapshotBuilder& balance(const std::string& accountID, const std::string& currency, std::int64_t minor)
    {
        for (auto& account : m_snapshot.accounts) {
            if (account.id == accountID)
                account.balances[currency] = minor;
        }
        return *this;
    }

    /// A category whose four names are `name` with the language in brackets, except the English one.
    SnapshotBuilder& category(std::string id, std::string kind, const std::string& name, std::string parentID = {})
    {
        Category category{
            .id = std::move(id),
            .kind = std::move(kind),
            .names = {{"zh-CN", name + " (zh)"}, {"id-ID", name + " (id)"}, {"vi-VN", name + " (vi)"}, {"en-US", name}},
            .symbol = "tag",
            .archived = false,
            .parentID = {},
            .sortOrder = {},
            .presetID = {},
            .defaultEnabled = {}};
        if (!parentID.empty())
            category.parentID = std::move(parentID);
        m_snapshot.categories.push_back(std::move(category));
        return *this;
    }

    SnapshotBuilder& income(std::string id, std::string date, std::string accountID, std::string currency,
                            std::int64_t minor, std::string categoryID = {})
    {
        return entry(std::move(id), EntryKind::income, std::move(date),
                     {{std::move(accountID), std::move(currency), minor}}, std::move(categoryID));
    }

    SnapshotBuilder& expense(std::string id, std::string date, std::string accountID, std::string currency,
                             std::int64_t minor, std::string categoryID = {})
    {
        return entry(std::move(id), EntryKind::expense, std::move(date),
                     {{std::move(accountID), std::move(currency), -minor}}, std::move(categoryID));
    }

    SnapshotBuilder& transfer(std::string id, std::string date, std::string from, std::string to,
                              const std::string& currency, std::int64_t minor, std::string purpose = {})
    {
        entry(std::move(id), EntryKind::transfer, std::move(date),
              {{std::move(from), currency, -minor}, {std::move(to), currency, minor}});
        if (!purpose.empty())
            m_snapshot.transactions.back().transferPurpose = std::move(purpose);
        return *this;
    }

    SnapshotBuilder& entry(std::string id, std::string_view kind, std::string date, std::vector<LedgerLeg> legs,
                           std::string categoryID = {})
    {
        LedgerTransaction entry;
        entry.id = std::move(id);
        entry.kind = kind;
        entry.createdAt = date + "T08:00:00Z";
        entry.date = std::move(date);
        entry.memberID = m_snapshot.currentMember.id;
        entry.legs = std::move(legs);
        if (!categoryID.empty())
            entry.categoryID = std::move(categoryID);
        return post(std::move(entry));
    }

    /// The whole record, for what the short forms do not say.
    SnapshotBuilder& entry(LedgerTransaction entry) { return post(std::move(entry)); }

    /// Sets the note of the entry built last.
    SnapshotBuilder& note(std::string note)
    {
        m_snapshot.transactions.back().note = std::move(note);
        return *this;
    }

    [[nodiscard]] LedgerSnapshot build() const { return m_snapshot; }
    [[nodiscard]] SnapshotPointer share() const { return std::make_shared<const LedgerSnapshot>(m_snapshot); }
    /// As the service sends it.
    [[nodiscard]] std::string json() const { return Json::encode(m_snapshot); }
    /// The reply to a sign-in that opens this snapshot.
    [[nodiscard]] std::string signInJson(const std::string& token = "token-1") const
    {
        return R"({"token":")" + token + R"(","snapshot":)" + json() + "}";
    }

private:
    SnapshotBuilder& post(LedgerTransaction entry)
    {
        for (const auto& leg : entry.legs) {
            for (auto& account : m_snapshot.accounts) {
                if (account.id == leg.accountID)
                    account.balances[leg.currency] += leg.amountMinor;
            }
        }
        m_snapshot.transactions.push_back(std::move(entry));
        return *this;
    }

    SnapshotBuilder& keepMemberTheSame()
    {
        m_snapshot.members.front() = m_snapshot.currentMember;
        return *this;
    }

    LedgerSnapshot m_snapshot;
};

inline SnapshotBuilder snapshot()
{
    return {};
}
