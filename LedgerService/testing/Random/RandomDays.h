#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "LedgerService/Books/Books.h"
#include "LedgerService/testing/Random/RandomChoices.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

/// What several people do to the sample's books, always the same for the same seed: entries, reversals, receipts and
/// changed rights.
class RandomDays : RandomChoices {
public:
    RandomDays(TestService& service, std::uint32_t seed);

    /// `seen` is everything recorded so far.
    void step(const LedgerSnapshot& seen);

private:
    void upload();
    void linkLater(const LedgerSnapshot& seen);
    void changeRights();
    void act(const Books& books);
    void post(const std::string& actor, const std::string& target, const std::string& body);
    std::vector<std::string> takeLoose(const std::string& uploader);

    TestService& m_service;
    HttpClient m_client = m_service.client();
    RandomCommands m_commands;
    std::map<std::string, std::string> m_tokens;
    std::map<std::string, std::vector<std::string>> m_loose; // receipts by their uploader
    int m_number = 0;
};

}
