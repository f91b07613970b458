#include <algorithm>

#include <QStringList>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Dividends/DividendForm.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

namespace {

constexpr auto today = "2026-11-20";
constexpr auto english = "en-US";

DividendForm opened(DividendRoute route, const CapitalSample& sample, std::string_view locale = english)
{
    route.currency = "IDR";
    return DividendForms::opened(route, sample.books(), locale);
}

DividendForm typed(DividendForm form, const CapitalSample& sample, RecordPart part, std::string text,
                   std::string personID = {})
{
    return DividendForms::edited(std::move(form),
                                 {.part = part, .text = std::move(text), .personID = std::move(personID)},
                                 sample.books(), english);
}

auto command(const DividendForm& form, const CapitalSample& sample)
{
    return DividendForms::command(form, sample.books(), {today, "key-1"}, english);
}

RecordFormContent contentOf(const DividendForm& form, const CapitalSample& sample)
{
    return DividendForms::content(DividendSubmission{form}, form, sample.books(), today, english);
}

DividendForm allocation(const CapitalSample& sample, std::vector<std::string> ratios, std::string total)
{
    auto form = opened({.action = std::string{DividendAction::allocate}}, sample);
    const char* people[] = {"d1", "d2", "d3"};
    for (std::size_t at = 0; at < ratios.size(); ++at)
        form = typed(std::move(form), sample, RecordPart::people, ratios[at], people[at]);
    form = typed(std::move(form), sample, RecordPart::period, "2026 Q4");
    return typed(std::move(form), sample, RecordPart::amount, std::move(total));
}

}

TEST(DividendForm, PreviewsAnAllocationToTheLastMinorUnit)
{
    const auto sample = capitalSample();
    const auto form = allocation(sample, {"33.33", "33.33", "33.34"}, "1.00");
    const auto preview = DividendForms::preview(form, english);
    ASSERT_TRUE(preview);
    EXPECT_EQ((*preview)[0].amountMinor, 33);
    EXPECT_EQ((*preview)[2].amountMinor, 34);
    const auto content = contentOf(form, sample);
    EXPECT_EQ(content.lines->lines[2].mark, QStringLiteral("+0.01 remainder"));
    EXPECT_TRUE(content.whyNotConfirm.isEmpty());
    const auto made = command(form, sample);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->period, "2026 Q4");
    EXPECT_EQ(made->amountMinor, 100);
    EXPECT_EQ(made->shares->size(), 3U);
}

TEST(DividendForm, SharesACurrencyWithoutMinorUnitsInWholeOnes)
{
    const auto sample = capitalSample();
    auto form = typed(allocation(sample, {"33.33", "33.33", "33.34"}, ""), sample, RecordPart::currency, "JPY");
    form = typed(form, sample, RecordPart::amount, "100");
    const auto content = contentOf(form, sample);
    EXPECT_EQ(content.lines->lines[0].amount, QStringLiteral("33"));
    EXPECT_EQ(content.lines->lines[2].amount, QStringLiteral("34"));
    EXPECT_EQ(content.lines->lines[2].mark, QStringLiteral("+1 remainder"));
    const auto refused = command(typed(form, sample, RecordPart::amount, "100.5"), sample);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().front().money, MoneyError::excessPrecision);
}

TEST(DividendForm, FreezesTheSharesWithTheCommand)
{
    auto sample = capitalSample();
    auto form = allocation(sample, {}, "100");
    DividendSubmission submission{form};
    submission.send(*command(form, sample));
    submission.fail(Failure{APIError{.status = 0, .code = std::string{ClientCode::network}, .message = {}}});
    ASSERT_TRUE(submission.isUncertain());
    sample.apply(DividendCommands::setParticipant(DividendContext::of(sample.books()), {today, "key-2"},
                                                  {.id = "d3", .name = "Hương", .percentage = "0", .archived = true},
                                                  english));
    const auto shown = DividendForms::content(submission, form, sample.books(), today, english);
    ASSERT_EQ(shown.lines->lines.size(), 3U);
    EXPECT_EQ(shown.lines->lines[2].amount, QStringLiteral("25"));
    EXPECT_EQ(shown.lines->amountTotal, QStringLiteral("100"));
}

