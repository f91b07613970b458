#include <gtest/gtest.h>

#include "LedgerUI/Presentation/Records/RecordModel.h"

TEST(RecordModel, TellsInTheToolTipOfARowWhatHasNoRoom)
{
    RecordModel model;
    model.present({.columns = {{.head = QStringLiteral("Owner")},
                               {.head = QStringLiteral("Returned")},
                               {.head = QStringLiteral("Cumulative")}},
                   .rows = {{.id = "ann",
                             .cells = {{.text = QStringLiteral("Ann")},
                                       {.text = QStringLiteral("−1,200")},
                                       {.text = QStringLiteral("90,000")}}},
                            {.id = "bo", .cells = {{.text = QStringLiteral("Bo")}}}}});
    const auto toolTip = [&](int row) { return model.index(row, 0).data(Qt::ToolTipRole).toString(); };
    EXPECT_EQ(toolTip(0), QString{}) << "all of it is to be seen";
    model.tellInToolTips({1, 2});
    EXPECT_EQ(toolTip(0), QStringLiteral("Returned: −1,200\nCumulative: 90,000"));
    EXPECT_EQ(toolTip(1), QString{}) << "there is nothing in these columns";
}
