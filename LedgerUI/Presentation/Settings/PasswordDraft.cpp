#include "LedgerUI/Presentation/Settings/PasswordDraft.h"

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/PasswordRule.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

PasswordDraft::Messages PasswordDraft::problems(std::string_view locale) const
{
    Messages messages;
    if (current.empty())
        messages[Field::current] = wordIn(locale, settingsWords(), "currentRequired");
    if (const auto refused = PasswordRule::whyNot(chosen))
        messages[Field::chosen] = wordIn(
            locale, settingsWords(), *refused == PasswordRule::Refusal::tooShort ? "passwordShort" : "passwordLong");
    return messages;
}

PasswordDraft::Messages PasswordDraft::refusal(const Failure& failure, std::string_view locale)
{
    const auto* error = std::get_if<APIError>(&failure);
    if (!error || error->code != ServiceCode::invalidVerification)
        return {};
    return {{Field::current, wordIn(locale, settingsWords(), "currentWrong")}};
}