TEST(DividendForm, HasNoPreviewWithoutWholeRatios)
{
    const auto sample = capitalSample();
    for (const auto& ratios :
         {std::vector<std::string>{"33.333", "33.33", "33.34"}, {"33.33", "33.33", "33.33"}, {"120", "0", "0"}}) {
        const auto form = allocation(sample, ratios, "100");
        EXPECT_FALSE(DividendForms::preview(form, english)) << ratios.front();
        EXPECT_FALSE(command(form, sample)) << ratios.front();
        EXPECT_TRUE(contentOf(form, sample)
                        .whyNotConfirm.startsWith(QStringLiteral(
                            "Participating ratios must total 100%, with no more than two decimal places.")));
    }
    EXPECT_TRUE(contentOf(allocation(sample, {"120", "0", "0"}, "100"), sample)
                    .whyNotConfirm.endsWith(QStringLiteral("Reduce the total by 20.00\u00a0%.")));
    EXPECT_FALSE(DividendForms::shares(allocation(sample, {"33.333"}, "100"), english));
}

TEST(DividendForm, GivesASingleParticipantTheWholeTotal)
{
    const auto sample = capitalSample();
    auto form = allocation(sample, {"100"}, "5");
    for (const auto* other : {"d2", "d3"})
        form = DividendForms::edited(form, {.part = RecordPart::zero, .personID = other, .isOn = false}, sample.books(),
                                     english);
    const auto made = command(form, sample);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->shares->size(), 1U);
    EXPECT_EQ(DividendForms::preview(form, english)->front().amountMinor, 500);
}

TEST(DividendForm, BoundsAPaymentByWhatIsUnpaid)
{
    const auto sample = capitalSample();
    auto form = opened({.action = std::string{DividendAction::pay}, .participantID = "d2", .batchID = "d4"}, sample);
    EXPECT_EQ(DividendForms::limit(form, sample.books()), 1'200'000'000);
    EXPECT_EQ(form.amount, "12,000,000") << "the whole rest, until something else is typed";
    EXPECT_EQ(form.accountID, "Operating bank") << "the only one there is";
    EXPECT_TRUE(command(form, sample));
    form = typed(form, sample, RecordPart::amount, "12,000,000.01");
    const auto refused = command(form, sample);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().front().refusal, DividendRefusal::overpayment);
    const auto content = contentOf(form, sample);
    const auto field = std::ranges::find(content.fields, RecordPart::amount, &RecordField::part);
    EXPECT_EQ(field->message, QStringLiteral("At most IDR\u00a012,000,000 is payable."));
    const auto unread = command(typed(form, sample, RecordPart::amount, "12.000.000"), sample);
    ASSERT_FALSE(unread);
    EXPECT_TRUE(unread.error().front().money) << "why it cannot be read";
}

TEST(DividendForm, BoundsAnOffsetByLineAndAdvance)
{
    auto sample = capitalSample();
    auto form = opened({.action = std::string{DividendAction::apply}, .participantID = "d2", .batchID = "d4"}, sample);
    EXPECT_EQ(form.advanceID, "d7") << "the only one of which something is left";
    EXPECT_EQ(DividendForms::limit(form, sample.books()), 800'000'000) << "8 of the advance, 12 of the line";
    EXPECT_TRUE(command(typed(form, sample, RecordPart::amount, "8,000,000"), sample));
    const auto tooMuch = typed(form, sample, RecordPart::amount, "8,000,000.01");
    EXPECT_FALSE(command(tooMuch, sample));
    EXPECT_FALSE(command(typed(form, sample, RecordPart::amount, "0"), sample));
    const auto said = [&] {
        const auto content = contentOf(DividendForms::reloadLatest(tooMuch, sample.books(), english), sample);
        return std::ranges::find(content.fields, RecordPart::amount, &RecordField::part)->message.toStdString();
    };
    EXPECT_EQ(said(), "At most IDR\u00a08,000,000 is left.") << "of the advance";
    sample.pay("2026-11-20", "d4", "d2", "5,000,000", "Operating bank");
    EXPECT_EQ(said(), "At most IDR\u00a07,000,000 is payable.") << "of the line";
}

