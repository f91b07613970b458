#include "LedgerUI/Presentation/SignIn/AccessFlow.h"

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Records/Requests/AccessCommands.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

AccessFlow::AccessFlow(Purpose purpose) : m_purpose{purpose}, m_state{Asking{}} {}

void AccessFlow::restart()
{
    m_state = Asking{};
}

SignInPage AccessFlow::page() const
{
    if (const auto* asking = std::get_if<Asking>(&m_state)) {
        if (m_purpose == Purpose::reset)
            return SignInPage::forgotten;
        return asking->hasPassword ? SignInPage::joining : SignInPage::invitation;
    }
    const auto* verified = std::get_if<Verified>(&m_state);
    if (!verified)
        return SignInPage::verification;
    if (m_purpose == Purpose::reset)
        return SignInPage::newPassword;
    return verified->verification.existingAccount ? SignInPage::existingAccount : SignInPage::newAccount;
}

std::string_view AccessFlow::purposeName() const
{
    return m_purpose == Purpose::join ? AccessPurpose::join : AccessPurpose::reset;
}

const AccessFlow::Mailed* AccessFlow::mailed() const
{
    if (const auto* verified = std::get_if<Verified>(&m_state))
        return &verified->mailed;
    return std::get_if<Mailed>(&m_state);
}

std::string AccessFlow::email() const
{
    return mailed() ? mailed()->email : std::string{};
}

std::string AccessFlow::invitationCode() const
{
    return mailed() ? mailed()->invitationCode : std::string{};
}

std::string AccessFlow::challengeID() const
{
    return mailed() ? mailed()->challengeID : std::string{};
}

std::string AccessFlow::ticket() const
{
    const auto* verified = std::get_if<Verified>(&m_state);
    return verified ? verified->verification.ticket : std::string{};
}

void AccessFlow::chooseToJoin(bool hasPassword)
{
    m_state = Asking{.hasPassword = hasPassword};
}

void AccessFlow::codeSent(const SignInDraft& asked, const AccessChallenge& challenge)
{
    m_state =
        Mailed{.email = asked.email, .invitationCode = asked.invitationCode, .challengeID = challenge.challengeID};
}

void AccessFlow::verified(const AccessVerification& verification)
{
    require(mailed() != nullptr, "only a code that was mailed is verified");
    m_state = Verified{.mailed = *mailed(), .verification = verification};
}

AccessFlow::Lead AccessFlow::lead(std::string_view locale) const
{
    const auto& words = signInWords();
    if (std::holds_alternative<Mailed>(m_state))
        return {.text = wordIn(locale, words, "codeSentTo"), .name = qString(email())};
    const auto* verified = std::get_if<Verified>(&m_state);
    if (!verified)
        return {};
    if (m_purpose == Purpose::reset)
        return {.text = wordIn(locale, words, "resetLead"), .name = qString(email())};
    const auto company = verified->verification.companyName.value_or("");
    return {.text = wordIn(locale, words, verified->verification.existingAccount ? "joinLead" : "activateLead"),
            .name = qString(company.empty() ? email() : company)};
}
