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
        Story{"looking-around", "Every page and tab", tellOfLookingAround},
        Story{"recording", "Recording an expense", tellOfRecording},
        Story{"templates", "An entry that comes back", tellOfTemplates},
        Story{"receipts", "Receipts of an entry", tellOfReceipts},
        Story{"reversing", "Undoing an entry", tellOfReversing},
        Story{"languages", "Four languages, large and small, light and dark", tellOfLanguagesAndSizes},
        Story{"coming-back", "Leaving and coming back", tellOfComingBack},
        Story{"petty-cash", "Petty cash at two clients, and a right taken away", tellOfPettyCash},
        Story{"second-company", "A second company, and staying signed in", tellOfASecondCompany},
        Story{"lost-replies", "Replies that are lost on the way", tellOfLostReplies},
    };
    return all;
}

void Stage::findTheService()
{
    if (!screen.shows("serviceAddress"))
        screen.press("addressFold");
    screen.fill("serviceAddress", service.address().toStdString());
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