TEST(DividendForm, OffersTheWholeRestOfWhatIsChosenInsteadUntilAnAmountIsTyped)
{
    auto sample = capitalSample();
    auto form = opened({.action = std::string{DividendAction::pay}, .participantID = "d1", .batchID = "d10"}, sample);
    EXPECT_EQ(form.amount, "29,025,000");
    form = typed(form, sample, RecordPart::batch, "d4");
    EXPECT_EQ(form.amount, "56,250,000") << "not the rest of the other allocation";
    form = typed(typed(form, sample, RecordPart::amount, "5"), sample, RecordPart::batch, "d10");
    EXPECT_EQ(form.amount, "5");

    sample.advance("2026-11-01", "d2", "IDR", "600", "Operating bank"); // d11, beside d7
    form = opened({.action = std::string{DividendAction::apply}, .participantID = "d2", .batchID = "d4"}, sample);
    EXPECT_EQ(form.amount, "") << "which of two advances is not said yet";
    form = typed(form, sample, RecordPart::advance, "d11");
    EXPECT_EQ(form.amount, "600");
    EXPECT_EQ(typed(form, sample, RecordPart::advance, "d7").amount, "8,000,000");
}

TEST(DividendForm, DropsWhatCanNoLongerBeChosen)
{
    auto sample = capitalSample();
    const auto form =
        opened({.action = std::string{DividendAction::pay}, .participantID = "d2", .batchID = "d4"}, sample);
    sample.pay("2026-11-20", "d4", "d2", "12,000,000", "Operating bank");
    EXPECT_FALSE(DividendForms::isCurrent(form, sample.books()));
    const auto reloaded = DividendForms::reloadLatest(form, sample.books(), english);
    EXPECT_EQ(reloaded.batchID, "");
    EXPECT_EQ(reloaded.amount, form.amount) << "what stands in the form is the person's";
    const auto refused = command(reloaded, sample);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().front().part, RecordPart::batch);
}

/// The amount was meant for what was chosen: another account or advance is the person's to choose.
TEST(DividendForm, PutsNothingInThePlaceOfWhatIsGone)
{
    auto sample = capitalSample();
    sample.advance("2026-11-01", "d2", "IDR", "5", "Operating bank");
    auto form = opened({.action = std::string{DividendAction::returnAdvance}, .advanceID = "d7"}, sample);
    form = typed(form, sample, RecordPart::amount, "7,000,000");
    sample.giveBack("2026-11-20", "d7", "8,000,000", "Operating bank");
    form = DividendForms::reloadLatest(form, sample.books(), english);
    EXPECT_EQ(form.advanceID, "") << "not the only one that is left";
    EXPECT_EQ(typed(form, sample, RecordPart::note, "As agreed").advanceID, "");

    form = DividendForms::opened({.action = std::string{DividendAction::advance}, .currency = "USD"}, sample.books(),
                                 english);
    form = typed(form, sample, RecordPart::account, "Operating bank");
    sample.books().accounts.front().archived = true;
    form = typed(form, sample, RecordPart::note, "As agreed");
    EXPECT_EQ(form.accountID, "") << "not the other one";
    EXPECT_EQ(typed(form, sample, RecordPart::note, "As agreed in May").accountID, "");
}

TEST(DividendForm, ShowsACommandOfUnknownOutcomeAsItWasSent)
{
    auto sample = capitalSample();
    const auto sent = [&](DividendForm form) {
        DividendSubmission submission{form};
        submission.send(*command(form, sample));
        submission.fail(Failure{APIError{.status = 0, .code = std::string{ClientCode::network}, .message = {}}});
        return submission;
    };
    const auto payment =
        sent(opened({.action = std::string{DividendAction::pay}, .participantID = "d2", .batchID = "d4"}, sample));
    auto whole = opened({.action = std::string{DividendAction::returnAdvance}, .advanceID = "d7"}, sample);
    const auto returned = sent(typed(whole, sample, RecordPart::amount, "8,000,000"));
    // Both were carried out, and the books of now say so.
    sample.pay("2026-11-20", "d4", "d2", "12,000,000", "Operating bank");
    sample.giveBack("2026-11-20", "d7", "8,000,000", "Operating bank");
    for (const auto& submission : {payment, returned}) {
        const auto shown = DividendForms::content(submission, submission.form(), sample.books(), "2026-11-20", english);
        const auto amount = std::ranges::find(shown.fields, RecordPart::amount, &RecordField::part);
        EXPECT_EQ(amount->message, QString{}) << "it was within its limit";
        ASSERT_EQ(shown.equation.size(), 4U);
        EXPECT_TRUE(shown.equation.back().amount.endsWith(amount->value)) << "the rest that was to be settled";
    }
}

