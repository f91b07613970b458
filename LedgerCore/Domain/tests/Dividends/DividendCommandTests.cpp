#include "LedgerCore/Domain/Dividends/DividendCommands.h"

#include <gtest/gtest.h>

#include "LedgerCore/Domain/Dividends/DividendAccess.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace {

using enum DividendRefusal;
using Built = DividendCommands::Built;

DividendMovement movement(std::string id, std::string kind, std::int64_t amount, std::optional<std::string> entry)
{
    DividendMovement made;
    made.id = std::move(id);
    made.kind = std::move(kind);
    made.participantID = "ann";
    made.currency = "USD";
    made.amountMinor = amount;
    made.date = "2024-04-02";
    made.transactionID = std::move(entry);
    return made;
}

/// 100.00 allocated to Ann and Bo in halves, of which Ann had 20.00 applied from an advance of 30.00; a batch of Bo's
/// alone; Cy is archived.
LedgerSnapshot books()
{
    LedgerSnapshot snapshot;
    auto& member = snapshot.currentMember;
    member.id = "m";
    member.active = true;
    member.permissions = {"manageCompany", "postDividends"};
    member.accountGrants = {{"bank", {"view", "distribution"}}, {"float", {"view", "distribution"}}};
    snapshot.members = {member};
    for (const auto* id : {"bank", "float"}) {
        auto& account = snapshot.accounts.emplace_back();
        account.id = id;
        account.currencies = {"USD", "EUR"};
    }
    snapshot.accounts[1].purpose = "employee";
    auto& entry = snapshot.transactions.emplace_back();
    entry.id = "t1";
    entry.legs = {{"bank", "USD", -3000}};

    auto& state = snapshot.dividends.emplace();
    state.revision = 9;
    state.participants = {{.id = "ann", .name = "Ann", .memberID = "m"},
                          {.id = "bo", .name = "Bo", .memberID = {}},
                          {.id = "cy", .name = "Cy", .memberID = {}, .archived = true}};
    state.batches = {{.id = "q1",
                      .period = "Q1",
                      .currency = "USD",
                      .amountMinor = 10000,
                      .date = "2024-04-01",
                      .createdAt = "",
                      .lines = {{"ann", "Ann", 5000, 5000}, {"bo", "Bo", 5000, 5000}},
                      .cancelledDate = {}}};
    state.batches.push_back(state.batches.front());
    state.batches[1].id = "q2";
    state.batches[1].lines = {{"bo", "Bo", 10000, 10000}};
    state.movements = {movement("a1", "advance", 3000, "t1"), movement("m2", "application", 2000, std::nullopt)};
    state.movements[1].batchID = "q1";
    state.movements[1].advanceID = "a1";
    return snapshot;
}

CommandIssue issue(std::string date = "2024-05-01")
{
    return {.date = std::move(date), .idempotencyKey = "key"};
}

Built allocate(const LedgerSnapshot& snapshot, std::vector<DividendCommands::ShareText> shares,
               std::string amount = "1,000.00", std::string period = "Q2")
{
    return DividendCommands::allocate(
        DividendContext::of(snapshot), issue(),
        {.period = std::move(period), .currency = "USD", .amount = std::move(amount), .shares = std::move(shares)},
        "en");
}

Built advance(const LedgerSnapshot& snapshot, std::string amount, std::string participant = "bo",
              std::string account = "bank", std::string date = "2024-05-01")
{
    return DividendCommands::advance(DividendContext::of(snapshot), issue(std::move(date)),
                                     {.participantID = std::move(participant),
                                      .currency = "USD",
                                      .amount = std::move(amount),
                                      .accountID = std::move(account)},
                                     "en");
}

Built pay(const LedgerSnapshot& snapshot, std::string amount, std::string batch = "q1", std::string participant = "ann",
          std::string account = "bank")
{
    return DividendCommands::pay(DividendContext::of(snapshot), issue(),
                                 {.batchID = std::move(batch),
                                  .participantID = std::move(participant),
                                  .amount = std::move(amount),
                                  .accountID = std::move(account)},
                                 "en");
}

