#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "LedgerService/Books/Demonstration/DemoBookkeeper.h"

namespace LedgerService {

/// What the owners of the demonstration company put in and take out: two years of capital and dividends, with the
/// mistakes and the loose ends of real ones.
class DemoOwners {
public:
    /// Has something happen on a day of a month, both counted from the start of the books.
    using Plan = std::function<void(int month, int day, std::function<void()> happen)>;

    DemoOwners(DemoBookkeeper& keeper, const Books& books, DemoIds ids, std::string_view locale);

    void plan(const Plan& on);

private:
    struct Shares {
        int owner;
        int admin;
        int partner;
    };

    void planCapital(const Plan& on);
    void planFirstDividends(const Plan& on);
    void planLaterDividends(const Plan& on);

    void found();
    void share(Shares shares);
    std::string contribute(std::string_view profile, std::string_view account, std::string_view currency,
                           std::int64_t amountMinor);
    void undoContribution(const std::string& contributionID);

    /// The period is the quarter before today.
    std::string allocate(std::string_view currency, std::int64_t amountMinor);
    std::string pay(const std::string& batchID, std::string_view profile, std::string_view account,
                    std::int64_t amountMinor);
    void undoMovement(const std::string& movementID);

    [[nodiscard]] std::string ownerID(std::string_view profile) const;
    [[nodiscard]] std::string participantID(std::string_view profile) const;
    [[nodiscard]] std::string note(std::string_view key) const;

    DemoBookkeeper& m_keeper;
    const Books& m_books;
    DemoIds m_ids;
    std::string_view m_locale;
    // What later steps go back to.
    std::string m_mistake;
    std::string m_batch;
    std::string m_advance;
};

}
