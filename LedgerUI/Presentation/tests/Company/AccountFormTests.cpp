#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Accounts/AccountForm.h"
#include "LedgerUI/Presentation/Accounts/AccountState.h"
#include "LedgerUI/Presentation/Accounts/SetupChecklist.h"
#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

using enum AccountField;
using AccountRules::Refusal;

Member person(const char* id, const char* name, bool active = true)
{
    auto member = SnapshotBuilder::person(id, name);
    member.active = active;
    member.accountGrants.emplace();
    return member;
}

/// The sample ledger with a clerk beside its owner and the one who has the float.
SnapshotBuilder books()
{
    auto books = sampleLedger();
    auto clerk = person("m3", "Dewi Anggraini");
    clerk.accountGrants = std::vector<AccountGrant>{{"Rizky float", {"view"}}};
    books.member(clerk).member(person("m4", "Gone Away", false));
    return books;
}

AccountDraft floatDraft()
{
    return {.name = " New float ",
            .purpose = AccountGroup::employee,
            .responsibleID = "m3",
            .returnAccountID = "Operating bank",
            .currencies = {"USD", "IDR"},
            .funderIDs = {"m2"}};
}

AccountSubject subjectOf(const LedgerSnapshot& snapshot, const char* account)
{
    return AccountDrafts::of(*snapshot.account(account), snapshot);
}

const AccountUpdate& updateIn(const AccountCommand& command)
{
    return std::get<AccountChange>(command).update;
}

using Problems = std::map<AccountField, Refusal>;

}

TEST(AccountDraft, BecomesTheCommandThatItsPurposeAsksFor)
{
    const AccountSubject fresh;
    const auto create = std::get<AccountCreate>(AccountDrafts::command(fresh, floatDraft()));
    EXPECT_EQ(create, (AccountCreate{.name = "New float",
                                     .currencies = {"USD", "IDR"},
                                     .ownerMemberID = {},
                                     .operatorMemberID = "m3",
                                     .purpose = "employee",
                                     .returnAccountID = "Operating bank",
                                     .fundingMemberIDs = std::vector<std::string>{"m2"}}));
    auto company = floatDraft();
    company.purpose = AccountGroup::company;
    const auto plain = std::get<AccountCreate>(AccountDrafts::command(fresh, company));
    EXPECT_EQ(plain, (AccountCreate{.name = "New float",
                                    .currencies = {"USD", "IDR"},
                                    .ownerMemberID = {},
                                    .operatorMemberID = "m3",
                                    .purpose = {},
                                    .returnAccountID = {},
                                    .fundingMemberIDs = {}}))
        << "what a company account does not have stays in the draft";
}

/// Only what a person changed is sent: what others changed meanwhile stays.
TEST(AccountDraft, SendsOnlyWhatWasChanged)
{
    const auto snapshot = books().build();
    const auto subject = subjectOf(snapshot, "Rizky float");
    auto draft = subject.before;
    EXPECT_FALSE(AccountDrafts::changesAnything(subject, draft));
    draft.acknowledgesHistory = true;
    EXPECT_FALSE(AccountDrafts::changesAnything(subject, draft)) << "an agreement alone changes nothing";
    draft.currencies.push_back("SGD");
    draft.responsibleID = "m3";
    const auto command = AccountDrafts::command(subject, draft);
    AccountUpdate expected;
    expected.addCurrencies = std::vector<std::string>{"SGD"};
    expected.operatorMemberID = "m3";
    expected.acknowledgeHistoryAccess = true;
    EXPECT_EQ(updateIn(command), expected);
    draft.purpose = AccountGroup::company;
    EXPECT_EQ(updateIn(AccountDrafts::command(subject, draft)).purpose, "operating");
}

/// The rules name one thing; the form shows all of them at once.
TEST(AccountDraft, IsJudgedFieldByField)
{
    const auto snapshot = books().build();
    const AccountSubject fresh;
    const auto problems = [&](const AccountDraft& draft) {
        return AccountDrafts::judge(fresh, draft, snapshot).problems;
    };
    EXPECT_EQ(problems(floatDraft()), Problems{});
    AccountDraft empty;
    empty.purpose = AccountGroup::refund;
    EXPECT_EQ(problems(empty), (Problems{{name, Refusal::nameUnsound},
                                         {currencies, Refusal::currencyRequired},
                                         {responsible, Refusal::operatorMissing}}));
    auto wrong = floatDraft();
    wrong.name = "Singapore";
    wrong.responsibleID = "m4";
    wrong.returnAccountID = "Rizky float";
    EXPECT_EQ(problems(wrong), (Problems{{name, Refusal::nameTaken},
                                         {responsible, Refusal::memberInactive},
                                         {returnAccount, Refusal::returnUnsuitable}}));
    wrong.returnAccountID = "nowhere";
    EXPECT_EQ(problems(wrong).at(returnAccount), Refusal::returnUnknown);
}