Built apply(const LedgerSnapshot& snapshot, std::string amount, std::string participant = "ann")
{
    return DividendCommands::apply(
        DividendContext::of(snapshot), issue(),
        {.batchID = "q1", .participantID = std::move(participant), .advanceID = "a1", .amount = std::move(amount)},
        "en");
}

Built giveBack(const LedgerSnapshot& snapshot, std::string amount, std::string advanceID = "a1")
{
    return DividendCommands::returnAdvance(
        DividendContext::of(snapshot), issue(),
        {.advanceID = std::move(advanceID), .amount = std::move(amount), .accountID = "bank"}, "en");
}

Built reverse(const LedgerSnapshot& snapshot, const char* id)
{
    return DividendCommands::reverse(DividendContext::of(snapshot, id), issue(), id, "");
}

Built setParticipant(const LedgerSnapshot& snapshot, DividendCommands::Participant participant)
{
    return DividendCommands::setParticipant(DividendContext::of(snapshot), issue(), std::move(participant), "en");
}

/// Undoes the application, so that the advance is whole again.
void undoApplication(LedgerSnapshot& snapshot)
{
    auto& movements = snapshot.dividends->movements;
    movements.push_back(movement("m3", "reversal", 2000, std::nullopt));
    movements[2].reversalOf = "m2";
    movements[1].reversedBy = "m3";
}

TEST(DividendCommand, CarriesOnlyTheFieldsOfItsAction)
{
    EXPECT_EQ(Json::encode(allocate(books(), {{"ann", "33.34"}, {"bo", "66.66"}}).value()),
              R"({"action":"allocate","expectedRevision":9,"date":"2024-05-01","idempotencyKey":"key",)"
              R"("period":"Q2","currency":"USD","amountMinor":100000,"shares":[)"
              R"({"participantID":"ann","ratioBps":3334},{"participantID":"bo","ratioBps":6666}]})");
    EXPECT_EQ(Json::encode(apply(books(), "10").value()),
              R"({"action":"apply","expectedRevision":9,"date":"2024-05-01","idempotencyKey":"key",)"
              R"("participantID":"ann","amountMinor":1000,"batchID":"q1","advanceID":"a1"})");
    EXPECT_EQ(Json::encode(giveBack(books(), "10").value()),
              R"({"action":"return","expectedRevision":9,"date":"2024-05-01","idempotencyKey":"key",)"
              R"("currency":"USD","amountMinor":1000,"accountID":"bank","advanceID":"a1"})");
}

struct CommandCase {
    const char* name;
    Built (*build)(LedgerSnapshot&);
    std::optional<DividendRefusal> refusal;
};

class DividendRule : public testing::TestWithParam<CommandCase> {};

TEST_P(DividendRule, SaysWhatKeepsACommandFromBeingAccepted)
{
    auto snapshot = books();
    const auto built = GetParam().build(snapshot);
    EXPECT_EQ(built.has_value() ? std::nullopt : std::optional{built.error()}, GetParam().refusal);
}

/// Two large batches in dollars, of which the second was cancelled, and 7,000,000,000,000 paid out in advance.
LedgerSnapshot largeBooks()
{
    auto snapshot = books();
    auto& state = *snapshot.dividends;
    state.batches = {state.batches[1], state.batches[1]};
    state.batches[0].amountMinor = 8'000'000'000'000;
    state.batches[0].lines = {{"bo", "Bo", 10000, 8'000'000'000'000}};
    state.batches[1].id = "q3";
    state.batches[1].cancelled = true;
    state.movements = {movement("a1", "advance", 7'000'000'000'000, "t1")};
    return snapshot;
}

void switchOff(LedgerSnapshot& snapshot)
{
    snapshot.financialSettings.emplace();
}

