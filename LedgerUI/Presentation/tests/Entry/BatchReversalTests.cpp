#include "LedgerUI/Presentation/Entry/BatchReversal.h"

#include <gtest/gtest.h>

#include "LedgerUI/Presentation/tests/LedgerSample.h"

namespace {

using Stage = BatchReversal::Item::Stage;

const Failure refused = APIError{.status = 409, .code = "refunds_exist", .message = {}};
const Failure lost = APIError{.status = 0, .code = std::string{ClientCode::network}, .message = {}};

struct Batch {
    explicit Batch(const std::vector<std::string>& ids)
        : held{sampleLedger().share()},
          batch{BatchReversal::of(ids, VisibleBooks{*held}, [](const std::string& /*id*/) { return false; }, "en-US")}
    {
    }
    [[nodiscard]] std::string states() const
    {
        std::string text;
        for (const auto& row : batch.rows(0, *held, "en-US"))
            text += (text.empty() ? "" : " | ") + row.id + " " + row.cells.back().text.toStdString();
        return text;
    }

    SnapshotPointer held;
    BatchReversal batch;
};

}

TEST(BatchReversal, LeavesOutWhatCannotBeReversedAndSaysWhy)
{
    const Batch all{{"e1", "e3", "v1", "gone"}};
    EXPECT_EQ(all.batch.left(), 1U);
    EXPECT_EQ(all.batch.count(Stage::excluded), 3U);
    for (const auto& item : all.batch.items())
        EXPECT_EQ(item.note.isEmpty(), item.stage == Stage::waiting) << item.id;
    EXPECT_EQ(all.batch.rows(0, *all.held, "en-US").front().cells.front().text,
              QStringLiteral("2 Nov 2026, Utilities › Electricity"));
}

TEST(BatchReversal, SendsOneAfterTheOtherAndGoesOnAfterARefusal)
{
    Batch all{{"e1", "e2", "t1"}};
    EXPECT_EQ(all.batch.begin(), "e1");
    EXPECT_EQ(all.batch.begin(), std::nullopt) << "one is on its way";
    all.batch.succeed();
    EXPECT_EQ(all.batch.begin(), "e2");
    EXPECT_TRUE(all.batch.fail(refused, QStringLiteral("It was refunded.")));
    EXPECT_EQ(all.batch.begin(), "t1");
    all.batch.succeed();
    EXPECT_EQ(all.batch.begin(), std::nullopt);
    EXPECT_EQ(all.states(), "e1 Reversed | e2 It was refunded. | t1 Reversed");
}

TEST(BatchReversal, StopsWhereNobodyKnowsAndBeginsThereAgain)
{
    Batch all{{"e1", "e2", "t1"}};
    all.batch.begin();
    all.batch.succeed();
    all.batch.begin();
    EXPECT_FALSE(all.batch.fail(lost, {}));
    EXPECT_EQ(all.states(), "e1 Reversed | e2 Not confirmed | t1 Waiting");
    EXPECT_EQ(all.batch.left(), 2U);
    EXPECT_EQ(all.batch.begin(), "e2");
    EXPECT_FALSE(all.batch.fail(APIError{.status = 429, .code = "rate_limited", .message = {}}, {}));
    EXPECT_EQ(all.batch.items()[1].stage, Stage::unknown)
        << "a refusal of the way there tells nothing of the first one";
    EXPECT_EQ(all.batch.begin(), "e2");
    all.batch.succeed();
    EXPECT_EQ(all.batch.begin(), "t1");
}

/// However many there are, each is sent once, and what a table shows has an end.
TEST(BatchReversal, GoesThroughMoreThanATableShows)
{
    Batch all{std::vector<std::string>(BatchReversal::partSize + 2, "e1")};
    ASSERT_EQ(all.batch.partCount(), 2U);
    const auto size = [&](std::size_t part) { return all.batch.rows(part, *all.held, "en-US").size(); };
    EXPECT_EQ(size(0), BatchReversal::partSize);
    EXPECT_EQ(size(1), 2U);
    EXPECT_EQ(all.batch.openRows(*all.held, "en-US").size(), BatchReversal::partSize);
    std::size_t sent = 0;
    while (all.batch.begin()) {
        ++sent;
        if (sent == 3) {
            EXPECT_FALSE(all.batch.fail(APIError{.status = 429, .code = "rate_limited", .message = {}}, {}));
            EXPECT_EQ(all.batch.left(), BatchReversal::partSize) << "it waits again, at its place";
        } else if (sent == BatchReversal::partSize + 2) {
            EXPECT_EQ(all.batch.sendingAt(), BatchReversal::partSize);
            EXPECT_TRUE(all.batch.fail(refused, {}));
        } else {
            all.batch.succeed();
        }
    }
    EXPECT_EQ(sent, BatchReversal::partSize + 3);
    EXPECT_EQ(all.batch.count(Stage::done), BatchReversal::partSize + 1);
    EXPECT_EQ(all.batch.judged(), BatchReversal::partSize + 2);
    EXPECT_EQ(all.batch.openRows(*all.held, "en-US").size(), 1U);
}
