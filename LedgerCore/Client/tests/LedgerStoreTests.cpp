#include "LedgerCore/Client/Store/LedgerStore.h"

#include <regex>
#include <thread>

#include <QFile>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "LedgerCore/Client/Http/ServiceAddress.h"
#include "LedgerCore/Client/testing/SignalCount.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

struct LanguageChoice {
    const char* name;
    std::optional<std::string> kept;
    std::vector<std::string> system;
    std::optional<std::string> chosen;
    std::string inForce;
};

class LanguageAtStart : public testing::TestWithParam<LanguageChoice> {};

TEST_P(LanguageAtStart, IsTheKeptOneElseTheSystems)
{
    ScriptedServer server;
    RecordingCredentialStore credentials;
    LanguageMemory language{GetParam().kept, GetParam().system};
    FixedClock clock;
    SequentialIdentifiers identifiers;
    const LedgerStore store{
        server.url(),
        {.credentials = credentials, .languageDefaults = language, .clock = clock, .identifiers = identifiers}};
    EXPECT_EQ(store.preferredAppLocale(), GetParam().chosen);
    EXPECT_EQ(store.locale(), GetParam().inForce);
}

INSTANTIATE_TEST_SUITE_P(Choices, LanguageAtStart,
                         testing::Values(LanguageChoice{"Kept", "vi-VN", {"en-US"}, "vi-VN", "vi-VN"},
                                         LanguageChoice{"KeptButUnknown", "fr-FR", {"id_ID"}, {}, "id-ID"},
                                         LanguageChoice{"KeptInShort", "vi", {"id_ID"}, {}, "id-ID"},
                                         LanguageChoice{
                                             "SecondOfTheSystem", {}, {"fr-FR", "vi_VN", "en-US"}, {}, "vi-VN"},
                                         LanguageChoice{"NoneOfTheSystem", {}, {"C"}, {}, "zh-CN"}),
                         [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStore, KeepsTheChosenLanguageAndIgnoresUnknownOnes)
{
    StoreUnderTest test;
    const SignalCount changes{test.store, &LedgerStore::preferredAppLocaleChanged};
    test.store.setAppLanguage("id-ID");
    test.store.setAppLanguage("id-ID");
    test.store.setAppLanguage("fr-FR");
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(test.store.locale(), "id-ID");
    EXPECT_EQ(test.language.chosenLanguage(), "id-ID");
    test.store.setAppLanguage({});
    EXPECT_EQ(test.store.locale(), "en-US");
    EXPECT_FALSE(test.language.chosenLanguage());
}

TEST(LedgerStore, SaysEveryFailureInTheLanguageInForceOrTheOneAskedFor)
{
    StoreUnderTest test;
    test.store.setAppLanguage("vi-VN");
    EXPECT_EQ(test.store.friendly(MoneyError::unsupportedCurrency), "Tiền tệ không được hỗ trợ.");
    EXPECT_EQ(test.store.friendly(APIError{404, "", ""}),
              "Bản ghi không tồn tại hoặc bạn không còn quyền truy cập. Vui lòng làm mới.");
    EXPECT_EQ(test.store.friendly(APIError{404, "", ""}, "en"),
              "The record does not exist or is no longer accessible. Please refresh.");
}

TEST(UserDefaults, KeepTheLanguageInTheirFile)
{
    const QTemporaryDir folder;
    const std::filesystem::path file = folder.filePath(QStringLiteral("settings.ini")).toStdString();
    EXPECT_FALSE(UserDefaults{file}.chosenLanguage());
    EXPECT_TRUE(UserDefaults{file}.setChosenLanguage("zh-CN"));
    EXPECT_EQ(UserDefaults{file}.chosenLanguage(), "zh-CN");
    const QSettings asOthersRead{folder.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat};
    EXPECT_EQ(asOthersRead.value(QStringLiteral("Quillet.interfaceLanguage")), QStringLiteral("zh-CN"));
    EXPECT_TRUE(UserDefaults{file}.setChosenLanguage({}));
    EXPECT_FALSE(UserDefaults{file}.chosenLanguage());
}

TEST(LedgerStore, SaysWhenTheLanguageCannotBeKept)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile{folder.filePath(QStringLiteral("taken"))}.open(QIODevice::WriteOnly));
    UserDefaults defaults{folder.filePath(QStringLiteral("taken/settings.ini")).toStdString()}; // below a plain file
    RecordingCredentialStore credentials;
    FixedClock clock;
    SequentialIdentifiers identifiers;
    LedgerStore store{
        "http://127.0.0.1:1",
        {.credentials = credentials, .languageDefaults = defaults, .clock = clock, .identifiers = identifiers}};
    store.setAppLanguage("id-ID");
    EXPECT_EQ(store.locale(), "id-ID");
    EXPECT_EQ(store.errorMessage(), "Bahasa antarmuka sudah diganti, tetapi pilihan ini tidak dapat disimpan di "
                                    "perangkat ini. Pilih lagi saat aplikasi dibuka kembali.");
}

TEST(RandomIdentifiers, AreLowerCaseUuidsThatDiffer)
{
    RandomIdentifiers identifiers;
    const auto first = identifiers.next();
    EXPECT_TRUE(
        std::regex_match(first, std::regex{"[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"}));
    EXPECT_NE(first, identifiers.next());
}

TEST(ServiceAddress, FallsBackSilentlyFromASettingThatMayNotBeUsed)
{
    EXPECT_EQ(ServiceAddress::choose("https://ledger.example.com"), "https://ledger.example.com");
    for (const auto* unusable : {"", "http://192.168.1.10", "https://ledger.example.com/api", "nonsense"})
        EXPECT_EQ(ServiceAddress::choose(unusable), "http://127.0.0.1:48731");
}