INSTANTIATE_TEST_SUITE_P(
    Settlements, DividendRule,
    testing::Values(
        CommandCase{"PayAllUnpaid", [](auto& s) { return pay(s, "30"); }, std::nullopt},
        CommandCase{"PayOneUnitMore", [](auto& s) { return pay(s, "30.01"); }, overpayment},
        CommandCase{"PayNothing", [](auto& s) { return pay(s, "0"); }, amountNotPositive},
        CommandCase{"PayUnreadable", [](auto& s) { return pay(s, "3O"); }, amountNotPositive},
        CommandCase{"PayNoLine", [](auto& s) { return pay(s, "1", "q2"); }, overpayment},
        CommandCase{"PayFromAFloat", [](auto& s) { return pay(s, "1", "q1", "ann", "float"); }, noAuthority},
        CommandCase{"PayWhileSwitchedOff",
                    [](auto& s) {
                        switchOff(s);
                        return pay(s, "1");
                    },
                    std::nullopt},
        CommandCase{"PayACancelledBatch",
                    [](auto& s) {
                        s.dividends->batches[1].cancelled = true;
                        return pay(s, "1", "q2", "bo");
                    },
                    batchUnavailable},
        CommandCase{"PayAVanishedBatch", [](auto& s) { return pay(s, "1", "gone"); }, batchUnavailable},
        CommandCase{"PayWithoutTheRight",
                    [](auto& s) {
                        s.currentMember.permissions = {"viewDividends"};
                        return pay(s, "1", "gone");
                    },
                    noAuthority},
        CommandCase{"ReturnAVanishedAdvance", [](auto& s) { return giveBack(s, "1", "gone"); }, advanceUnavailable},
        CommandCase{"ApplyTheRest", [](auto& s) { return apply(s, "10"); }, std::nullopt},
        CommandCase{"ApplyPastTheAdvance", [](auto& s) { return apply(s, "10.01"); }, overapplication},
        CommandCase{"ApplyAnothersAdvance", [](auto& s) { return apply(s, "1", "bo"); }, advanceUnavailable},
        CommandCase{"ReturnTheRest", [](auto& s) { return giveBack(s, "10"); }, std::nullopt},
        CommandCase{"ReturnPastTheAdvance", [](auto& s) { return giveBack(s, "10.01"); }, overpayment},
        CommandCase{"ReturnNoAdvance", [](auto& s) { return giveBack(s, "1", "m2"); }, advanceUnavailable},
        CommandCase{"ReturnAReversedAdvance",
                    [](auto& s) {
                        undoApplication(s);
                        auto& movements = s.dividends->movements;
                        movements.push_back(movement("r1", "reversal", 3000, "t1"));
                        movements.back().reversalOf = "a1";
                        movements.front().reversedBy = "r1";
                        return giveBack(s, "1");
                    },
                    advanceUnavailable},
        CommandCase{"SettleInABrokenSection",
                    [](auto& s) {
                        s.dividends->movements[1].amountMinor = 3001;
                        return pay(s, "1");
                    },
                    integrity},
        CommandCase{"CancelInABrokenSection",
                    [](auto& s) {
                        s.dividends->movements[1].amountMinor = 3001;
                        return DividendCommands::cancelBatch(DividendContext::of(s), issue(), "q2", "");
                    },
                    integrity}),
    [](const auto& each) { return std::string{each.param.name}; });

