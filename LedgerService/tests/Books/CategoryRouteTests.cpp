#include <algorithm>
#include <string>

#include <fmt/core.h>
#include <gtest/gtest.h>

#include "LedgerCore/Domain/Categories/CategoryDirectory.h"
#include "LedgerCore/Domain/Categories/EnterpriseCategoryCatalog.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/testing/SampleBooks.h"
#include "LedgerService/testing/TestService.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/categories";

/// The sample (income "sales", expenses "rent" and the archived "fax") managed by guest.
class CategoryRoutes : public testing::Test {
protected:
    CategoryRoutes()
    {
        m_service.write([](Connection& connection) {
            connection.execute(R"(UPDATE members SET permissions = '["manageCompany"]' WHERE id = 'guest')");
        });
    }
    ~CategoryRoutes() override { EXPECT_EQ(m_service.problems(), ""); }

    HttpAnswer send(const std::string& body, const std::string& by = "guest")
    {
        return m_service.as(by, "POST", path, body);
    }
    HttpAnswer change(const std::string& id, const std::string& body)
    {
        return m_service.as("guest", "PATCH", fmt::format("{}/{}", path, id), body);
    }
    HttpAnswer reorder(const CategoryReorder& command)
    {
        return m_service.as("guest", "POST", "/v1/categories/reorder", Json::encode(command));
    }
    /// The id of a new expense category.
    std::string make(const std::string& name, const std::string& parentID = "")
    {
        CategoryCreate command{
            .kind = "expense", .names = {{"en-US", name}}, .symbol = "tag", .parentID = {}, .presetID = {}};
        command.parentID = parentID;
        const auto answer = send(Json::encode(command));
        EXPECT_EQ(answer.status, 200) << answer.body;
        return Json::decode<CategoryCreationResponse>(answer.body)->createdCategoryID;
    }
    Category category(const std::string& id)
    {
        const auto all = m_service.snapshotOf("rudi").categories;
        return *std::ranges::find(all, id, &Category::id);
    }
    std::vector<std::string> group(const std::string& parentID = "")
    {
        const auto all = m_service.snapshotOf("rudi").categories;
        const CategoryDirectory directory{all};
        std::vector<std::string> ids;
        for (const auto* each : directory.siblings("expense", parentID, ArchivedCategories::leftOut))
            ids.push_back(each->id);
        return ids;
    }

    TestService m_service;
};

TEST_F(CategoryRoutes, MakeCategoriesByHandAndByPreset)
{
    const auto answer = send(R"({"kind":"expense","names":{"en-US":" Paper "},"symbol":"file-text","parentID":null})");
    ASSERT_EQ(answer.status, 200) << answer.body;
    const auto reply = Json::decode<CategoryCreationResponse>(answer.body);
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ(reply->snapshot.categories.back().id, reply->createdCategoryID);
    EXPECT_EQ(reply->snapshot.categories.back().names, (TextMap{{"en-US", "Paper"}}));
    const auto again = send(R"({"kind":"expense","names":{"en-US":"Paper"},"symbol":"file-text"})");
    EXPECT_EQ(Json::decode<CategoryCreationResponse>(again.body)->createdCategoryID, reply->createdCategoryID);
    EXPECT_EQ(send(R"({"kind":"expense","names":{"en-US":"Paper"},"symbol":"tag"})").code(), "conflict");

    const auto& preset = EnterpriseCategoryCatalog::presets().front();
    const auto made =
        send(fmt::format(R"({{"kind":"{}","names":{{}},"symbol":"","presetID":"{}"}})", preset.kind, preset.id));
    ASSERT_EQ(made.status, 200) << made.body;
    const auto id = Json::decode<CategoryCreationResponse>(made.body)->createdCategoryID;
    EXPECT_EQ(category(id).presetID, preset.id);
    EXPECT_EQ(category(id).names.size(), 4u);

    for (const auto* member : {"mira", "rudi"})
        EXPECT_EQ(send(R"({"kind":"expense","names":{"en":"Ink"},"symbol":"tag"})", member).code(), "forbidden");
}