TEST(DividendForm, KeepsTypedRatiosWhenTheDefaultsChange)
{
    auto sample = capitalSample();
    auto form = allocation(sample, {"50"}, "100");
    sample.apply(DividendCommands::setParticipant(DividendContext::of(sample.books()), {today, "key-2"},
                                                  {.id = "d1", .name = "Budi Santoso", .percentage = "60"}, english));
    form = DividendForms::reloadLatest(form, sample.books(), english);
    EXPECT_EQ(form.ratios.at("d1"), "50");
    EXPECT_EQ(form.newest.at("d1"), "60");
    EXPECT_EQ(contentOf(form, sample).lines->lines.front().mark, QStringLiteral("Newest: 60"));
    form = DividendForms::withDefaultRatios(form, sample.books(), english);
    EXPECT_EQ(form.ratios.at("d1"), "60");
    EXPECT_EQ(form.amount, "100");
}

TEST(DividendForm, NeverUndoesWhatAnotherOwnerChangedMeanwhile)
{
    auto sample = capitalSample();
    auto person = opened({.action = std::string{DividendAction::setParticipant}, .participantID = "d1"}, sample);
    person = typed(person, sample, RecordPart::name, "Budi S.");
    auto whole = opened({.action = std::string{DividendAction::pay}, .participantID = "d2", .batchID = "d4"}, sample);
    auto part = typed(whole, sample, RecordPart::amount, "11,000,000");
    auto shared = allocation(sample, {}, "100");
    sample.apply(DividendCommands::setParticipant(
        DividendContext::of(sample.books()), {today, "key-2"},
        {.id = "d1", .name = "Budi Santoso", .percentage = "60", .archived = true}, english));
    sample.pay("2026-11-20", "d4", "d2", "2,000,000", "Operating bank").participant("A fourth", "0");
    person = DividendForms::reloadLatest(person, sample.books(), english);
    EXPECT_EQ(person.name, "Budi S.") << "typed";
    EXPECT_EQ(person.ratio, "60") << "never touched";
    EXPECT_TRUE(person.archived);
    EXPECT_EQ(DividendForms::reloadLatest(whole, sample.books(), english).amount, "10,000,000")
        << "the whole rest is another one now";
    EXPECT_EQ(DividendForms::reloadLatest(part, sample.books(), english).amount, "11,000,000");
    shared = DividendForms::reloadLatest(shared, sample.books(), english);
    EXPECT_EQ(shared.leftOut, (std::set<std::string>{sample.books().dividends->participants.back().id}));
}

/// Participants and ratios are spoken of where they stand in the form; the service's own answer goes before that.
TEST(DividendForm, SaysWhatToCheckInNewerRecords)
{
    const auto sample = capitalSample();
    const auto said = [&](std::string_view action, bool isRefused) {
        auto form = opened({.action = std::string{action}, .participantID = "d2", .batchID = "d4"}, sample);
        DividendSubmission submission{form};
        if (isRefused) {
            submission.send({});
            submission.fail(Failure{APIError{.status = 409, .code = "dividend_revision_conflict", .message = {}}});
        }
        form.needsReload = true;
        submission.adopt(form);
        return DividendForms::content(submission, form, sample.books(), today, english).conflict.toStdString();
    };
    constexpr auto ratios = "The information has been updated by another action. Load the latest participants and "
                            "ratios, then review them before saving.";
    constexpr auto amounts = "Dividend records have changed. Refresh and check the amounts before trying again.";
    for (const auto action :
         {DividendAction::allocate, DividendAction::setParticipant, DividendAction::fillFromOwnership}) {
        EXPECT_EQ(said(action, false), ratios) << action;
        EXPECT_EQ(said(action, true), amounts) << action;
    }
    for (const auto action : {DividendAction::pay, DividendAction::reverse, DividendAction::cancelBatch})
        EXPECT_EQ(said(action, false), amounts) << action;
}

