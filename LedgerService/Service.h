#pragma once

#include <chrono>
#include <functional>
#include <string>

namespace LedgerService {

class Database;
class Postbox;
class ReceiptFolder;

/// Tells the time; tests set it.
using Clock = std::function<std::chrono::system_clock::time_point()>;

/// How many attempts are taken within one window of time before further ones are refused.
struct AttemptLimits {
    std::chrono::seconds window{15 * 60};
    int signInsPerPerson = 10; // from one address
    int signInsPerAddress = 100;
    int demonstrationsPerAddress = 300;
    int visitsPerAddress = 10; // demonstrations that are a visitor's own
    int visits = 200;          // at the same time, from all addresses
    int visitChanges = 5'000;  // of such a company from its founding on: anybody makes them
    int registrationsPerAddress = 10;
    int codesPerPerson = 5; // mailed, from one address
    int codesPerAddress = 30;
    int codeTriesPerAddress = 60;
    // For one person from all places together at which that person has not signed in before.
    std::chrono::seconds strangersWindow{24 * 60 * 60};
    int strangersPerPerson = 100;
    int strangersCodesPerPerson = 10;
};

/// Who may open a company without the operator.
enum class RegistrationMode {
    review, // whoever applies, once the operator has approved the company
    open,   // whoever applies, at once
    closed, // nobody; invited people register all the same
};

/// Whether anyone may enter demonstration companies.
enum class DemonstrationMode {
    off,
    shared,   // one company for each language, for everybody
    visitors, // a company for each visitor, who has it for a day
};

/// What an operator decides about a running service.
struct ServicePolicy {
    RegistrationMode registration = RegistrationMode::review;
    DemonstrationMode demonstration = DemonstrationMode::off;
    std::chrono::hours sessionLifetime{30 * 24};
    AttemptLimits limits;

    [[nodiscard]] bool offersDemonstration() const { return demonstration != DemonstrationMode::off; }
};

/// What every request is answered with. Holds no state of its own: all that matters is in the database.
struct Service {
    Database& database;
    const ReceiptFolder& receipts;
    Postbox& postbox;
    Clock clock;
    ServicePolicy policy;
    std::string origin{}; // the client's address as limits count it; empty before a request is known
};

}