TEST(AccountDraft, AsksForAgreementBeforeMoreIsSeenByMore)
{
    const auto snapshot = books().build();
    const auto subject = subjectOf(snapshot, "Rizky float");
    auto draft = subject.before;
    draft.responsibleID = "m3";
    draft.currencies.push_back("SGD");
    auto judged = AccountDrafts::judge(subject, draft, snapshot);
    EXPECT_TRUE(judged.widensHistory && judged.widensCurrencies);
    EXPECT_EQ(judged.problems, (Problems{{historyAcknowledgement, Refusal::historyAcknowledgementRequired},
                                         {currencyAcknowledgement, Refusal::currencyAcknowledgementRequired}}));
    draft.acknowledgesHistory = draft.acknowledgesCurrencies = true;
    judged = AccountDrafts::judge(subject, draft, snapshot);
    EXPECT_TRUE(judged.widensHistory && judged.widensCurrencies) << "what was agreed to stays in sight";
    EXPECT_EQ(judged.problems, Problems{});
    draft.responsibleID.clear();
    judged = AccountDrafts::judge(subject, draft, snapshot);
    EXPECT_EQ(judged.problems, (Problems{{responsible, Refusal::exclusiveOperator}}));
    EXPECT_FALSE(judged.widensHistory) << "nobody is named who would see it";
    draft = subject.before;
    draft.purpose = AccountGroup::company;
    EXPECT_EQ(AccountDrafts::judge(subject, draft, snapshot).problems, (Problems{{purpose, Refusal::nonzeroBalance}}));
}

TEST(AccountDraft, SaysBeforeSendingThatTheMemberDoesNotHoldWhatItGives)
{
    auto manager = person("m1", "Mira");
    manager.permissions = {{"viewCompany", "manageCompany"}};
    const auto snapshot = books().currentMember(manager).build();
    const auto subject = subjectOf(snapshot, "Rizky float");
    for (const auto* each : {"m1", "m3"}) {
        auto draft = subject.before;
        draft.responsibleID = each;
        EXPECT_EQ(AccountDrafts::judge(subject, draft, snapshot).problems, (Problems{{responsible, Refusal::notHeld}}));
    }
}

TEST(AccountForm, OffersWhoAndWhatTheAccountCanHave)
{
    const auto snapshot = books().build();
    const AccountSubject fresh;
    auto content = AccountForm::content(fresh, AccountSubmission{{.draft = floatDraft()}}, snapshot, "en-US");
    std::string funders;
    for (const auto& each : content.funders)
        funders +=
            each.name.toStdString() + (each.isOn ? " on" : " off") + (each.whyFixed.isEmpty() ? "; " : " fixed; ");
    EXPECT_EQ(funders, "Mira Owner on fixed; Nguyễn Thị Hương on; Dewi Anggraini off; ");
    std::string returns;
    for (const auto& each : content.returns)
        returns += each.name.toStdString() + "; ";
    EXPECT_EQ(returns, "No account in particular; Operating bank; Singapore; ") << "floats take nothing back";
    EXPECT_EQ(content.people.size(), 3U) << "nobody is put in charge who cannot act";
    EXPECT_EQ(content.consequence.section(QLatin1Char{'.'}, 0, 0),
              QStringLiteral("Dewi Anggraini will be able to: View, Income, Expense, Transfer out, Opening balance, "
                             "Correct"));
    const auto held =
        AccountForm::content(subjectOf(snapshot, "Singapore"),
                             AccountSubmission{{.draft = subjectOf(snapshot, "Singapore").before}}, snapshot, "en-US");
    EXPECT_FALSE(held.isRestricted);
    EXPECT_FALSE(held.currencies.front().isRemovable);
    EXPECT_EQ(held.people.front().id, AccountForm::nobody);
    EXPECT_TRUE(held.consequence.isEmpty());
}

TEST(AccountForm, StandsOnTheRowForNobodyWhereNobodyIsChosen)
{
    const auto snapshot = books().build();
    auto draft = floatDraft();
    draft.returnAccountID.clear();
    const auto petty = AccountForm::content({}, AccountSubmission{{.draft = draft}}, snapshot, "en-US");
    EXPECT_EQ(petty.returnID, petty.returns.front().id) << "from a box without a row the arrow keys lead nowhere";
    draft.responsibleID.clear();
    const auto unnamed = AccountForm::content({}, AccountSubmission{{.draft = draft}}, snapshot, "en-US");
    EXPECT_EQ(unnamed.responsibleID, "") << "somebody has to be named for a float";
    draft.purpose = AccountGroup::company;
    const auto bank = AccountForm::content({}, AccountSubmission{{.draft = draft}}, snapshot, "en-US");
    EXPECT_EQ(bank.responsibleID, bank.people.front().id);
}

