#include "LedgerUI/Presentation/SignIn/SignInProblem.h"

#include <algorithm>

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerCore/Domain/Text/PasswordRule.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

constexpr int unauthorized = 401;

bool isEmpty(SignInField field, const SignInDraft& draft)
{
    switch (field) {
    case SignInField::companyName:
        return draft.companyName.empty();
    case SignInField::countries:
        return draft.countries.empty();
    case SignInField::name:
        return draft.name.empty();
    case SignInField::email:
        return draft.email.empty();
    case SignInField::password:
        return draft.password.empty();
    case SignInField::invitationCode:
        return draft.invitationCode.empty();
    case SignInField::verificationCode:
        return draft.verificationCode.empty();
    }
    return false;
}

bool choosesPassword(SignInPage page)
{
    return page == SignInPage::registration || page == SignInPage::newAccount || page == SignInPage::newPassword;
}

/// Whoever applies with an invitation joins that company and founds none.
bool mayBeEmpty(const SignInFieldRow& row, SignInPage page, const SignInDraft& draft)
{
    const bool isCompany = row.field == SignInField::companyName || row.field == SignInField::countries;
    return row.missing.empty() || (isCompany && page == SignInPage::registration && !draft.invitationCode.empty());
}

std::string_view passwordProblem(const std::string& password)
{
    const auto refused = PasswordRule::whyNot(password);
    if (!refused)
        return {};
    return *refused == PasswordRule::Refusal::tooShort ? "passwordShort" : "passwordLong";
}

/// What cannot be right about a field that is filled in, as a key; empty when it may be.
std::string_view misfit(SignInField field, SignInPage page, const SignInDraft& draft)
{
    switch (field) {
    case SignInField::companyName:
        return Naming::isName(draft.companyName) ? "" : "companyNameMisfit";
    case SignInField::name:
        return Naming::isName(draft.name) ? "" : "nameMisfit";
    case SignInField::email:
        return Naming::isEmail(draft.email) ? "" : "emailMisfit";
    case SignInField::password:
        return choosesPassword(page) ? passwordProblem(draft.password) : "";
    default:
        return "";
    }
}

bool asksFor(SignInPage page, SignInField field)
{
    const auto fields = signInPageRow(page).fields;
    return std::ranges::find(fields, field, &SignInFieldRow::field) != fields.end();
}

bool isConfirmation(SignInPage page)
{
    return page == SignInPage::newAccount || page == SignInPage::existingAccount || page == SignInPage::newPassword;
}

}

QString SignInProblem::text(std::string_view locale) const
{
    if (!key.empty())
        return wordIn(locale, signInWords(), key);
    return refusal ? qString(refusal->friendlyMessage(locale)) : QString{};
}

std::vector<SignInProblem> SignInProblems::of(SignInPage page, const SignInDraft& draft)
{
    std::vector<SignInProblem> problems;
    for (const auto& row : signInPageRow(page).fields) {
        const bool isMissing = isEmpty(row.field, draft);
        if (isMissing && mayBeEmpty(row, page, draft))
            continue;
        const auto key = isMissing ? row.missing : misfit(row.field, page, draft);
        if (!key.empty())
            problems.push_back({.field = row.field, .key = key});
    }
    return problems;
}

std::optional<SignInProblem> SignInProblems::of(SignInPage page, const SignInDraft& draft, const Failure& failure)
{
    const auto* error = std::get_if<APIError>(&failure);
    if (!error)
        return std::nullopt;
    if (error->code == ServiceCode::mailUnavailable)
        return SignInProblem{.key = "mailUnavailable"};
    if (error->code == ServiceCode::invalidVerification) {
        if (page == SignInPage::verification)
            return SignInProblem{.field = SignInField::verificationCode, .key = "codeWrong"};
        return SignInProblem{.key = "ticketGone"};
    }
    if (error->code == ServiceCode::invalidInvitation && asksFor(page, SignInField::invitationCode))
        return SignInProblem{.field = SignInField::invitationCode, .refusal = *error};
    if (error->code == ServiceCode::emailExists && asksFor(page, SignInField::email))
        return SignInProblem{.field = SignInField::email, .refusal = *error};
    if (error->code == ServiceCode::forbidden && page == SignInPage::registration && draft.invitationCode.empty())
        return SignInProblem{.key = "applicationsClosed"};
    if (error->status == unauthorized && isConfirmation(page))
        return SignInProblem{.field = SignInField::password, .key = "passwordWrong"};
    return std::nullopt;
}
