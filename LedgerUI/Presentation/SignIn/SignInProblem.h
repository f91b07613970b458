#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerUI/Presentation/SignIn/SignInPage.h"

/// Something that keeps a page from going on: a field that is not filled in, or what the service said about it.
struct SignInProblem {
    std::optional<SignInField> field = {}; // none: it concerns the page as a whole
    std::string_view key = {};             // of signInWords(); empty where `refusal` has its own sentence
    std::optional<APIError> refusal = {};

    /// What the person reads.
    [[nodiscard]] QString text(std::string_view locale) const;
};

namespace SignInProblems {

/// What is missing on the page, or cannot be right, in the order of its fields. The draft is a cleaned one.
std::vector<SignInProblem> of(SignInPage page, const SignInDraft& draft);

/// What the page itself says about a failure; nothing for one that belongs into the alert.
std::optional<SignInProblem> of(SignInPage page, const SignInDraft& draft, const Failure& failure);

}
