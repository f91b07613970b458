#include <algorithm>

#include <QStringList>
#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

namespace {

constexpr auto today = "2026-11-20";
constexpr auto english = "en-US";

CapitalForm opened(std::string_view action, const CapitalSample& sample, std::string_view locale = english)
{
    return CapitalForms::opened({.action = std::string{action}, .currency = "IDR"}, sample.books(), today, locale);
}

CapitalForm typed(CapitalForm form, const CapitalSample& sample, RecordPart part, std::string text,
                  std::string personID = {}, std::string_view locale = english)
{
    return CapitalForms::edited(std::move(form),
                                {.part = part, .text = std::move(text), .personID = std::move(personID)},
                                sample.books(), locale);
}

auto command(const CapitalForm& form, const CapitalSample& sample, std::string key = "key-1",
             std::string_view locale = english)
{
    return CapitalForms::command(form, sample.books(), {today, std::move(key)}, locale);
}

CapitalForm shares(std::vector<std::string> texts, const CapitalSample& sample)
{
    auto form = opened(CapitalAction::setOwnership, sample);
    const char* owners[] = {"c1", "c2", "c3"};
    for (std::size_t at = 0; at < 3; ++at)
        form = typed(std::move(form), sample, RecordPart::people, at < texts.size() ? texts[at] : "0", owners[at]);
    return form;
}

RecordFormContent contentOf(const CapitalForm& form, const CapitalSample& sample, std::string_view locale = english)
{
    return CapitalForms::content(CapitalSubmission{form}, form, sample.books(), today, locale);
}

}

TEST(CapitalForm, RefusesAContributionOfNothingAndKeepsWhyATextCannotBeRead)
{
    const auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c1");
    form = typed(form, sample, RecordPart::account, "Operating bank");
    const auto message = [&](const char* amount) {
        const auto made = command(typed(form, sample, RecordPart::amount, amount), sample);
        return made ? std::string{} : made.error().front().message(english, "IDR").toStdString();
    };
    EXPECT_EQ(message("0.00"), "Enter an actual contribution amount greater than zero.");
    EXPECT_EQ(message(""), "Enter an actual contribution amount greater than zero.");
    const auto made = command(typed(form, sample, RecordPart::amount, "1.005"), sample);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().front().part, RecordPart::amount);
    EXPECT_EQ(made.error().front().money, MoneyError::excessPrecision);
    EXPECT_EQ(message("12,500.50"), "");
}

TEST(CapitalForm, NamesTheLimitThatAnAmountExceeds)
{
    const auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c1");
    form = typed(form, sample, RecordPart::account, "Operating bank");
    const auto said = [&](const char* amount, std::string_view locale) {
        auto judged = typed(form, sample, RecordPart::amount, amount);
        if (const auto made = command(judged, sample); !made)
            judged.problems = made.error();
        const auto content = contentOf(judged, sample, locale);
        return std::ranges::find(content.fields, RecordPart::amount, &RecordField::part)->message.toStdString();
    };
    EXPECT_EQ(said("80,000,000,000", english), "");
    EXPECT_TRUE(said("90,000,000,001", english)
                    .ends_with("The amount exceeds the supported range. The limit is IDR 90,000,000,000."));
    EXPECT_TRUE(said("90,000,000,000", english).ends_with(" The limit is IDR 90,000,000,000."))
        << "with what was contributed before";
    EXPECT_TRUE(said("90,000,000,000", "zh-CN").contains("上限为"));
}

TEST(CapitalForm, BuildsEachCommandOnTheRevisionSeenWithAKeyOfItsOwn)
{
    const auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::amount, "250");
    form = typed(form, sample, RecordPart::account, "Operating bank");
    form = typed(form, sample, RecordPart::person, "c2"); // the amount goes along
    const auto first = command(form, sample, "key-1");
    const auto second = command(form, sample, "key-2");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->expectedRevision, sample.books().capital->revision);
    EXPECT_EQ(first->amountMinor, 25'000);
    EXPECT_EQ(first->participantID, "c2");
    EXPECT_EQ(first->date, today);
    EXPECT_NE(first->idempotencyKey, second->idempotencyKey);
}

