#pragma once

#include <map>
#include <string>
#include <string_view>

#include "LedgerCore/Domain/Records/Requests/CapitalCommand.h"
#include "LedgerCore/Domain/Records/Requests/DividendCommand.h"
#include "LedgerService/Books/Books.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

/// The company of `SampleBooks` with contributions and dividends switched on. "mira" holds every permission; "guest"
/// sees and posts both on "branch" alone and corrects no capital; "rudi" has no right to either and sees "bank" and
/// "branch".
namespace SampleSections {

Books books();

BookAct actBy(std::string memberID, int number);

/// A command of today on the section at this revision.
CapitalCommand capital(std::string_view action, int expectedRevision = 0);
DividendCommand dividend(std::string_view action, int expectedRevision = 0);

CapitalCommand owner(std::string name, std::optional<std::string> memberID = {});
CapitalCommand contribution(std::string participantID, std::int64_t amountMinor, std::string accountID = "bank",
                            std::string currency = "IDR");
CapitalCommand ownership(std::vector<CapitalOwnershipLine> lines);

DividendCommand participant(std::string name, int ratioBps);
DividendCommand allocation(std::int64_t amountMinor, std::vector<DividendShare> shares, std::string currency = "IDR");
DividendCommand payment(std::string batchID, std::string participantID, std::int64_t amountMinor,
                        std::string accountID = "bank", std::string currency = "IDR");
DividendCommand advanceTo(std::string participantID, std::int64_t amountMinor, std::string accountID = "bank",
                          std::string currency = "IDR");

}

/// The real service on that company.
class SectionService : public TestService {
public:
    SectionService();

    /// Sends the command on the section as it stands, with a key of its own.
    HttpAnswer submit(const std::string& memberID, CapitalCommand command);
    HttpAnswer submit(const std::string& memberID, DividendCommand command);
    /// Sends it as it is.
    HttpAnswer send(const std::string& memberID, const CapitalCommand& command);
    HttpAnswer send(const std::string& memberID, const DividendCommand& command);

    CapitalState capital();
    DividendState dividends();

    /// Adds it, which must succeed, and gives the id that it got.
    std::string added(CapitalCommand command);
    std::string added(DividendCommand command);

private:
    LedgerSnapshot sections();
    std::string keptTokenOf(const std::string& memberID);
    HttpAnswer post(const std::string& memberID, const std::string& path, const std::string& body);

    std::map<std::string, std::string> m_tokens; // by member
    int m_keys = 0;
};

}