TEST(LedgerStore, OffersTheCategoriesOfItsSnapshot)
{
    StoreUnderTest test;
    EXPECT_TRUE(test.store.entryCategories("income").empty());
    auto member = SnapshotBuilder::person("m1", "Mira", "owner");
    member.selectedCategoryIDs = {{"rent"}};
    test.signIn(
        snapshot().currentMember(member).category("sales", "income", "Sales").category("rent", "expense", "Rent"));
    ASSERT_EQ(test.store.entryCategories("expense").size(), 1U);
    EXPECT_EQ(test.store.entryCategories("expense").front(), &test.store.snapshot()->categories.at(1));
    EXPECT_TRUE(test.store.isCategorySelected("rent"));
    EXPECT_FALSE(test.store.isCategorySelected("sales"));
    EXPECT_TRUE(test.store.canAddCategory("income"));
    EXPECT_FALSE(test.store.canAddCategory("transfer"));
}

TEST(LedgerStoreDeathTest, StopsTheProcessWhenAnotherThreadCalls)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_DEATH(
        {
            StoreUnderTest test;
            std::thread{[&] { test.store.dismissMessages(); }}.join();
        },
        "on its own thread only");
}

TEST(LedgerStore, AllowsNothingWhileSignedOut)
{
    const StoreUnderTest test;
    EXPECT_FALSE(test.store.canViewCompany() || test.store.canManage() || test.store.canExport() ||
                 test.store.canRecord() || test.store.can("view", "bank"));
}

struct Rights {
    const char* name;
    const char* role;
    bool isActive;
    std::vector<std::string> permissions;
    bool viewsCompany;
    bool manages;
    bool exports;
};

class PermissionChecks : public testing::TestWithParam<Rights> {};

TEST_P(PermissionChecks, FollowTheMembersListAndRole)
{
    StoreUnderTest test;
    auto member = SnapshotBuilder::person("m1", "Mira", GetParam().role);
    member.active = GetParam().isActive;
    member.permissions = GetParam().permissions;
    test.signIn(snapshot().currentMember(member));
    EXPECT_EQ(test.store.canViewCompany(), GetParam().viewsCompany);
    EXPECT_EQ(test.store.canManage(), GetParam().manages);
    EXPECT_EQ(test.store.canExport(), GetParam().exports);
}

INSTANTIATE_TEST_SUITE_P(
    Members, PermissionChecks,
    testing::Values(
        Rights{"OwnerWithoutList", "owner", true, {}, false, true, false},
        Rights{"Administrator", "admin", true, {"viewCompany", "manageCompany"}, true, true, false},
        Rights{"AdministratorByName", "admin", true, {}, false, false, false},
        Rights{"Exporter", "finance", true, {"exportData"}, false, false, true},
        Rights{"FormerOwner", "owner", false, {"viewCompany", "manageCompany", "exportData"}, false, false, false}),
    [](const auto& each) { return std::string{each.param.name}; });

struct CapitalRights {
    const char* name;
    std::vector<std::string> permissions;
    std::string allowed; // the checks that hold, in the order below
};

class CapitalChecks : public testing::TestWithParam<CapitalRights> {};

TEST_P(CapitalChecks, EachNeedsItsOwnPermissions)
{
    StoreUnderTest test;
    auto member = SnapshotBuilder::person("m1", "Mira", "finance");
    member.permissions = GetParam().permissions;
    test.signIn(snapshot().currentMember(member));
    std::string allowed;
    const auto note = [&](bool isAllowed, const char* what) { allowed += isAllowed ? what : ""; };
    note(test.store.canViewCapital(), "view ");
    note(test.store.canPostCapital(), "post ");
    note(test.store.canCorrectCapital(), "correct ");
    note(test.store.canExportCapital(), "export ");
    note(test.store.canManageCapital(), "manage ");
    note(test.store.canCopyOwnershipToDividends(), "copy ");
    EXPECT_EQ(allowed, GetParam().allowed);
}

INSTANTIATE_TEST_SUITE_P(
    Members, CapitalChecks,
    testing::Values(CapitalRights{"Viewer", {"viewCapital"}, "view "},
                    CapitalRights{"Poster", {"postCapital"}, "post "},
                    CapitalRights{"Corrector", {"correctCapital", "exportCapital"}, "correct export "},
                    CapitalRights{"CopierWithoutDividends", {"viewCapital", "manageCompany"}, "view manage "},
                    CapitalRights{"Copier", {"viewCapital", "manageCompany", "viewDividends"}, "view manage copy "}),
    [](const auto& each) { return std::string{each.param.name}; });

TEST(LedgerStore, ShowsTheCapitalTabsOfTheFeaturesThatAreOn)
{
    StoreUnderTest test;
    EXPECT_FALSE(test.store.contributionsEnabled() || test.store.dividendsEnabled() ||
                 test.store.showsCapitalNavigation());
    auto books = snapshot().permissions({"manageCompany", "viewCapital", "viewDividends"});
    FinancialSettings settings;
    settings.contributionsEnabled = true;
    books.settings(settings);
    test.signIn(books);
    EXPECT_TRUE(test.store.contributionsEnabled());
    EXPECT_FALSE(test.store.dividendsEnabled());
    EXPECT_EQ(test.store.capitalActiveTabs(),
              (std::vector{CapitalModuleTab::overview, CapitalModuleTab::contributions}));
}

}
