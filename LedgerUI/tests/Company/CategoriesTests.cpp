#include <set>

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include "LedgerUI/testing/CompanyUnderTest.h"

namespace {

constexpr auto reorder = "POST v1/categories/reorder";

struct CategoriesUnderTest : CompanyUnderTest {
    CategoriesUnderTest() { openTab("categoriesTab"); }

    /// Holds the row of the one category and lets go over that of the other.
    void drag(const char* name, const char* onto)
    {
        auto& table = screen.find<QTableView>("categoryTable");
        const auto middleOf = [&table](const char* text) {
            const auto& model = *table.model();
            const auto found = model.match(model.index(0, 0), Qt::DisplayRole, QString::fromUtf8(text));
            EXPECT_EQ(found.size(), 1) << text;
            return found.empty() ? QPoint{} : table.visualRect(found.front()).center();
        };
        QTest::mousePress(table.viewport(), Qt::LeftButton, {}, middleOf(name));
        QTest::mouseMove(table.viewport(), (middleOf(name) + middleOf(onto)) / 2);
        QTest::mouseMove(table.viewport(), middleOf(onto));
        QTest::mouseRelease(table.viewport(), Qt::LeftButton, {}, middleOf(onto));
    }
};

}

TEST(Categories, MoveByKeyboardAndKeepTheChosenOneThroughAConflict)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Water");
    under.server.replace(reorder, ServerReply::error(409, "CATEGORY_ORDER_CHANGED"));
    under.screen.keys("Alt+Up");
    under.leaveAlert();
    EXPECT_EQ(
        under.server.requests(reorder).front().body,
        R"({"kind":"expense","parentID":"utilities","orderedIDs":["water","power"],"expectedIDs":["power","water"]})");
    EXPECT_EQ(under.screen.read("categoryTitle"), "Water");
    waitUntil([&] { return !under.store.isBusy(); });
    under.server.replace(reorder, ServerReply::json(companyBooks().json()));
    under.screen.pressRow("categoryTable", "Water");
    under.screen.keys("Alt+Down"); // it is the last of its group
    EXPECT_EQ(under.server.requests(reorder).size(), 1U);
    under.screen.keys("F2");
    EXPECT_EQ(under.screen.focus(), "categoryName.en-US");
}

TEST(Categories, MoveByTheMouseWithinTheirGroupAlone)
{
    CategoriesUnderTest under;
    under.server.replace(reorder, ServerReply::json(companyBooks().json()));
    under.drag("Water", "Rent");
    under.drag("Water", "Water");
    EXPECT_TRUE(under.server.requests(reorder).empty());
    EXPECT_EQ(under.screen.read("categoryTitle"), "Water") << "a press chooses";
    under.drag("Water", "Electricity");
    waitUntil([&] { return !under.server.requests(reorder).empty(); });
    EXPECT_EQ(
        under.server.requests(reorder).front().body,
        R"({"kind":"expense","parentID":"utilities","orderedIDs":["water","power"],"expectedIDs":["power","water"]})");
}

TEST(Categories, LeadToTheEntriesOfTheChosenOne)
{
    CategoriesUnderTest under;
    EXPECT_FALSE(under.screen.shows("categoryInLedgerButton")) << "none is chosen yet";
    std::vector<PageLink> links;
    auto& page = under.screen.find<CompanyView>("companyView");
    QObject::connect(&page, &PageView::linkPressed, &page, [&](const PageLink& link) { links.push_back(link); });
    under.screen.pressRow("categoryTable", "Utilities");
    under.screen.press("categoryInLedgerButton");
    ASSERT_EQ(links.size(), 1U);
    EXPECT_EQ(links[0].action, PageAction::showEntries);
    EXPECT_EQ(links[0].entries, LedgerFilter{.categoryIDs = {"utilities"}});
}

