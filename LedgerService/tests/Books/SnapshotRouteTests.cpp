#include <set>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

using Names = std::set<std::string>;

struct Sight {
    std::string member;
    Names accounts;
    Names entries;
    Names destinations;
    Names attachments;
};

template <class Rows>
Names idsOf(const Rows& rows)
{
    Names ids;
    for (const auto& row : rows)
        ids.insert(row.id);
    return ids;
}

void PrintTo(const Sight& sight, std::ostream* out)
{
    *out << sight.member;
}

class SnapshotSight : public testing::TestWithParam<Sight> {};

}

TEST_P(SnapshotSight, HoldsWhatTheMemberMaySee)
{
    TestService service;
    auto funding = SampleBooks::funding(20'000);
    const auto funded = service.as("mira", "POST", "/v1/transactions", Json::encode(funding));
    ASSERT_EQ(funded.status, 200) << funded.body;
    const auto funded_id = Json::decode<LedgerTransaction>(funded.body)->id;

    const auto snapshot = service.snapshotOf(GetParam().member);
    EXPECT_EQ(snapshot.currentMember.id, GetParam().member);
    EXPECT_EQ(idsOf(snapshot.accounts), GetParam().accounts);
    auto entries = idsOf(snapshot.transactions);
    if (entries.erase(funded_id) > 0)
        entries.insert("the funding");
    EXPECT_EQ(entries, GetParam().entries);
    EXPECT_EQ(idsOf(*snapshot.transferDestinations), GetParam().destinations);
    EXPECT_EQ(idsOf(snapshot.attachments), GetParam().attachments);
    EXPECT_EQ(idsOf(snapshot.members), (Names{"mira", "rudi", "guest", "gone"})) << "everyone's name is known";
    EXPECT_EQ(idsOf(snapshot.categories), (Names{"sales", "rent", "fax"})) << "old entries name archived ones";
}

INSTANTIATE_TEST_SUITE_P(
    Members, SnapshotSight,
    testing::Values(Sight{"mira",
                          {"bank", "branch", "refunds", "vault", "closed"},
                          {"opening-bank", "opening-dollars", "opening-refunds", "sale", "the funding"},
                          {"bank", "branch", "refunds", "vault", "float"},
                          {"linked"}},
                    Sight{"rudi", {"float", "branch"}, {"the funding"}, {"float", "vault"}, {}},
                    Sight{"guest",
                          {"bank", "branch", "refunds", "vault", "closed", "float", "hidden"},
                          {"opening-bank", "opening-dollars", "opening-refunds", "sale", "the funding"},
                          {},
                          {"linked"}}),
    [](const auto& each) { return each.param.member; });

TEST(SnapshotRoute, ShowsAddressesAndRightsOfOthersOnlyToThoseWhoManageTheCompany)
{
    TestService service;
    const auto seenByGuest = service.snapshotOf("guest").members;
    ASSERT_EQ(seenByGuest[0].id, "mira");
    EXPECT_EQ(seenByGuest[0].email, "");
    EXPECT_FALSE(seenByGuest[0].accountGrants.has_value());
    EXPECT_FALSE(seenByGuest[0].permissions.has_value());
    EXPECT_EQ(seenByGuest[2].email, "guest@sample.example") << "one's own is known";

    service.write([](Connection& connection) {
        connection.execute(R"(UPDATE members SET permissions = '["viewCompany","manageCompany"]' WHERE id = 'guest')");
    });
    const auto seenByManager = service.snapshotOf("guest").members;
    EXPECT_EQ(seenByManager[0].email, "mira@sample.example");
    EXPECT_TRUE(seenByManager[0].accountGrants.has_value());
}

TEST(SnapshotRoute, NamesReceiptsOnTheirEntryAndUnlinkedOnesToTheirUploaderOnly)
{
    TestService service;
    service.write([](Connection& connection) {
        connection.execute("INSERT INTO attachments (company_id, id, member_id, transaction_id, position, name, mime, "
                           "byte_count, created_at) VALUES ('sample', 'loose', 'mira', NULL, 0, 'a.pdf', "
                           "'application/pdf', 1, '2026-03-10T09:00:00.000Z')");
        connection.execute("UPDATE companies SET receipt_bytes = receipt_bytes + 1 WHERE id = 'sample'");
    });
    EXPECT_EQ(idsOf(service.snapshotOf("mira").attachments), (Names{"linked", "loose"}));
    const auto seen = service.snapshotOf("guest");
    EXPECT_EQ(idsOf(seen.attachments), Names{"linked"});
    EXPECT_EQ(seen.transactions.back().attachmentIDs, std::vector<std::string>{"linked"});

    auto input = SampleBooks::expense();
    input.attachmentIDs = {"loose"};
    ASSERT_EQ(service.as("mira", "POST", "/v1/transactions", Json::encode(input)).status, 200);
    EXPECT_EQ(service.snapshotOf("guest").transactions.back().attachmentIDs, std::vector<std::string>{"loose"});
    EXPECT_EQ(service.problems(), "");
}

}
