#include "LedgerService/testing/Random/RandomDays.h"

#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/Storage/Rows/Entries/EntryRepository.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"

namespace LedgerService {

RandomDays::RandomDays(TestService& service, std::uint32_t seed)
    : RandomChoices(seed), m_service(service), m_commands(seed)
{
    for (const auto* member : {"mira", "rudi", "guest", "gone"})
        m_tokens[member] = service.tokenOf(member);
}

void RandomDays::step(const LedgerSnapshot& seen)
{
    Books books;
    books.entries = seen.transactions.toVector();
    switch (below(12)) {
    case 0:
        return upload();
    case 1:
        return linkLater(seen);
    case 2:
        return changeRights();
    default:
        return act(books);
    }
}

void RandomDays::upload()
{
    Attachment added;
    added.id = fmt::format("receipt-{}", ++m_number);
    added.name = "a.pdf";
    added.mime = "application/pdf";
    const std::string uploader = once(2) ? "mira" : "rudi";
    m_service.write(
        [&](Connection& connection) { AttachmentRepository::insert(connection, "sample", added, uploader); });
    m_loose[uploader].push_back(added.id);
}

std::vector<std::string> RandomDays::takeLoose(const std::string& uploader)
{
    auto& loose = m_loose[uploader];
    std::vector<std::string> ids;
    if (!loose.empty()) {
        const auto at = loose.begin() + static_cast<std::ptrdiff_t>(below(loose.size()));
        ids.push_back(*at);
        loose.erase(at);
    }
    return ids;
}

void RandomDays::linkLater(const LedgerSnapshot& seen)
{
    const auto& entry = seen.transactions[below(seen.transactions.size())];
    const auto ids = entry.memberID == "mira" ? takeLoose("mira") : std::vector<std::string>{};
    if (!ids.empty())
        m_service.write(
            [&](Connection& connection) { EntryRepository::linkReceipts(connection, "sample", entry.id, ids); });
}

void RandomDays::changeRights()
{
    const bool more = once(2);
    m_service.write([&](Connection& connection) {
        connection.execute(fmt::format(R"(UPDATE members SET permissions = '[{}]' WHERE id = 'rudi')",
                                       more ? R"("viewCompany")" : ""));
    });
}

void RandomDays::act(const Books& books)
{
    const auto key = fmt::format("key-{}", ++m_number);
    const auto actor = m_commands.actor();
    if (m_commands.reverses()) {
        auto command = SampleBooks::reversal();
        command.idempotencyKey = key;
        post(actor, fmt::format("/v1/transactions/{}/reverse", m_commands.entryOf(books)), Json::encode(command));
        return;
    }
    auto input = m_commands.inputFor(books);
    input.idempotencyKey = key;
    if (once(4))
        input.attachmentIDs = takeLoose(actor);
    post(actor, "/v1/transactions", Json::encode(input));
}

void RandomDays::post(const std::string& actor, const std::string& target, const std::string& body)
{
    const auto answer = m_client.send("POST", target, m_tokens[actor], body, "Prefer: return=minimal\r\n");
    require(answer.status < 500, "the service answers every command");
}

}
