#include "LedgerUI/Presentation/Forms/Submission.h"

#include <optional>
#include <string>

#include <gtest/gtest.h>

namespace {

using Sent = Submission<std::string, int>;

Failure refusal(int status, std::string code)
{
    return APIError{.status = status, .code = std::move(code), .message = {}};
}

Sent afterFirst(const Failure& failure)
{
    Sent form{"typed"};
    form.send(7);
    form.fail(failure);
    return form;
}

Sent afterRetry(const Failure& failure)
{
    auto form = afterFirst(Cancelled{});
    form.sendAgain();
    form.fail(failure);
    return form;
}

}

TEST(Submission, IsLockedOnlyWhileTheOutcomeIsUnknown)
{
    EXPECT_TRUE(afterFirst(refusal(0, "NETWORK")).isUncertain());
    EXPECT_TRUE(afterFirst(refusal(502, "HTTP_ERROR")).isUncertain());
    EXPECT_TRUE(afterFirst(Cancelled{}).isUncertain());
    EXPECT_TRUE(afterFirst(refusal(409, "balance_limit")).isEditing());
    EXPECT_TRUE(afterFirst(refusal(401, "unauthorized")).isEditing());
    EXPECT_TRUE(afterFirst(refusal(0, "BUSY")).isEditing());

    EXPECT_TRUE(afterRetry(refusal(0, "BUSY")).isUncertain());
    EXPECT_TRUE(afterRetry(refusal(429, "rate_limited")).isUncertain());
    EXPECT_TRUE(afterRetry(refusal(401, "unauthorized")).isUncertain());
    EXPECT_TRUE(afterRetry(refusal(409, "insufficient_funds")).isEditing());
}

TEST(Submission, HoldsItsContentWhileItIsLockedAndItsRefusalUntilTheNextChange)
{
    auto locked = afterFirst(Cancelled{});
    locked.edit("changed");
    EXPECT_EQ(locked.form(), "typed");
    EXPECT_EQ(locked.sent(), 7);

    auto refused = afterFirst(refusal(409, "balance_limit"));
    EXPECT_TRUE(refused.refusal().has_value());
    refused.edit("changed");
    EXPECT_EQ(refused.form(), "changed");
    EXPECT_FALSE(refused.refusal().has_value());
    EXPECT_EQ(refused.command(), 7);
}

TEST(Submission, AsksForACommandOnlyWhereNoneIsOnItsWayOrOfUnknownOutcome)
{
    const auto isOnItsWay = [](const Sent& form, const int* sent) {
        return form.isSaving() && sent && *sent == 7 && form.command() == 7;
    };
    std::size_t asked = 0;
    const auto answering = [&](std::optional<int> command) {
        return [&asked, command] {
            ++asked;
            return command;
        };
    };
    Sent form{"typed"};
    EXPECT_FALSE(form.submit(answering({})));
    EXPECT_TRUE(form.isEditing());
    EXPECT_TRUE(isOnItsWay(form, form.submit(answering(7))));
    EXPECT_EQ(asked, 2U);

    EXPECT_FALSE(form.submit(answering(8))) << "the reply is awaited";
    form.fail(Cancelled{});
    EXPECT_TRUE(isOnItsWay(form, form.submit(answering(8)))) << "the same goes out again";
    form.succeed();
    EXPECT_FALSE(form.submit(answering(8)));
    EXPECT_EQ(asked, 2U);
}