TEST(CapitalForm, AddsPercentagesUpToTheBasisPoint)
{
    const auto sample = capitalSample();
    const auto total = [&](std::vector<std::string> texts) {
        return CapitalForms::ratioTotal(shares(std::move(texts), sample), english);
    };
    EXPECT_EQ(total({"50", "50"}), 10000);
    EXPECT_EQ(total({"12.5", "87.5"}), 10000);
    EXPECT_EQ(total({"33.33", "33.33", "33.33"}), 9999);
    EXPECT_TRUE(command(shares({"50", "50"}, sample), sample));
    EXPECT_FALSE(command(shares({"33.33", "33.33", "33.33"}, sample), sample));
    EXPECT_TRUE(contentOf(shares({"50", "50"}, sample), sample).whyNotConfirm.isEmpty());
    EXPECT_EQ(contentOf(shares({"50", "51"}, sample), sample).lines->message,
              QStringLiteral("Percentages must total 100 %. Reduce the total by 1.00\u00a0%."));
    const auto unreadable = command(shares({"12.345", "50"}, sample), sample);
    ASSERT_FALSE(unreadable);
    EXPECT_EQ(unreadable.error().front().personID, "c1");
    EXPECT_EQ(unreadable.error().front().message(english, "IDR"),
              QStringLiteral("Enter a ratio between 0 and 100 with at most two decimals."));
    EXPECT_EQ(total({"150", "-20"}), 13000);
    EXPECT_EQ(contentOf(shares({"150"}, sample), sample).lines->message,
              QStringLiteral("Percentages must total 100 %. Reduce the total by 50.00\u00a0%."));
}

TEST(CapitalForm, PrefillsInTheSeparatorsOfTheInterface)
{
    const auto sample = capitalSample();
    EXPECT_EQ(opened(CapitalAction::setBaseline, sample).amounts.at("c1"), "1,050,000,000");
    EXPECT_EQ(opened(CapitalAction::setBaseline, sample, "id-ID").amounts.at("c1"), "1.050.000.000");
    const auto vietnamese = opened(CapitalAction::setOwnership, sample, "vi-VN");
    EXPECT_EQ(vietnamese.ratios.at("c2"), "38,33");
    EXPECT_EQ(CapitalForms::ratioTotal(vietnamese, "vi-VN"), 10000);
    const auto changed = CapitalForms::rewritten(vietnamese, "vi-VN", english);
    EXPECT_EQ(changed.ratios.at("c2"), "38.33");
}

TEST(CapitalForm, SupersedesTheBaselineAndAsksBeforeItRecordsNothing)
{
    const auto sample = capitalSample();
    auto form = opened(CapitalAction::setBaseline, sample);
    EXPECT_EQ(form.historicalDate, "2025-12-31");
    const auto made = command(form, sample);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->replacesID, "c4");
    EXPECT_FALSE(command(typed(form, sample, RecordPart::people, "-1", "c1"), sample));
    for (const auto* owner : {"c1", "c2", "c3"})
        form = typed(form, sample, RecordPart::people, "0", owner);
    const auto refused = command(form, sample);
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().front().message(english, "IDR"),
              QStringLiteral("If all historical contributions are zero, confirm a zero historical baseline"));
    form = CapitalForms::edited(form, {.part = RecordPart::zero, .isOn = true}, sample.books(), english);
    EXPECT_TRUE(command(form, sample));
}

TEST(CapitalForm, KeepsWhatWasTypedWhenTheRecordsChangeAndTellsWhatIsNew)
{
    auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::setOwnership, sample), sample, RecordPart::people, "40", "c1");
    EXPECT_TRUE(CapitalForms::isCurrent(form, sample.books()));
    sample.ownership("2026-11-20", {{"c1", "60"}, {"c2", "30"}, {"c3", "10"}});
    EXPECT_FALSE(CapitalForms::isCurrent(form, sample.books()));
    form = CapitalForms::initialize(form, sample.books(), today, english, CapitalForms::PreserveDraft::yes);
    EXPECT_TRUE(CapitalForms::isCurrent(form, sample.books()));
    EXPECT_EQ(form.ratios.at("c1"), "40") << "typed";
    EXPECT_EQ(form.ratios.at("c2"), "30") << "never touched";
    EXPECT_EQ(form.newest, (std::map<std::string, std::string>{{"c1", "60"}}));
    EXPECT_EQ(contentOf(form, sample).lines->lines.front().beside, QStringLiteral("Newest: 60"));
}

