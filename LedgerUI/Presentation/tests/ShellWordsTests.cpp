#include <array>
#include <string_view>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/testing/WordTableAudit.h"
#include "LedgerUI/Presentation/Ledger/LedgerWords.h"
#include "LedgerUI/Presentation/Period/PeriodWords.h"
#include "LedgerUI/Presentation/SignIn/SignInWords.h"
#include "LedgerUI/Presentation/Text/DialogWords.h"
#include "LedgerUI/Presentation/Text/Initials.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"
#include "LedgerUI/Presentation/Workspace/WorkspaceWords.h"

TEST(ShellWords, SpeakFourLanguagesWithTheSamePlaceholders)
{
    for (const auto* table : {&dialogWords(), &ledgerWords(), &periodWords(), &signInWords(), &workspaceWords()})
        EXPECT_EQ(auditWords(*table), std::vector<std::string>{});
}

TEST(ShellWords, NameEveryPageAndEveryDemonstrationProfileInEveryLanguage)
{
    for (const auto page : WorkspacePages::all)
        EXPECT_TRUE(workspaceWords().contains(WorkspacePages::name(page))) << WorkspacePages::name(page);
    for (const auto tag : AppLanguage::supportedLocales) {
        for (const auto profile : DemoIdentity::profiles)
            EXPECT_NE(roleText(profile, tag), qString(profile)) << tag;
        EXPECT_EQ(roleText("auditor", tag), QStringLiteral("auditor"));
    }
}

TEST(Initials, StandForPeopleOfAllFourLanguages)
{
    struct Case {
        const char* name;
        const char* initials;
    };
    for (const auto& [name, initials] : std::to_array<Case>({{"Dewi Anggraini", "DA"},
                                                             {"  rizky   pratama putra ", "RP"},
                                                             {"Sukarno", "S"},
                                                             {"Đặng Thị Thanh Hương", "ĐH"},
                                                             {"王小明", "小明"},
                                                             {"", ""}})) {
        EXPECT_EQ(initialsOf(QString::fromUtf8(name)), QString::fromUtf8(initials)) << name;
    }
}
