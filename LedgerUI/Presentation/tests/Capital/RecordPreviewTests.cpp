#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Capital/CapitalForm.h"
#include "LedgerUI/Presentation/Dividends/DividendForm.h"
#include "LedgerUI/Presentation/tests/CapitalSample.h"

// What the forms of capital and dividends say that their command does.

namespace {

constexpr auto today = "2026-11-20";
constexpr auto english = "en-US";

std::string previewOf(const CapitalSample& sample, const CapitalRoute& route, const std::vector<RecordEdit>& edits = {})
{
    const auto opened = CapitalForms::opened(route, sample.books(), today, english);
    auto form = opened;
    for (const auto& edit : edits)
        form = CapitalForms::edited(std::move(form), edit, sample.books(), english);
    return CapitalForms::content(CapitalSubmission{form}, opened, sample.books(), today, english).preview.toStdString();
}

std::string previewOf(const CapitalSample& sample, const DividendRoute& route,
                      const std::vector<RecordEdit>& edits = {})
{
    const auto opened = DividendForms::opened(route, sample.books(), english);
    auto form = opened;
    for (const auto& edit : edits)
        form = DividendForms::edited(std::move(form), edit, sample.books(), english);
    return DividendForms::content(DividendSubmission{form}, opened, sample.books(), today, english)
        .preview.toStdString();
}

std::string previewOfReversing(const CapitalSample& sample, std::string movementID)
{
    return previewOf(
        sample, DividendRoute{.action = std::string{DividendAction::reverse}, .movementID = std::move(movementID)});
}

}

TEST(RecordPreview, SaysWhereTheMoneyOfAReversalGoes)
{
    auto sample = capitalSample();
    EXPECT_EQ(previewOf(sample, CapitalRoute{.action = std::string{CapitalAction::reverse}, .contributionID = "c9"}),
              "Takes IDR\u00a0150,000,000 back out of Operating bank.");
    EXPECT_EQ(previewOfReversing(sample, "d9"), "Puts IDR\u00a013,500,000 back into Operating bank.");
    EXPECT_EQ(previewOfReversing(sample, "d8"), "Reverses the offset of IDR\u00a012,000,000 for 陈思远, without cash.");
    sample.giveBack(today, "d7", "1,000,000", "Operating bank"); // d11
    EXPECT_EQ(previewOfReversing(sample, "d11"), "Takes IDR\u00a01,000,000 back out of Operating bank.");
    EXPECT_EQ(previewOfReversing(sample, "d5"), "") << "it is reversed already";
    EXPECT_EQ(previewOf(sample, DividendRoute{.action = std::string{DividendAction::cancelBatch}, .batchID = "d10"}),
              "Cancels the allocation 2026 Q3 of IDR\u00a064,500,000; account balances do not change.");
}

TEST(RecordPreview, SaysWhatBecomesOfAPerson)
{
    auto sample = capitalSample();
    const CapitalRoute owner{.action = std::string{CapitalAction::setParticipant}};
    EXPECT_EQ(previewOf(sample, owner), "") << "a name is wanted first";
    EXPECT_EQ(previewOf(sample, owner, {{.part = RecordPart::name, .text = "Rina"}}), "Adds the owner Rina.");
    EXPECT_EQ(previewOf(sample, owner, {{.part = RecordPart::person, .text = "c2"}}), "Saves the owner 陈思远.");
    EXPECT_EQ(previewOf(sample, owner,
                        {{.part = RecordPart::person, .text = "c2"}, {.part = RecordPart::archived, .isOn = true}}),
              "Archives the owner 陈思远.");
    sample.archiveOwner("c2", "陈思远");
    EXPECT_EQ(previewOf(sample, owner,
                        {{.part = RecordPart::person, .text = "c2"}, {.part = RecordPart::name, .text = "Chen"}}),
              "Saves the owner Chen.")
        << "who is archived already only gets another name";
    const DividendRoute participant{.action = std::string{DividendAction::setParticipant}};
    EXPECT_EQ(previewOf(sample, participant,
                        {{.part = RecordPart::name, .text = "Rina"}, {.part = RecordPart::ratio, .text = "12.5"}}),
              "Adds the participant Rina with a default ratio of 12.50\u00a0%.");
    EXPECT_EQ(previewOf(sample, participant, {{.part = RecordPart::person, .text = "d2"}}),
              "Saves the participant 陈思远 with a default ratio of 30.00\u00a0%.");
}

TEST(RecordPreview, SaysWhichRatiosTheOwnershipMakes)
{
    CapitalSample sample{capitalGround()};
    sample.owner("Budi").owner("Rina").owner("Chen");
    sample.ownership("2026-01-01", {{"c1", "50"}, {"c2", "30"}, {"c3", "20"}});
    sample.participant("Budi", "50").participant("Dewi", "40").participant("Rina", "10");
    const DividendRoute fill{.action = std::string{DividendAction::fillFromOwnership}};
    EXPECT_EQ(previewOf(sample, fill),
              "Default ratios afterwards: Budi 50.00\u00a0%, Dewi 0.00\u00a0%, Rina 30.00\u00a0%, "
              "Chen 20.00\u00a0% (new).");
}
