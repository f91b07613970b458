#include "Tests/EndToEnd/Story.h"

#include <array>

#include <QAbstractItemView>

#include "LedgerUI/Presentation/Text/Words.h"
#include "Tallyfold/MainWindow.h"

std::span<const Story> stories()
{
    static constexpr std::array all{
        Story{"sign-in", "Signing in", tellOfSigningIn},
        Story{"applying", "Applying for a company", tellOfApplying},
        Story{"joining", "Invited, and a forgotten password", tellOfJoining},
        Story{"ledger", "Reading the ledger", tellOfTheLedger},
        Story{"accounts", "Reading the accounts", tellOfAccounts},
        Story{"capital", "Owners' capital and dividends", tellOfCapital},
        Story{"capital-languages", "Capital and dividends in four languages", tellOfCapitalInLanguages},
        Story{"onlookers", "Partners who may look, and who may not", tellOfOnlookers},
        Story{"shared-dividends", "Two people over the same dividends", tellOfSharedDividends},
        Story{"lost-capital-replies", "Replies about capital and dividends that are lost", tellOfLostCapitalReplies},
        Story{"looking-around", "Every page and tab", tellOfLookingAround},
        Story{"looking-closely", "What stands behind the pages", tellOfLookingClosely},
        Story{"recording", "Recording an expense", tellOfRecording},
        Story{"templates", "An entry that comes back", tellOfTemplates},
        Story{"receipts", "Receipts of an entry", tellOfReceipts},
        Story{"reversing", "Undoing an entry", tellOfReversing},
        Story{"languages", "Four languages, large and small, light and dark", tellOfLanguagesAndSizes},
        Story{"coming-back", "Leaving and coming back", tellOfComingBack},
        Story{"first-day-zh-CN", "A company from nothing in Chinese, by mouse",
              [](Stage& stage) { tellOfTheFirstDay(stage, "zh-CN", Hand::mouse); }},
        Story{"first-day-id-ID", "A company from nothing in Indonesian, by mouse",
              [](Stage& stage) { tellOfTheFirstDay(stage, "id-ID", Hand::mouse); }},
        Story{"first-day-vi-VN", "A company from nothing in Vietnamese, by mouse",
              [](Stage& stage) { tellOfTheFirstDay(stage, "vi-VN", Hand::mouse); }},
        Story{"first-day-en-US", "A company from nothing in English, by mouse",
              [](Stage& stage) { tellOfTheFirstDay(stage, "en-US", Hand::mouse); }},
        Story{"second-company", "A second company, and staying signed in", tellOfASecondCompany},
        Story{"first-day-keys-zh-CN", "A company from nothing in Chinese, by keys alone",
              [](Stage& stage) { tellOfTheFirstDay(stage, "zh-CN", Hand::keys); }},
        Story{"first-day-keys-id-ID", "A company from nothing in Indonesian, by keys alone",
              [](Stage& stage) { tellOfTheFirstDay(stage, "id-ID", Hand::keys); }},
        Story{"first-day-keys-vi-VN", "A company from nothing in Vietnamese, by keys alone",
              [](Stage& stage) { tellOfTheFirstDay(stage, "vi-VN", Hand::keys); }},
        Story{"first-day-keys-en-US", "A company from nothing in English, by keys alone",
              [](Stage& stage) { tellOfTheFirstDay(stage, "en-US", Hand::keys); }},
        Story{"staying-signed-in", "A keyring that is open, locked, and gone", tellOfStayingSignedIn, true},
        Story{"lost-replies", "Replies that are lost on the way", tellOfLostReplies},
        Story{"lost-ways-in", "Replies that are lost on the way in", tellOfLostWaysIn},
        Story{"lost-entry-replies", "Replies about entries and an activation that are lost", tellOfLostEntryReplies},
        Story{"sudden-death", "A program that dies in the middle of an entry", tellOfSuddenDeath},
    };
    return all;
}

void Stage::findTheService()
{
    findTheServiceAt(service.address());
}

void Stage::findTheServiceAt(const QString& address)
{
    if (!screen.shows("serviceAddress"))
        screen.press("addressFold");
    screen.fill("serviceAddress", address.toStdString());
}

void Stage::enterDemonstration(std::string_view profile)
{
    findTheService();
    screen.choose("demonstration", "profile-" + std::string{profile});
    screen.waitFor("ledgerTable");
    screen.waitUntil("entries are listed", [this] { return entriesShown() > 0; });
}

void Stage::signOut()
{
    screen.choose("memberButton", "signOut");
    screen.waitFor("signInView");
}

int Stage::entriesShown() const
{
    const auto* const table = window.findChild<QAbstractItemView*>(QStringLiteral("ledgerTable"));
    return table && table->model() ? table->model()->rowCount() : 0;
}

void Stage::readAlert(const QString& title, std::string_view text)
{
    screen.waitFor("alertDialog");
    screen.waitForText(text);
    teller.picture(title);
    screen.press("messageClose");
    screen.waitUntilGone("alertDialog");
}
