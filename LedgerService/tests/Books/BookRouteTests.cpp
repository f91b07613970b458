#include <algorithm>
#include <map>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Access/Visibility.h"
#include "LedgerService/Storage/Rows/Entries/AttachmentRepository.h"
#include "LedgerService/testing/Random/RandomCommands.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/transactions";

/// The receipt "free", which mira has uploaded and linked to nothing yet.
void uploadFree(TestService& service)
{
    service.write([](Connection& connection) {
        const auto books = SampleBooks::books();
        const auto free = *std::ranges::find(books.attachments, "free", &Attachment::id);
        AttachmentRepository::insert(connection, "sample", free, "mira");
    });
}

/// The service and the same books in memory, given the same commands by the same people.
class Lockstep {
public:
    explicit Lockstep(std::uint32_t seed) : m_commands(seed)
    {
        uploadFree(m_service);
        for (const auto& member : m_books.members)
            m_tokens[member.id] = m_service.tokenOf(member.id);
    }

    void step(int number)
    {
        const auto actor = m_commands.actor();
        const auto key = fmt::format("key-{}", number);
        if (m_commands.reverses()) {
            const auto entryID = m_commands.entryOf(m_books);
            auto command = SampleBooks::reversal();
            command.idempotencyKey = key;
            const auto answer = send(actor, fmt::format("{}/{}/reverse", path, entryID), Json::encode(command));
            const auto id = answer.status == 200 ? Json::decode<LedgerSnapshot>(answer.body)->transactions.back().id
                                                 : std::string{"none"};
            compare(answer, m_books.reverse(entryID, command, SampleBooks::actBy(actor, id)));
        } else {
            auto input = m_commands.inputFor(m_books);
            input.idempotencyKey = key;
            const auto answer = send(actor, path, Json::encode(input));
            const auto id =
                answer.status == 200 ? Json::decode<LedgerTransaction>(answer.body)->id : std::string{"none"};
            for (auto& receipt : input.attachmentIDs)
                receipt = isKnown(receipt, actor) ? receipt : "none";
            compare(answer, m_books.record(input, SampleBooks::actBy(actor, id)));
        }
    }

    /// What the service holds in the end, as the member who sees the whole company reads it.
    void compareBooks()
    {
        const auto stored = m_service.snapshotOf("guest");
        EXPECT_EQ(stored.transactions, m_books.entries);
        ASSERT_EQ(stored.accounts.size(), m_books.accounts.size());
        for (const auto& account : m_books.accounts) {
            for (const auto* currency : {"IDR", "USD"})
                EXPECT_EQ(stored.account(account.id)->balance(currency), account.balance(currency)) << account.id;
        }
        EXPECT_EQ(m_service.problems(), "");
    }

private:
    HttpAnswer send(const std::string& actor, const std::string& to, const std::string& body)
    {
        return m_client.send("POST", to, m_tokens.at(actor), body);
    }

    /// Loose receipts exist for "mira", who uploaded them, others for whoever sees their entry.
    [[nodiscard]] bool isKnown(const std::string& receiptID, const std::string& actor) const
    {
        const auto receipt = std::ranges::find(m_books.attachments, receiptID, &Attachment::id);
        if (receipt == m_books.attachments.end() || !receipt->transactionID)
            return actor == "mira";
        const auto member = std::ranges::find(m_books.members, actor, &Member::id);
        return Visibility::seesEntry(*m_books.entry(*receipt->transactionID), *member);
    }

    static void compare(const HttpAnswer& answer, const std::expected<void, Refusal>& expected)
    {
        EXPECT_EQ(answer.status, expected ? 200 : expected.error().status) << answer.body;
        EXPECT_EQ(answer.code(), expected ? "" : expected.error().code);
    }

    TestService m_service;
    HttpClient m_client{m_service.port()};
    Books m_books = SampleBooks::books();
    RandomCommands m_commands;
    std::map<std::string, std::string> m_tokens;
};

TEST(BookRoutes, KeepTheBooksThatTheRulesMakeOfTheSameCommands)
{
    for (const std::uint32_t seed : {11u, 12u, 13u}) {
        SCOPED_TRACE(fmt::format("seed {}", seed));
        Lockstep walk{seed};
        for (int number = 1; number <= 150 && !testing::Test::HasFailure(); ++number) {
            SCOPED_TRACE(fmt::format("step {}", number));
            walk.step(number);
        }
        walk.compareBooks();
    }
}

struct Post {
    std::string member;
    TransactionInput input;
    std::string code; // empty: recorded
};

TransactionInput onFloat(TransactionInput input)
{
    input.sourceAccountID = "float";
    return input;
}

TEST(BookRoutes, GuardTheFloatAcrossRequests)
{
    TestService service;
    const Post posts[]{
        {"rudi", onFloat(SampleBooks::expense(1)), "insufficient_funds"},
        {"mira", SampleBooks::funding(20'000), ""},
        {"guest", onFloat(SampleBooks::expense(1)), "forbidden"},
        {"rudi", onFloat(SampleBooks::expense(12'000)), ""},
        {"rudi", SampleBooks::returning(8'001), "insufficient_funds"},
        {"rudi", SampleBooks::returning(8'000), ""},
    };
    int key = 0;
    for (auto [member, input, code] : posts) {
        input.idempotencyKey = fmt::format("k{}", ++key);
        const auto answer = service.as(member, "POST", path, Json::encode(input));
        EXPECT_EQ(answer.code(), code) << input.idempotencyKey << ": " << answer.body;
    }
    const auto seen = service.snapshotOf("rudi");
    EXPECT_EQ(seen.account("float")->balance("IDR"), 0);
    EXPECT_EQ(seen.account("vault"), nullptr) << "money went where its sender does not look";
}

TEST(BookRoutes, LinkAReceiptToOneEntryOnly)
{
    TestService service;
    uploadFree(service);
    auto input = SampleBooks::income();
    input.attachmentIDs = {"free"};
    ASSERT_EQ(service.as("mira", "POST", path, Json::encode(input)).status, 200);
    const auto snapshot = service.snapshotOf("mira");
    EXPECT_EQ(snapshot.transactions.back().attachmentIDs, std::vector<std::string>{"free"});
    input.idempotencyKey = "again";
    EXPECT_EQ(service.as("mira", "POST", path, Json::encode(input)).code(), "attachment_linked");
}

}

}