TEST(CapitalForm, NeverUndoesWhatAnotherOwnerChangedMeanwhile)
{
    auto sample = capitalSample();
    auto owner = typed(opened(CapitalAction::setParticipant, sample), sample, RecordPart::person, "c2");
    owner = typed(owner, sample, RecordPart::name, "Chen");
    auto history = typed(opened(CapitalAction::setBaseline, sample), sample, RecordPart::people, "7", "c1");
    auto dated = typed(history, sample, RecordPart::throughDate, "2025-10-31");
    sample.archiveOwner("c2", "Chen Siyuan");
    sample.baseline("2026-11-20", "IDR", "2025-11-30", {{"c1", "1"}, {"c3", "2"}, {"c2", "800,000,000"}});
    const auto reloaded = [&](const CapitalForm& form) {
        return CapitalForms::initialize(form, sample.books(), today, english, CapitalForms::PreserveDraft::yes);
    };
    owner = reloaded(owner);
    EXPECT_EQ(owner.name, "Chen") << "typed";
    EXPECT_TRUE(owner.archived) << "never touched";
    const auto content = contentOf(owner, sample);
    EXPECT_EQ(content.fields[1].label, QStringLiteral("Name · Newest: Chen Siyuan"));
    EXPECT_EQ(reloaded(history).historicalDate, "2025-11-30");
    EXPECT_EQ(reloaded(dated).historicalDate, "2025-10-31");
    EXPECT_EQ(contentOf(reloaded(dated), sample).fields[1].label, QStringLiteral("Through · Newest: 30 November 2025"));
    const auto vietnamese = CapitalForms::rewritten(reloaded(dated), english, "vi-VN");
    EXPECT_TRUE(contentOf(vietnamese, sample, "vi-VN").fields[1].label.contains(QStringLiteral("30 tháng 11")));
}

TEST(CapitalForm, SaysEveryRefusalSomewhere)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").owner("Chen");
    sample.baseline("2026-11-20", "IDR", "2026-11-20", {{"c1", "7"}, {"c2", "0"}});
    const auto refused = [&](CapitalForm form) {
        auto made = command(form, sample);
        form.problems = made ? std::vector<CapitalProblem>{} : std::move(made.error());
        return contentOf(form, sample);
    };
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c1");
    form = typed(typed(form, sample, RecordPart::account, "Operating bank"), sample, RecordPart::amount, "5");
    EXPECT_TRUE(refused(form).problem.startsWith(QStringLiteral("The historical contribution range overlaps")))
        << "a day that the baseline covers takes no contribution";
    form = typed(opened(CapitalAction::setBaseline, sample), sample, RecordPart::people, "90,000,000,000.00", "c1");
    EXPECT_TRUE(refused(form).problem.isEmpty());
    form = typed(form, sample, RecordPart::people, "0.01", "c2");
    EXPECT_FALSE(refused(form).problem.isEmpty()) << "a minor unit past the limit of the sum";
}

TEST(CapitalForm, KeepsAnAmountInTheCurrencyThatItWasMeantIn)
{
    auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c3");
    form = typed(form, sample, RecordPart::currency, "USD");
    form = typed(form, sample, RecordPart::amount, "1,000");
    for (auto& account : sample.books().accounts)
        std::erase(account.currencies, "USD");
    sample.archiveOwner("c3", "Nguyễn Thị Thanh Hương");
    form = CapitalForms::initialize(form, sample.books(), today, english, CapitalForms::PreserveDraft::yes);
    EXPECT_EQ(form.currency, "") << "never replaced by another one";
    EXPECT_EQ(form.amounts.at(""), "1,000") << "waits for another owner";
    const auto made = command(form, sample);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error()[1].message(english, "IDR"), QStringLiteral("Choose a currency."));

    auto dollars = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::account, "Operating bank");
    sample.books().accounts.back().currencies.emplace_back("IDR");
    sample.books().accounts.front().archived = true;
    dollars = CapitalForms::initialize(dollars, sample.books(), today, english, CapitalForms::PreserveDraft::yes);
    EXPECT_EQ(dollars.accountID, "") << "the other account is not put in its place";
}

TEST(CapitalForm, ConfirmsAZeroBaselineForOneCurrency)
{
    const auto sample = capitalSample();
    auto form = CapitalForms::opened({.action = std::string{CapitalAction::setBaseline}, .currency = "USD"},
                                     sample.books(), today, english);
    form = typed(form, sample, RecordPart::throughDate, "2025-12-31");
    form = CapitalForms::edited(form, {.part = RecordPart::zero, .isOn = true}, sample.books(), english);
    EXPECT_TRUE(command(form, sample));
    EXPECT_FALSE(command(typed(form, sample, RecordPart::currency, "CNY"), sample));
}