TEST(Categories, ShowAGripBeforeTheRowUnderThePointerWhileTheyCanBeMoved)
{
    CategoriesUnderTest under;
    auto& table = under.screen.find<QTableView>("categoryTable");
    const auto paintedBefore = [&](int row) {
        const QRect strip{4, table.rowViewportPosition(row) + 1, 12, table.rowHeight(row) - 4};
        const auto image = table.viewport()->grab(strip).toImage();
        std::set<QRgb> colors;
        for (int x = 0; x < image.width(); ++x)
            for (int y = 0; y < image.height(); ++y)
                colors.insert(image.pixel(x, y));
        return colors.size() > 1;
    };
    const auto point = [&](int row) {
        QTest::mouseMove(table.viewport(), QPoint{200, table.rowViewportPosition(row) + table.rowHeight(row) / 2});
    };
    point(0);
    point(1);
    EXPECT_TRUE(paintedBefore(1));
    EXPECT_FALSE(paintedBefore(2));
    under.screen.fill("categorySearch", "e");
    point(0);
    point(1);
    EXPECT_FALSE(paintedBefore(1)) << "a narrowed list has no order to change";
}

TEST(Categories, AreMadeWithTheNamesThatWereTyped)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Rent");
    under.screen.press("companyPrimary");
    EXPECT_EQ(under.screen.focus(), "categoryName.en-US");
    under.screen.type("Rent");
    under.screen.keys("Return");
    EXPECT_TRUE(under.screen.says("Another category of the group has this name."));
    under.screen.fill("categoryName.en-US", "Parking");
    auto after = companyBooks();
    after.category("parking", "expense", "Parking");
    under.server.replace("POST v1/categories",
                         ServerReply::json(R"({"createdCategoryID":"parking","snapshot":)" + after.json() + "}"));
    under.screen.press("categorySave");
    under.screen.waitUntil("it is said", [&] { return under.screen.read("statusSaid") == "Category “Parking” saved"; });
    EXPECT_EQ(under.screen.read("categoryTitle"), "Parking");
    EXPECT_EQ(under.server.requests("POST v1/categories").front().body,
              R"({"kind":"expense","names":{"en-US":"Parking"},"symbol":"tag"})");
}

/// Nobody knows whether the category was made: the form can only send the very same again.
TEST(Categories, LockOnAnUnknownOutcomeAndAreSentAgainAsTheyWere)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Rent");
    under.screen.press("companyPrimary");
    under.screen.type("Parking");
    under.server.answer("POST v1/categories", ServerReply::dropped());
    under.screen.keys("Return");
    under.screen.waitForText("Retry original request");
    under.screen.waitUntil("the retry is offered", [&] { return under.screen.offers("categorySave"); });
    EXPECT_FALSE(under.screen.offers("categoryName.en-US"));
    EXPECT_FALSE(under.screen.shows("alertDialog")) << "the form says it already";
    under.server.replace("POST v1/categories", ServerReply::error(429, "rate_limited"));
    under.screen.press("categorySave");
    under.leaveAlert();
    EXPECT_FALSE(under.screen.offers("categoryName.en-US")) << "that judges the asking, not the category";
    EXPECT_EQ(under.screen.read("categorySave"), "Retry original request");
    auto after = companyBooks();
    after.category("parking", "expense", "Parking");
    under.server.replace("POST v1/categories",
                         ServerReply::json(R"({"createdCategoryID":"parking","snapshot":)" + after.json() + "}"));
    under.screen.press("categorySave");
    under.screen.waitUntil("it is said", [&] { return under.screen.read("statusSaid") == "Category “Parking” saved"; });
    const auto sent = under.server.requests("POST v1/categories");
    ASSERT_EQ(sent.size(), 3U);
    EXPECT_EQ(sent.front().body, sent.back().body);
    EXPECT_TRUE(under.screen.offers("categoryName.en-US"));
}

TEST(Categories, AskBeforeWhatWasTypedIsLeftAndKeepItThroughARefusal)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Rent");
    under.screen.fill("categoryName.en-US", "Office rent");
    under.server.replace("PATCH v1/categories/rent", ServerReply::error(403, "forbidden"));
    under.screen.press("categorySave");
    under.leaveAlert();
    EXPECT_EQ(under.screen.read("categoryName.en-US"), "Office rent");
    under.screen.pressRow("categoryTable", "Water");
    under.screen.waitFor("questionDialog");
    under.screen.press("questionCancel");
    under.screen.waitUntilGone("questionDialog");
    EXPECT_EQ(under.screen.read("categoryName.en-US"), "Office rent");
    EXPECT_EQ(under.screen.read("statusContext"), "1 unsaved change");
}