TEST(DividendForm, PaysAnAdvanceInACurrencyThatAnAccountHolds)
{
    const auto sample = capitalSample();
    const auto open = [&](const char* currency) {
        return DividendForms::opened({.action = std::string{DividendAction::advance}, .currency = currency},
                                     sample.books(), english);
    };
    EXPECT_EQ(open("CNY").currency, "IDR");
    EXPECT_EQ(open("USD").currency, "USD");
}

/// An advance that was sent in dollars stays one in dollars, also where none can be paid any more.
TEST(DividendForm, PutsNoOtherCurrencyBehindAnAmountThatWasSent)
{
    auto sample = capitalSample();
    auto form = DividendForms::opened(
        {.action = std::string{DividendAction::advance}, .participantID = "d2", .currency = "USD"}, sample.books(),
        english);
    form = typed(form, sample, RecordPart::account, "Operating bank");
    const auto sent = command(typed(form, sample, RecordPart::amount, "600"), sample);
    ASSERT_TRUE(sent);
    for (auto& account : sample.books().accounts)
        std::erase(account.currencies, "USD");

    form = DividendForms::restored(*sent, sample.books(), english);
    EXPECT_EQ(form.currency, "USD");
    EXPECT_EQ(form.amount, "600.00");
    const auto content = contentOf(form, sample);
    const auto currency = std::ranges::find(content.fields, RecordPart::currency, &RecordField::part);
    EXPECT_EQ(currency->chosen, "USD");
    EXPECT_TRUE(RecordDrafts::find(currency->choices, "USD")) << "it is in sight";
    EXPECT_FALSE(command(form, sample)) << "no account pays it";

    form = DividendForms::reloadLatest(form, sample.books(), english);
    EXPECT_EQ(form.currency, "") << "to be chosen by a person";
    EXPECT_EQ(DividendForms::leftAmount(form, {}, english).problems, form.problems) << "nothing is wrong with it yet";
    const auto refused = command(form, sample);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().front().part, RecordPart::account);
    EXPECT_EQ(refused.error().back().part, RecordPart::currency);
}

TEST(DividendForm, OffersAdvancesOfTheParticipantAlone)
{
    auto sample = capitalSample();
    sample.advance("2026-11-01", "d1", "IDR", "5", "Operating bank");
    const auto form = opened({.action = std::string{DividendAction::returnAdvance}, .advanceID = "d7"}, sample);
    EXPECT_EQ(form.participantID, "d2");
    ASSERT_EQ(DividendForms::eligibleAdvances(form, sample.books()).size(), 1U);
    EXPECT_EQ(DividendForms::limit(form, sample.books()), 800'000'000);
    const auto made = command(typed(form, sample, RecordPart::amount, "8,000,000"), sample);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->accountID, "Operating bank");
    EXPECT_EQ(made->currency, "IDR");
}

TEST(DividendForm, SaysThatAnotherCurrencyClearedTheAmount)
{
    const auto sample = capitalSample();
    auto form = allocation(sample, {"45", "30", "25"}, "100");
    EXPECT_EQ(typed(form, sample, RecordPart::currency, "IDR"), form) << "the same one was chosen again";
    form = typed(form, sample, RecordPart::currency, "USD");
    EXPECT_EQ(contentOf(form, sample).notice,
              QStringLiteral("The currency has changed: what was typed in the other one was cleared."));
    EXPECT_EQ(contentOf(typed(form, sample, RecordPart::amount, "9"), sample).notice, QString{});
}

TEST(DividendForm, SaysWhatIsWrongWithARatioAsSoonAsItIsLeft)
{
    const auto sample = capitalSample();
    const auto said = [&](const char* ratio) {
        const auto form = allocation(sample, {"45", ratio, "25"}, "100");
        return contentOf(DividendForms::leftAmount(form, "d2", english), sample).lines->lines[1].message.toStdString();
    };
    EXPECT_EQ(said("30"), "");
    EXPECT_EQ(said("101"), "Enter a ratio between 0 and 100 with at most two decimals.");
    EXPECT_EQ(said("33.333"), "Enter a ratio between 0 and 100 with at most two decimals.");
}