TEST(AccountForm, NamesWhoWouldSeeACurrencyMore)
{
    const auto snapshot = books().build();
    const auto subject = subjectOf(snapshot, "Rizky float");
    auto draft = subject.before;
    draft.currencies.push_back("SGD");
    const auto text = [&] {
        const auto content = AccountForm::content(subject, AccountSubmission{{.draft = draft}}, snapshot, "en-US");
        return content.currency ? content.currency->text.toStdString() : std::string{};
    };
    EXPECT_EQ(text(), "Everyone who sees this account will see SGD too: Nguyễn Thị Hương, Dewi Anggraini.")
        << "all but who is asked";
    draft.currencies.pop_back();
    EXPECT_EQ(text(), "");
}

/// A right that was taken away, or an account that is gone, is said while the form is still open.
TEST(AccountForm, SaysWhatKeepsItFromBeingSentAtAll)
{
    const auto snapshot = books().build();
    const auto subject = subjectOf(snapshot, "Singapore");
    const AccountSubmission editing{{.draft = subject.before}};
    const auto whyNot = [&](const SnapshotBuilder& now) {
        return AccountForm::content(subject, editing, now.build(), "en-US").whyNot.toStdString();
    };
    EXPECT_EQ(whyNot(books()), "");
    auto clerk = books();
    clerk.currentMember(person("m1", "Mira"));
    EXPECT_EQ(whyNot(clerk), "Only those who manage the company set up accounts.");
    EXPECT_EQ(whyNot(::snapshot()), "This account is no longer there, or no longer yours to see.");
}

TEST(AccountState, ArchivesOnlyWhatIsEmptyAndRestoresUnderAFreeName)
{
    const auto now = books().build();
    const auto archiving = AccountStateSubmission{AccountStates::of(*now.account("Singapore"))};
    EXPECT_TRUE(AccountStates::content(archiving, now, "en-US")
                    .whyNot.startsWith(QStringLiteral("The account balance is not zero.")));
    Account closed;
    closed.id = "c";
    closed.name = "Singapore";
    closed.currencies = {"USD"};
    closed.archived = true;
    const auto withClosed = books().account(closed).build();
    auto change = AccountStates::of(*withClosed.account("c"));
    EXPECT_EQ(change.target, AccountStateChange::Target::inUse);
    auto content = AccountStates::content(AccountStateSubmission{change}, withClosed, "en-US");
    EXPECT_EQ(content.nameMessage, QStringLiteral("Another account in use has this name."));
    change.name = "Singapore 2";
    content = AccountStates::content(AccountStateSubmission{change}, withClosed, "en-US");
    EXPECT_TRUE(content.nameMessage.isEmpty() && content.whyNot.isEmpty());
    AccountUpdate expected;
    expected.archived = false;
    expected.name = "Singapore 2";
    EXPECT_EQ(AccountStates::command(change), expected);
}

namespace {

FinancialSettings settings(std::string_view mode)
{
    FinancialSettings settings;
    if (!mode.empty()) {
        settings.bookkeepingStartDate = "2026-01-01";
        settings.initializationMode = mode;
    }
    return settings;
}

/// "startDate-done accounts-due ..." by the actions of the steps, with what comes next.
std::string dump(const std::optional<SetupChecklist>& setup)
{
    std::string steps;
    for (const auto& step : setup ? setup->steps : std::vector<SetupChecklist::Step>{})
        steps += step.link.action + (step.state == SetupChecklist::Step::State::done ? "+ " : "- ");
    return steps;
}

}

TEST(SetupChecklist, LeadsANewCompanyFromNothingToItsFirstEntry)
{
    const auto listOf = [](const SnapshotBuilder& books) {
        return setupChecklist(AccountBook{books.share(), sampleToday}, "en-US");
    };
    auto company = snapshot().settings(settings(""));
    auto list = listOf(company);
    EXPECT_EQ(dump(list), "setStartDate- newAccount- showCategories- openingBalance- ");
    EXPECT_EQ(list->next()->link.page, WorkspacePage::company);
    EXPECT_FALSE(list->steps.back().whyNot.isEmpty()) << "without accounts there is nothing to open";
    company.settings(settings("openingBalances"));
    company.account("bank", {"USD"}).grantAll().category("c", "income", "Sales");
    list = listOf(company);
    EXPECT_EQ(dump(list), "setStartDate+ newAccount+ showCategories+ openingBalance- ");
    EXPECT_EQ(list->progress, QStringLiteral("3 of 4 steps are done"));
    auto fromZero = company;
    fromZero.settings(settings("fromZero"));
    EXPECT_EQ(dump(listOf(fromZero)), "") << "books that began from zero open nothing";
    company.entry("o1", EntryKind::opening, "2026-01-01", {{"bank", "USD", 100}});
    EXPECT_EQ(dump(listOf(company)), "");
    auto clerk = snapshot().currentMember(person("m1", "Clerk"));
    EXPECT_EQ(dump(listOf(clerk)), "") << "only who can do something about it is asked to";
}