TEST(Categories, AreArchivedUnlessOthersStandUnderThem)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Utilities");
    EXPECT_FALSE(under.screen.offers("categoryArchive"));
    under.screen.pressRow("categoryTable", "Rent");
    auto after = companyBooks().build();
    after.categories[3].archived = true;
    under.server.replace("PATCH v1/categories/rent", ServerReply::json(Json::encode(after)));
    under.screen.press("categoryArchive");
    under.screen.waitUntil("it is said", [&] { return under.screen.read("statusSaid") == "Category “Rent” disabled"; });
    EXPECT_EQ(under.screen.read("categoryArchive"), "Restore");
}

TEST(Presets, AreAddedOneAfterTheOtherAndStopAtARefusal)
{
    CategoriesUnderTest under;
    under.screen.press("categoryCatalogButton");
    under.screen.waitForFocus("presetDialog");
    EXPECT_FALSE(under.screen.offers("presetAdd"));
    under.screen.find("presetList").setFocus();
    under.screen.keys("Home Space Down Space");
    EXPECT_EQ(under.screen.read("presetAdd"), "Add 2");
    under.server.answer("POST v1/categories",
                        ServerReply::json(R"({"createdCategoryID":"p1","snapshot":)" + companyBooks().json() + "}"));
    under.server.answer("POST v1/categories", ServerReply::error(403, "forbidden"));
    under.screen.press("presetAdd");
    under.screen.waitUntil("what could not be added stays ticked",
                           [&] { return under.screen.read("presetAdd") == "Add 1"; });
    EXPECT_TRUE(under.screen.says("You do not have permission to perform this action."));
    EXPECT_FALSE(under.screen.shows("alertDialog")) << "the dialog says it already";
}

TEST(Categories, SayWhatHelpsWhereTheServiceHasNoRoom)
{
    CategoriesUnderTest under;
    under.screen.pressRow("categoryTable", "Rent");
    under.screen.press("companyPrimary");
    under.screen.type("Parking");
    under.server.replace("POST v1/categories", ServerReply::error(507, "insufficient_storage"));
    under.screen.keys("Return");
    under.screen.waitForText("no room left");
    EXPECT_EQ(under.screen.read("categorySave"), "Retry original request");
}

/// Under another parent the same preset would be a second category.
TEST(Presets, StayLockedUntilTheServiceJudgesTheOneThatIsInDoubt)
{
    CategoriesUnderTest under;
    const auto add = "POST v1/categories";
    under.screen.press("categoryCatalogButton");
    under.screen.waitForFocus("presetDialog");
    under.screen.pick("presetUnder", "Rent");
    under.screen.find("presetList").setFocus();
    under.screen.keys("Home Space Down Space");
    const auto made = ServerReply::json(R"({"createdCategoryID":"p","snapshot":)" + companyBooks().json() + "}");
    under.server.answer(add, ServerReply::dropped());
    under.server.answer(add, ServerReply::error(429, "rate_limited"));
    under.server.answer(add, made);
    under.server.answer(add, made);
    for (std::size_t attempt = 1; attempt <= 2; ++attempt) {
        under.screen.press("presetAdd");
        under.screen.waitUntil("it failed", [&] {
            return under.server.requests(add).size() == attempt && under.screen.offers("presetAdd");
        });
        EXPECT_EQ(under.screen.read("presetAdd"), "Retry original request");
        EXPECT_FALSE(under.screen.offers("presetUnder") || under.screen.offers("presetList"));
    }
    under.screen.press("presetAdd");
    under.screen.waitUntilGone("presetDialog");
    const auto sent = under.server.requests(add);
    ASSERT_EQ(sent.size(), 4U) << "the one that waited goes last";
    EXPECT_EQ(sent[1].body, sent[0].body);
    EXPECT_EQ(sent[2].body, sent[0].body);
    EXPECT_NE(sent[3].body, sent[0].body);
    EXPECT_EQ(under.screen.read("statusSaid"), "2 categories added");
}

TEST(Categories, TellACompanyThatHasNoneFromASearchThatFindsNone)
{
    CompanyUnderTest under{SnapshotBuilder{}.currentMember(SnapshotBuilder::person("m1", "Dewi", "owner"))};
    under.openTab("categoriesTab");
    under.screen.keys("Ctrl+F");
    EXPECT_EQ(under.screen.focus(), "categorySearch");
    EXPECT_TRUE(under.screen.says("No categories yet"));
    EXPECT_FALSE(under.screen.says("Drag to sort")) << "there is nothing to sort";
    under.screen.fill("categorySearch", "rent");
    EXPECT_TRUE(under.screen.says("No category matches"));
}
