#pragma once

#include <span>
#include <string>
#include <string_view>

#include "LedgerUI/testing/ScreenDriver.h"
#include "Tests/EndToEnd/Stage/BooksOnDisk.h"
#include "Tests/EndToEnd/Stage/Hands.h"
#include "Tests/EndToEnd/Stage/Mailbox.h"
#include "Tests/EndToEnd/Stage/ServiceChild.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

class MainWindow;
class PrivateKeyring;

/// What a story plays on: the program's window, signed out in English, and a running service.
struct Stage {
    StoryTeller& teller;
    ScreenDriver& screen;
    ServiceChild& service;
    BooksOnDisk books;
    Mailbox mail;
    MainWindow& window;
    PrivateKeyring* keyring = nullptr; // open at first; none unless it was asked for

    /// Points the sign-in screen at the service.
    void findTheService();
    /// The same, by another way to it.
    void findTheServiceAt(const QString& address);
    /// From the sign-in screen into the demonstration as one of its people.
    void enterDemonstration(std::string_view profile);
    /// Signs out by the member's menu.
    void signOut();
    /// How many entries the ledger lists.
    [[nodiscard]] int entriesShown() const;
    /// Waits for an alert that says `text`, pictures it, and closes it.
    void readAlert(const QString& title, std::string_view text);
};

/// One feature of the program as one person meets it, through the real window, service and file.
struct Story {
    std::string_view name; // for the command line: "sign-in"
    std::string_view title;
    void (*tell)(Stage&);
    bool needsKeyring = false; // left out without one
};

/// All stories, in the order in which they are shown.
std::span<const Story> stories();

void tellOfSigningIn(Stage& stage);
void tellOfApplying(Stage& stage);
void tellOfJoining(Stage& stage);
void tellOfTheLedger(Stage& stage);
void tellOfAccounts(Stage& stage);
void tellOfCapital(Stage& stage);
void tellOfCapitalInLanguages(Stage& stage);
void tellOfOnlookers(Stage& stage);
void tellOfSharedDividends(Stage& stage);
void tellOfLostCapitalReplies(Stage& stage);
void tellOfLookingAround(Stage& stage);
void tellOfRecording(Stage& stage);
void tellOfTemplates(Stage& stage);
void tellOfReceipts(Stage& stage);
void tellOfReversing(Stage& stage);
void tellOfLanguagesAndSizes(Stage& stage);
void tellOfComingBack(Stage& stage);
/// In a language, with a hand.
void tellOfTheFirstDay(Stage& stage, const std::string& language, Hand hand);
void tellOfStayingSignedIn(Stage& stage);
void tellOfASecondCompany(Stage& stage);
void tellOfLostReplies(Stage& stage);
void tellOfLostWaysIn(Stage& stage);
void tellOfLostEntryReplies(Stage& stage);
void tellOfLookingClosely(Stage& stage);
void tellOfSuddenDeath(Stage& stage);