INSTANTIATE_TEST_SUITE_P(Sums, DividendRule,
                         testing::Values(CommandCase{"AllocateUpToTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return allocate(s, {{"ann", "100"}}, "10,000,000,000.00");
                                                     },
                                                     std::nullopt},
                                         CommandCase{"AllocatePastTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return allocate(s, {{"ann", "100"}}, "10,000,000,000.01");
                                                     },
                                                     amountLimit},
                                         CommandCase{"AllocateInAnotherCurrency",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         s.dividends->batches[0].currency = "EUR";
                                                         return allocate(s, {{"ann", "100"}}, "90,000,000,000.00");
                                                     },
                                                     std::nullopt},
                                         CommandCase{"AdvanceUpToTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return advance(s, "20,000,000,000.00");
                                                     },
                                                     std::nullopt},
                                         CommandCase{"AdvancePastTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return advance(s, "20,000,000,000.01");
                                                     },
                                                     amountLimit},
                                         CommandCase{"PayUpToTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return pay(s, "20,000,000,000.00", "q2", "bo");
                                                     },
                                                     std::nullopt},
                                         CommandCase{"PayPastTheLimit",
                                                     [](auto& s) {
                                                         s = largeBooks();
                                                         return pay(s, "20,000,000,000.01", "q2", "bo");
                                                     },
                                                     amountLimit}),
                         [](const auto& each) { return std::string{each.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    Allocations, DividendRule,
    testing::Values(
        CommandCase{"Thirds", [](auto& s) { return allocate(s, {{"ann", "33.33"}, {"bo", "66.67"}}); }, std::nullopt},
        CommandCase{"ThreeDecimals", [](auto& s) { return allocate(s, {{"ann", "33.333"}, {"bo", "66.667"}}); },
                    sharesIncomplete},
        CommandCase{"Short", [](auto& s) { return allocate(s, {{"ann", "99.99"}}); }, sharesIncomplete},
        CommandCase{"NoShares", [](auto& s) { return allocate(s, {}); }, sharesIncomplete},
        CommandCase{"Archived", [](auto& s) { return allocate(s, {{"cy", "100"}}); }, participantUnavailable},
        CommandCase{"NoPeriod", [](auto& s) { return allocate(s, {{"ann", "100"}}, "1", "\u3000"); }, periodRequired},
        CommandCase{"Nothing", [](auto& s) { return allocate(s, {{"ann", "100"}}, "0"); }, amountNotPositive},
        CommandCase{"SwitchedOff",
                    [](auto& s) {
                        switchOff(s);
                        return allocate(s, {{"ann", "100"}});
                    },
                    dividendsDisabled},
        CommandCase{"CancelUnsettled",
                    [](auto& s) { return DividendCommands::cancelBatch(DividendContext::of(s), issue(), "q2", ""); },
                    std::nullopt},
        CommandCase{"CancelSettled",
                    [](auto& s) { return DividendCommands::cancelBatch(DividendContext::of(s), issue(), "q1", ""); },
                    dependencies},
        CommandCase{"CancelOnceSettlementIsUndone",
                    [](auto& s) {
                        undoApplication(s);
                        return DividendCommands::cancelBatch(DividendContext::of(s), issue(), "q1", "");
                    },
                    std::nullopt},
        CommandCase{"Advance", [](auto& s) { return advance(s, "5"); }, std::nullopt},
        CommandCase{"AdvanceBeforeTheLastAction", [](auto& s) { return advance(s, "5", "bo", "bank", "2024-04-01"); },
                    dateOrder},
        CommandCase{"AdvanceBeforeACancellation",
                    [](auto& s) {
                        s.dividends->batches[1].cancelled = true;
                        s.dividends->batches[1].cancelledDate = "2024-05-02";
                        return advance(s, "5");
                    },
                    dateOrder},
        CommandCase{"AdvanceToArchived", [](auto& s) { return advance(s, "5", "cy"); }, participantUnavailable},
        CommandCase{"AdvanceWhileSwitchedOff",
                    [](auto& s) {
                        switchOff(s);
                        return advance(s, "5");
                    },
                    dividendsDisabled}),
    [](const auto& each) { return std::string{each.param.name}; });

INSTANTIATE_TEST_SUITE_P(
    Corrections, DividendRule,
    testing::Values(
        CommandCase{"ReverseApplication", [](auto& s) { return reverse(s, "m2"); }, std::nullopt},
        CommandCase{"ReverseUsedAdvance", [](auto& s) { return reverse(s, "a1"); }, dependencies},
        CommandCase{"ReverseFreedAdvance",
                    [](auto& s) {
                        undoApplication(s);
                        return reverse(s, "a1");
                    },
                    std::nullopt},
        CommandCase{"ReverseTwice",
                    [](auto& s) {
                        undoApplication(s);
                        return reverse(s, "m2");
                    },
                    alreadyReversed},
        CommandCase{"ReverseAReversal",
                    [](auto& s) {
                        undoApplication(s);
                        return reverse(s, "m3");
                    },
                    movementUnavailable},
        CommandCase{"ReverseCashOfAnUnseenAccount",
                    [](auto& s) {
                        undoApplication(s);
                        s.transactions.clear();
                        return reverse(s, "a1");
                    },
                    noAuthority},
        CommandCase{"NewParticipant", [](auto& s) { return setParticipant(s, {.name = "Di", .percentage = "12.5"}); },
                    std::nullopt},
        CommandCase{"RatioPastTheWhole",
                    [](auto& s) { return setParticipant(s, {.name = "Di", .percentage = "100.01"}); }, ratioInvalid},
        CommandCase{"NegativeRatio", [](auto& s) { return setParticipant(s, {.name = "Di", .percentage = "-1"}); },
                    ratioInvalid},
        CommandCase{"NoName", [](auto& s) { return setParticipant(s, {.name = " \u3000", .percentage = "0"}); },
                    nameRequired},
        CommandCase{"MemberOfAnother",
                    [](auto& s) { return setParticipant(s, {.name = "Di", .memberID = "m", .percentage = "0"}); },
                    memberUnavailable},
        CommandCase{"SameMemberKept",
                    [](auto& s) {
                        return setParticipant(
                            s, {.id = "ann", .name = "Anna", .memberID = "m", .percentage = "50", .archived = true});
                    },
                    std::nullopt}),
    [](const auto& each) { return std::string{each.param.name}; });

struct AccessCase {
    const char* name;
    const char* role;
    std::optional<std::vector<std::string>> permissions;
    std::vector<const char*> allowed;
};

class DividendRights : public testing::TestWithParam<AccessCase> {};

TEST_P(DividendRights, DecideWhichCommandsAMemberMaySend)
{
    auto snapshot = books();
    snapshot.currentMember.role = GetParam().role;
    snapshot.currentMember.permissions = GetParam().permissions;
    std::vector<const char*> allowed;
    std::vector<const char*> offered;
    for (const auto* action : {"setParticipant", "allocate", "advance", "reverse", "approve"}) {
        DividendCommand command;
        command.action = action;
        command.accountID = "bank";
        command.currency = "USD";
        command.movementID = "m2";
        if (DividendAccess::canSubmit(command, snapshot))
            allowed.push_back(action);
        if (DividendRules::mayUse(action, snapshot.currentMember))
            offered.push_back(action);
    }
    EXPECT_EQ(allowed, GetParam().allowed);
    EXPECT_EQ(offered, GetParam().allowed) << "what is offered before the form is filled in";
}

using Permissions = std::vector<std::string>;

INSTANTIATE_TEST_SUITE_P(
    Members, DividendRights,
    testing::Values(AccessCase{"OwnerWithoutList", "owner", std::nullopt, {"setParticipant", "allocate", "reverse"}},
                    AccessCase{"AdminWithoutList", "admin", std::nullopt, {}},
                    AccessCase{"Manager", "staff", Permissions{"manageCompany"}, {"setParticipant"}},
                    AccessCase{"Reader", "staff", Permissions{"viewDividends"}, {}},
                    AccessCase{"PosterWhoCannotSee", "staff", Permissions{"postDividends"}, {}},
                    AccessCase{"Poster",
                               "staff",
                               Permissions{"viewDividends", "postDividends"},
                               {"allocate", "advance", "reverse"}}),
    [](const auto& each) { return std::string{each.param.name}; });

struct CashCase {
    const char* name;
    std::optional<std::string> purpose;
    const char* currency;
    bool allowed;
};

class DividendCash : public testing::TestWithParam<CashCase> {};

TEST_P(DividendCash, MovesOnOperatingAccountsThatHoldTheCurrency)
{
    auto snapshot = books();
    snapshot.accounts[0].purpose = GetParam().purpose;
    DividendCommand command;
    command.action = "advance";
    command.accountID = "bank";
    command.currency = GetParam().currency;
    EXPECT_EQ(DividendAccess::canSubmit(command, snapshot), GetParam().allowed);
    EXPECT_EQ(DividendAccess::accounts(snapshot, GetParam().currency).size(), GetParam().allowed ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(Accounts, DividendCash,
                         testing::Values(CashCase{"Ordinary", std::nullopt, "EUR", true},
                                         CashCase{"Operating", "operating", "USD", true},
                                         CashCase{"Employee", "employee", "USD", false},
                                         CashCase{"Refund", "refund", "USD", false},
                                         CashCase{"AnyOtherPurpose", "savings", "USD", false},
                                         CashCase{"CurrencyNotHeld", std::nullopt, "JPY", false}),
                         [](const auto& each) { return std::string{each.param.name}; });

/// Of any client, also one that makes ratios otherwise than from a percentage.
TEST(DividendRules, RefuseARatioThatIsNoneOfAWhole)
{
    const auto refusalOf = [](std::int64_t ratioBps) {
        DividendCommand command;
        command.action = "setParticipant";
        command.name = "Di";
        command.ratioBps = ratioBps;
        command.date = issue().date;
        command.expectedRevision = books().dividends.value().revision;
        return DividendRules::whyNot(command, DividendContext::of(books()));
    };
    EXPECT_EQ(refusalOf(-1), ratioInvalid);
    EXPECT_EQ(refusalOf(0), std::nullopt);
    EXPECT_EQ(refusalOf(10'000), std::nullopt);
    EXPECT_EQ(refusalOf(10'001), ratioInvalid);
}

TEST(DividendCommand, CarriesTextsWithoutTheWhiteSpaceAroundThem)
{
    const auto participant = setParticipant(books(), {.name = "\u3000Di Na \n", .percentage = "0"}).value();
    EXPECT_EQ(participant.name, "Di Na");
    const auto batch = allocate(books(), {{"ann", "100"}}, "1", " Q2\u3000").value();
    EXPECT_EQ(batch.period, "Q2");
    const auto reversal = DividendCommands::reverse(DividendContext::of(books()), issue(), "m2", " \u3000");
    EXPECT_EQ(reversal.value().note, std::nullopt);
}

TEST(DividendRules, BoundASettlementByTheLineAndTheAdvance)
{
    const auto snapshot = books();
    const auto context = DividendContext::of(snapshot);
    DividendCommand command;
    command.action = "apply";
    command.batchID = "q1";
    command.participantID = "ann";
    EXPECT_EQ(DividendRules::limit(command, context), std::nullopt);
    command.advanceID = "a1";
    EXPECT_EQ(DividendRules::limit(command, context), 1000);
    command.action = "pay";
    EXPECT_EQ(DividendRules::limit(command, context), 3000);
    command.action = "allocate";
    EXPECT_EQ(DividendRules::limit(command, context), std::nullopt);
}

TEST(DividendRules, RefuseACommandOnAnotherRevisionOrDay)
{
    const auto snapshot = books();
    auto command = pay(snapshot, "1").value();
    command.date = "2024-05-32";
    EXPECT_EQ(DividendRules::whyNot(command, DividendContext::of(snapshot)), invalidDate);
    command.expectedRevision = 8;
    EXPECT_EQ(DividendRules::whyNot(command, DividendContext::of(snapshot)), staleRevision);
}

}
