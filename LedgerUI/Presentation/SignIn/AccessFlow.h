#pragma once

#include <string>
#include <string_view>
#include <variant>

#include <QString>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Presentation/SignIn/SignInPage.h"

/// The way to being signed in by a code from a mail, in three steps. What a step was answered with is held as long as
/// that step lasts, and dropped with it.
class AccessFlow {
public:
    enum class Purpose { join, reset };
    enum class Step { invitation, verification, confirmation };

    explicit AccessFlow(Purpose purpose);

    [[nodiscard]] Purpose purpose() const { return m_purpose; }
    [[nodiscard]] Step step() const { return static_cast<Step>(m_state.index()); }
    [[nodiscard]] SignInPage page() const;
    /// What `startAccess` calls the purpose.
    [[nodiscard]] std::string_view purposeName() const;
    /// Where the code was mailed to; empty before.
    [[nodiscard]] std::string email() const;
    [[nodiscard]] std::string invitationCode() const;
    [[nodiscard]] std::string challengeID() const;
    [[nodiscard]] std::string ticket() const;

    /// Whether an invited person says to have a password, and does without the mail.
    void chooseToJoin(bool hasPassword);
    /// A code is on its way to the address.
    void codeSent(const SignInDraft& asked, const AccessChallenge& challenge);
    /// The code was right.
    void verified(const AccessVerification& verification);
    /// Back to the first step.
    void restart();

    /// The sentence above the fields, and what stands out below it; both empty where there is nothing to say.
    struct Lead {
        QString text;
        QString name;
    };
    [[nodiscard]] Lead lead(std::string_view locale) const;

private:
    struct Asking {
        bool hasPassword = false;
    };
    struct Mailed {
        std::string email;
        std::string invitationCode;
        std::string challengeID;
    };
    struct Verified {
        Mailed mailed;
        AccessVerification verification;
    };

    [[nodiscard]] const Mailed* mailed() const;

    Purpose m_purpose;
    std::variant<Asking, Mailed, Verified> m_state; // in the order of `Step`
};
