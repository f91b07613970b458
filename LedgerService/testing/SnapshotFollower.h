#pragma once

#include <string>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

/// A member who keeps a snapshot and asks for what is new.
class SnapshotFollower {
public:
    SnapshotFollower(TestService& service, const std::string& memberID, const std::string& companyID = "sample")
        : m_client(service.client()), m_token(service.tokenOf(memberID, companyID))
    {
    }

    /// The headers that ask for what is new since the state of this tag.
    static std::string conditions(const std::string& tag, std::string_view manipulations = "entries");

    [[nodiscard]] const LedgerSnapshot& held() const { return m_held; }
    [[nodiscard]] const std::string& token() const { return m_token; }
    void signInAgain(const std::string& token) { m_token = token; }

    /// The status of the reply.
    int refresh();

    LedgerSnapshot whole();

private:
    void take(const HttpAnswer& answer);

    HttpClient m_client;
    std::string m_token;
    std::string m_tag;
    LedgerSnapshot m_held;
};

}