TEST(CapitalForm, FreezesThePreviewWithTheCommand)
{
    auto sample = capitalSample();
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c1");
    form = typed(form, sample, RecordPart::account, "Operating bank");
    EXPECT_TRUE(contentOf(form, sample).preview.isEmpty()) << "there is nothing yet that could be sent";
    form = typed(form, sample, RecordPart::amount, "7");
    CapitalSubmission submission{form};
    submission.send(*command(form, sample));
    submission.fail(Failure{APIError{.status = 0, .code = std::string{ClientCode::network}, .message = {}}});
    ASSERT_TRUE(submission.isUncertain());
    sample.books().accounts.front().archived = true; // what could be sent now no longer matters
    const auto shown = CapitalForms::content(submission, form, sample.books(), "2026-11-21", english);
    EXPECT_EQ(shown.preview, QStringLiteral("Records IDR\u00a07 from Budi Santoso in Operating bank."));
    EXPECT_EQ(shown.foot, QStringLiteral("Recorded on 20 November 2026"));
    submission.sendAgain();
    EXPECT_EQ(submission.command()->idempotencyKey, "key-1");
}

TEST(CapitalForm, OffersAMemberToOneOwnerOnly)
{
    auto sample = capitalSample();
    sample.owner("Mira", "m1");
    const auto members = [&](const CapitalForm& form) {
        const auto content = contentOf(form, sample);
        const auto field = std::ranges::find(content.fields, RecordPart::member, &RecordField::part);
        return field->choices.size();
    };
    auto form = opened(CapitalAction::setParticipant, sample);
    EXPECT_EQ(members(form), 1U) << "nobody is left to choose";
    const auto mira = sample.books().capital->participants.back().id;
    form = typed(form, sample, RecordPart::person, mira);
    EXPECT_EQ(form.name, "Mira");
    EXPECT_EQ(members(form), 2U);
    const auto made = command(typed(form, sample, RecordPart::name, "  "), sample);
    ASSERT_FALSE(made);
    EXPECT_EQ(made.error().front().part, RecordPart::name);
}

TEST(CapitalForm, SaysThatAnotherCurrencyClearedWhatWasTyped)
{
    const auto sample = capitalSample();
    const QString said = QStringLiteral("The currency has changed: what was typed in the other one was cleared.");
    auto form = typed(opened(CapitalAction::contribute, sample), sample, RecordPart::person, "c1");
    const auto notice = [&](const CapitalForm& shown) { return contentOf(shown, sample).notice; };
    EXPECT_EQ(notice(typed(form, sample, RecordPart::currency, "USD")), QString{}) << "nothing was typed";
    form = typed(form, sample, RecordPart::amount, "250");
    EXPECT_EQ(typed(form, sample, RecordPart::currency, "IDR"), form) << "the same one was chosen again";
    form = typed(form, sample, RecordPart::currency, "USD");
    EXPECT_EQ(notice(form), said);
    EXPECT_EQ(notice(typed(form, sample, RecordPart::note, "First round")), said);
    EXPECT_EQ(notice(typed(form, sample, RecordPart::amount, "2")), QString{});

    auto baseline = opened(CapitalAction::setBaseline, sample);
    EXPECT_EQ(notice(typed(baseline, sample, RecordPart::currency, "USD")), QString{}) << "the records said it all";
    baseline = typed(baseline, sample, RecordPart::people, "7", "c3");
    EXPECT_EQ(notice(typed(baseline, sample, RecordPart::currency, "USD")), said);
}

TEST(CapitalForm, SaysWhatIsWrongWithARowAsSoonAsItIsLeft)
{
    const auto sample = capitalSample();
    const auto said = [&](std::string_view action, const char* text) {
        const auto form = typed(opened(action, sample), sample, RecordPart::people, text, "c2");
        return contentOf(CapitalForms::leftAmount(form, "c2", english), sample).lines->lines[1].message.toStdString();
    };
    EXPECT_EQ(said(CapitalAction::setBaseline, "700"), "");
    EXPECT_EQ(said(CapitalAction::setBaseline, ""), "") << "it may be on its way";
    EXPECT_EQ(said(CapitalAction::setBaseline, "-7"),
              "Historical contributions cannot be negative. If all are zero, confirm the zero baseline.");
    EXPECT_NE(said(CapitalAction::setBaseline, "seven"), "");
    EXPECT_EQ(said(CapitalAction::setOwnership, "38.33"), "");
    for (const auto* none : {"12.345", "-5", "150"})
        EXPECT_EQ(said(CapitalAction::setOwnership, none),
                  "Enter a ratio between 0 and 100 with at most two decimals.");
}