TEST_F(CategoryRoutes, RefuseHostileBodies)
{
    std::string names;
    for (int number = 0; number < 10'000; ++number)
        names += fmt::format(R"("x{}":"a",)", number);
    names.pop_back();
    for (const auto& body :
         {std::string{R"({"kind":"expense","names":{"en-US":"　  "},"symbol":"tag"})"},
          std::string{R"({"kind":"expense","names":{"en-US":"a\u0000b"},"symbol":"tag"})"},
          std::string{R"({"kind":"expense","names":{"en-US":"a\nb"},"symbol":"tag"})"},
          std::string{R"({"kind":"expense","names":{"en-US":"a"},"symbol":"../../etc/passwd"})"},
          std::string{R"({"kind":"expense","names":{"en-US":1},"symbol":"tag"})"},
          std::string{R"({"kind":"EXPENSE","names":{"en-US":"a"},"symbol":"tag"})"},
          std::string{R"({"kind":"expense","names":{"en-US":"a"},"symbol":"tag","presetID":"none"})"},
          fmt::format(R"({{"kind":"expense","names":{{"en-US":"{}"}},"symbol":"tag"}})", std::string(121, 'a')),
          fmt::format(R"({{"kind":"expense","names":{{{}}},"symbol":"tag"}})", names)})
        EXPECT_EQ(send(body).code(), "validation_error") << body.substr(0, 100);
    EXPECT_EQ(m_service.snapshotOf("guest").categories.size(), 3u);
    EXPECT_EQ(change("none", R"({"archived":true})").code(), "not_found");
}

TEST_F(CategoryRoutes, KeepTheTreeOnTwoLevels)
{
    const auto office = make("Office");
    const auto paper = make("Paper", office);
    const auto under = [](const std::string& id) {
        return fmt::format(R"({{"kind":"expense","names":{{"en-US":"New"}},"symbol":"tag","parentID":"{}"}})", id);
    };
    EXPECT_EQ(send(under(paper)).code(), "CATEGORY_PARENT_INVALID");
    EXPECT_EQ(send(under("sales")).code(), "CATEGORY_PARENT_INVALID");
    EXPECT_EQ(send(under("none")).code(), "CATEGORY_PARENT_INVALID");
    EXPECT_EQ(send(under("fax")).code(), "CATEGORY_PARENT_INACTIVE");
    EXPECT_EQ(change(office, R"({"parentID":"rent"})").code(), "CATEGORY_PARENT_INVALID");
    EXPECT_EQ(change(office, R"({"archived":true})").code(), "CATEGORY_HAS_ACTIVE_CHILDREN");
    EXPECT_EQ(change(paper, R"({"archived":true})").status, 200);
    EXPECT_EQ(change(paper, R"({"archived":true})").status, 200) << "sent again";
    EXPECT_EQ(change(paper, R"({"names":{"en-US":"Reams"}})").code(), "CATEGORY_ARCHIVED");
    EXPECT_EQ(change(office, R"({"archived":true})").status, 200);
    EXPECT_EQ(change(paper, R"({"archived":false})").code(), "CATEGORY_PARENT_INACTIVE");
    EXPECT_EQ(change(paper, R"({"archived":false,"parentID":"rent"})").status, 200);
    EXPECT_EQ(category(paper).parentID, "rent");
}

struct Move {
    const char* name;
    const char* body;
    bool toTop;
};

TEST_F(CategoryRoutes, MoveOnlyWhenTheParentIsMeant)
{
    const auto paper = make("Paper", "rent");
    const Move moves[]{
        {"LeftOut", R"({"symbol":"book"})", false},
        {"NotMeant", R"({"parentID":"sales","updateParent":false})", false},
        {"NullNotMeant", R"({"parentID":null,"updateParent":false})", false},
        {"Null", R"({"parentID":null})", true},
        {"MeantWithoutOne", R"({"updateParent":true})", true},
        {"Empty", R"({"parentID":"","updateParent":true})", true},
    };
    for (const auto& each : moves) {
        ASSERT_EQ(change(paper, R"({"parentID":"rent"})").status, 200);
        ASSERT_EQ(change(paper, each.body).status, 200) << each.name;
        EXPECT_EQ(category(paper).parentID.has_value(), !each.toTop) << each.name;
    }
    EXPECT_EQ(category(paper).symbol, "book");
}

TEST_F(CategoryRoutes, ReorderAGroupThatIsStillAsSeen)
{
    const auto office = make("Office");
    const auto travel = make("Travel");
    ASSERT_EQ(group(), (std::vector<std::string>{"rent", office, travel}));
    const CategoryReorder command{"expense", {}, {travel, "rent", office}, {"rent", office, travel}};
    const auto answer = reorder(command);
    ASSERT_EQ(answer.status, 200) << answer.body;
    EXPECT_EQ(group(), (std::vector<std::string>{travel, "rent", office}));
    EXPECT_EQ(reorder(command).status, 200) << "sent again";
    EXPECT_EQ(reorder({"expense", {}, {office, travel, "rent"}, {"rent", office, travel}}).code(),
              "CATEGORY_ORDER_CHANGED");
    EXPECT_EQ(reorder({"expense", {}, {travel, "rent", "sales"}, {travel, "rent", office}}).code(), "validation_error");
    const auto later = make("Later");
    EXPECT_EQ(group().back(), later);
    EXPECT_EQ(reorder({"expense", {}, {office, travel, "rent"}, {travel, "rent", office}}).code(),
              "CATEGORY_ORDER_CHANGED");
}

TEST_F(CategoryRoutes, KeepArchivedCategoriesOutOfNewEntries)
{
    auto rent = SampleBooks::expense(1'000);
    ASSERT_EQ(m_service.as("mira", "POST", "/v1/transactions", Json::encode(rent)).status, 200);
    ASSERT_EQ(change("rent", R"({"archived":true})").status, 200);
    rent.idempotencyKey = "again";
    EXPECT_EQ(m_service.as("mira", "POST", "/v1/transactions", Json::encode(rent)).code(), "CATEGORY_ARCHIVED");
    ASSERT_EQ(change("rent", R"({"archived":false})").code(), "") << "though the sample's categories have no names";
    EXPECT_EQ(m_service.as("mira", "POST", "/v1/transactions", Json::encode(rent)).status, 200);
}

}

}
