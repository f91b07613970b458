#pragma once

#include <string>
#include <vector>

#include "LedgerCore/Domain/Capital/CapitalCommands.h"
#include "LedgerCore/Domain/Dividends/DividendCommands.h"

class Colleague;

/// Keeps the capital and the dividends of a company in rupiah, at the client of a colleague.
class CapitalClerk {
public:
    explicit CapitalClerk(Colleague& colleague) : m_colleague{colleague} {}

    struct Contribution {
        std::string owner;
        std::string account;
        std::string amount;
    };
    struct Payment {
        std::string period = {}; // empty: in advance of any
        std::string person;
        std::string account;
        std::string amount;
    };

    void addOwner(const std::string& name);
    /// In the order of the owners.
    void setShares(const std::vector<std::string>& percentages);
    void contribute(const Contribution& contribution);
    void addParticipant(const std::string& name, const std::string& percentage);
    /// By the default ratios.
    void allocate(const std::string& period, const std::string& amount);
    void pay(const Payment& payment);

    /// The books as the service has them now.
    [[nodiscard]] SnapshotPointer books();
    [[nodiscard]] std::string accountID(const std::string& name);

private:
    [[nodiscard]] CommandIssue issue();
    void send(CapitalCommands::Built command);
    void send(DividendCommands::Built command);

    Colleague& m_colleague;
};
