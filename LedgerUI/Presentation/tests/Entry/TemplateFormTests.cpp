#include <gtest/gtest.h>

#include "LedgerCore/Domain/testing/SnapshotBuilder.h"
#include "LedgerUI/Presentation/Entry/EntryEdits.h"
#include "LedgerUI/Presentation/Templates/TemplateChoices.h"
#include "LedgerUI/Presentation/Templates/TemplateDrafts.h"
#include "LedgerUI/Presentation/Templates/TemplateForm.h"
#include "LedgerUI/Presentation/Templates/TemplateText.h"

namespace {

using Field = TemplateForm::Field;

SnapshotBuilder books()
{
    auto builder = snapshot();
    builder.account("bank", {"USD", "IDR"}).account("vault", {"USD", "SGD"}).grantAll();
    builder.category("rent", "expense", "Rent");
    return builder;
}

TemplateEntry rent()
{
    TemplateEntry entry;
    entry.kind = "expense";
    entry.note = "Office";
    entry.categoryID = "rent";
    entry.sourceAccountID = "bank";
    entry.currency = "USD";
    entry.amountMinor = 123'456;
    return entry;
}

EntryTemplate monthly(TemplateEntry entry)
{
    EntryTemplate kept;
    kept.id = "t1";
    kept.name = "Office rent";
    kept.entry = std::move(entry);
    kept.recurrence = {.unit = "month", .every = 1, .firstDay = "2026-10-31", .lastDay = {}};
    kept.revision = 2;
    return kept;
}

struct FirstDayCase {
    std::string name;
    std::string entryDay;
    std::string unit;
    std::string firstDay;
};

class FirstDays : public testing::TestWithParam<FirstDayCase> {};

TEST_P(FirstDays, FollowTheEntryThatTheTemplateIsMadeOf)
{
    const auto form = TemplateForm::fresh(rent(), "Rent", GetParam().entryDay, "en-US").withUnit(GetParam().unit);
    EXPECT_EQ(form.firstDay, GetParam().firstDay);
    EXPECT_EQ(form.creation("k", "en-US").recurrence->firstDay, GetParam().firstDay);
}

INSTANTIATE_TEST_SUITE_P(Rhythms, FirstDays,
                         testing::Values(FirstDayCase{"Tomorrow", "2026-12-31", "day", "2027-01-01"},
                                         FirstDayCase{"NextWeek", "2026-11-20", "week", "2026-11-27"},
                                         FirstDayCase{"NextMonth", "2026-12-05", "month", "2027-01-05"},
                                         FirstDayCase{"TheDayOfALongMonth", "2026-10-31", "month", "2026-10-31"},
                                         FirstDayCase{"TheLeapDay", "2028-02-29", "year", "2028-02-29"}),
                         [](const auto& each) { return each.param.name; });

TEST(TemplateForm, KeepsTheFirstDayOfAKnownTemplate)
{
    const auto form = TemplateForm::of(monthly(rent()), "2026-11-20", "en-US").withUnit("week");
    EXPECT_EQ(form.update("en-US").recurrence->firstDay, "2026-10-31");
    EXPECT_EQ(form.update("en-US").expectedRevision, 2);
    EXPECT_EQ(TemplateForm::of(monthly(rent()), "2026-11-20", "en-US").withUnit("").update("en-US").recurrence,
              std::nullopt);
}

TEST(TemplateForm, NamesEachFieldThatIsWrong)
{
    auto form = TemplateForm::fresh(rent(), "Rent", "2026-11-20", "en-US").withUnit("month");
    EXPECT_TRUE(form.messages("en-US").empty());
    form.name = " \n";
    form.amount = "0";
    form.every = "367";
    form.lastDay = "2026-11-19";
    std::vector<Field> wrong;
    for (const auto& [field, message] : form.messages("en-US"))
        wrong.push_back(field);
    EXPECT_EQ(wrong, (std::vector{Field::name, Field::amount, Field::every, Field::lastDay}));
    form.unit.clear();
    EXPECT_EQ(form.messages("en-US").size(), 2U) << "what does not repeat has no rhythm to be wrong";
}

TEST(TemplateForm, ReadsAmountsInTheLanguageAndLeavesBlankOnesOpen)
{
    auto form = TemplateForm::fresh(rent(), "Rent", "2026-11-20", "id-ID");
    EXPECT_EQ(form.amount, "1.234,56");
    form.amount = "2.000,50";
    EXPECT_EQ(form.creation("k", "id-ID").entry.amountMinor, 200'050);
    form.amount = " ";
    EXPECT_EQ(form.creation("k", "id-ID").entry.amountMinor, std::nullopt);
}

TEST(TemplateForm, ChoosesAmongAccountsAndCategoriesOfItsKindAndCurrencies)
{
    auto builder = books();
    builder.account("jar", {"IDR"}).account("till", {"SGD"}).grantAll().category("sales", "income", "Sales");
    const auto snapshot = builder.build();
    const auto accounts = [&](const TemplateEntry& entry) {
        std::string ids;
        for (const auto& each : TemplateChoices::accounts(entry, snapshot, "en-US"))
            ids += each.id + " ";
        return ids;
    };
    const auto destinations = [&](const TemplateEntry& entry) {
        std::string ids;
        for (const auto& each : TemplateChoices::destinations(entry, snapshot, "en-US"))
            ids += each.id + " ";
        return ids;
    };
    EXPECT_EQ(accounts(rent()), "bank vault ");
    auto old = rent();
    old.sourceAccountID = "jar";
    EXPECT_EQ(accounts(old), "bank vault jar ") << "what it says now stays in sight";
    const auto categories = TemplateChoices::categories(rent(), snapshot, "en-US");
    ASSERT_EQ(categories.size(), 2U);
    EXPECT_EQ(categories.front().id, "");
    EXPECT_EQ(categories.back(), (TemplateChoices::CategoryChoice{"rent", QStringLiteral("Rent")}));

    auto exchange = rent();
    exchange.kind = "exchange";
    exchange.targetCurrency = "SGD";
    EXPECT_EQ(destinations(exchange), "vault till ");
    auto transfer = rent();
    transfer.kind = "transfer";
    transfer.targetAccountID = "vault";
    EXPECT_EQ(destinations(transfer), "vault ");
    const auto moved = TemplateForm::fresh(transfer, "Savings", "2026-11-20", "en-US").withAccount("vault", snapshot);
    EXPECT_EQ(moved.entry.targetAccountID, std::nullopt) << "money does not go where it comes from";
    EXPECT_TRUE(moved.messages("en-US").contains(Field::target));
    const auto back = moved.withTarget("bank").update("en-US").entry;
    EXPECT_EQ(back.sourceAccountID, "vault");
    EXPECT_EQ(back.targetAccountID, "bank");
}

TEST(TemplateForm, RecordsIncomeOnTheAccountThatItArrivesOn)
{
    auto sale = rent();
    sale.kind = "income";
    sale.sourceAccountID.reset();
    auto form = TemplateForm::fresh(sale, "Sale", "2026-11-20", "en-US");
    EXPECT_TRUE(form.messages("en-US").contains(Field::account));
    form = form.withAccount("vault", books().build()).withCategory("");
    EXPECT_TRUE(form.messages("en-US").empty());
    const auto entry = form.creation("k", "en-US").entry;
    EXPECT_EQ(entry.targetAccountID, "vault");
    EXPECT_EQ(entry.sourceAccountID, std::nullopt);
    EXPECT_EQ(entry.categoryID, std::nullopt) << "chosen each time";
}

TEST(TemplateDrafts, GoThroughTheEntryFormAndBack)
{
    TemplateEntry exchange;
    exchange.kind = "exchange";
    exchange.sourceAccountID = "bank";
    exchange.targetAccountID = "vault";
    exchange.currency = "USD";
    exchange.targetCurrency = "SGD";
    exchange.amountMinor = 100'000;
    exchange.targetAmountMinor = 134'500;
    const auto snapshot = books().build();
    for (const auto& entry : {rent(), exchange}) {
        const auto draft = TemplateDrafts::draftOf(monthly(entry), "2026-10-31", "vi-VN");
        const auto opened = EntryEdits::opened({draft.kind, {}, draft}, snapshot, "fresh");
        EXPECT_EQ(opened.draft, draft) << "with the day and its key";
        EXPECT_EQ(opened.draft.idempotencyKey, "occurrence:t1:2026-10-31");
        EXPECT_EQ(TemplateDrafts::entryOf(opened.draft, "vi-VN"), entry);
    }
    const auto plain = TemplateDrafts::draftOf(monthly(rent()), std::nullopt, "en-US");
    EXPECT_EQ(EntryEdits::opened({plain.kind, {}, plain}, snapshot, "fresh").draft.idempotencyKey, "fresh");
}

TEST(TemplateDrafts, MakeNoTemplateOfWhatDoesNotRecurOrIsNotWhole)
{
    auto draft = TemplateDrafts::draftOf(monthly(rent()), std::nullopt, "en-US");
    draft.source.reset();
    EXPECT_EQ(TemplateDrafts::entryOf(draft, "en-US"), std::nullopt);
    draft.source = "bank";
    draft.kind = "transfer";
    EXPECT_EQ(TemplateDrafts::entryOf(draft, "en-US"), std::nullopt) << "nowhere to go";
    draft.kind = "refund";
    EXPECT_EQ(TemplateDrafts::entryOf(draft, "en-US"), std::nullopt);
}

TEST(TemplateText, SaysHowATemplateStands)
{
    auto kept = monthly(rent());
    const auto snapshot = books().build();
    const auto row = [&] {
        const auto rows = TemplateText::rows({kept}, snapshot, "2026-12-05", "en-US");
        QStringList texts;
        for (const auto& cell : rows.front().cells)
            texts << cell.text;
        return texts.join(QStringLiteral(" | ")).replace(QChar{0xA0}, QLatin1Char(' ')).toStdString();
    };
    EXPECT_EQ(row(), "Office rent | Expense · bank · Rent | USD 1,234.56 | Due 31 Oct 2026 (2 times) | Every month");
    kept.settled = {{"2026-10-31", "entry"}, {"2026-11-30", std::nullopt}};
    kept.recurrence->every = 1;
    kept.entry.amountMinor.reset();
    EXPECT_EQ(row(), "Office rent | Expense · bank · Rent | Entered each time | 31 Dec 2026 | Every month");
    kept.recurrence->lastDay = "2026-12-01";
    EXPECT_EQ(row(), "Office rent | Expense · bank · Rent | Entered each time | Over | "
                     "Every month, until 1 Dec 2026");
    kept.recurrence.reset();
    EXPECT_EQ(row(), "Office rent | Expense · bank · Rent | Entered each time |  | Does not repeat");
}

}
