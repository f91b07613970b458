#include <array>
#include <string_view>

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Records/DemoIdentity.h"
#include "LedgerCore/Domain/Text/AppLanguage.h"
#include "LedgerCore/Domain/Text/WordTable.h"
#include "LedgerUI/Presentation/Text/NameText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Presentation/Workspace/RoleText.h"
#include "LedgerUI/Presentation/Workspace/WorkspacePage.h"

TEST(ShellWords, NameEveryPageAndEveryDemonstrationProfileInEveryLanguage)
{
    for (const auto& page : WorkspacePages::all())
        EXPECT_TRUE(workspaceWords().contains(page.name)) << page.name;
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
