#include "LedgerUI/Presentation/SignIn/SignInPage.h"

#include <array>

#include <QString>

#include "LedgerUI/Presentation/Text/CopiedText.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

using enum SignInField;

constexpr SignInFieldRow emailRow{email, "email", "emailRequired"};
constexpr SignInFieldRow passwordRow{password, "password", "passwordRequired"};
constexpr SignInFieldRow newPasswordRow{password, "newPassword", "newPasswordRequired"};
constexpr SignInFieldRow activationRow{invitationCode, "activationCode", "activationCodeRequired"};

constexpr std::array loginFields{emailRow, passwordRow};
constexpr std::array registrationFields{
    SignInFieldRow{companyName, "companyName", "companyNameRequired"},
    SignInFieldRow{countries, "countries", "countriesRequired"},
    SignInFieldRow{name, "name", "nameRequired"},
    SignInFieldRow{email, "email", "emailRequired", true},
    SignInFieldRow{password, "password", "newPasswordRequired"},
    SignInFieldRow{invitationCode, "invitationCode", "", true},
};
constexpr std::array invitationFields{emailRow, activationRow};
constexpr std::array joiningFields{emailRow, activationRow, passwordRow};
constexpr std::array forgottenFields{emailRow};
constexpr std::array verificationFields{
    SignInFieldRow{verificationCode, "verificationCode", "verificationCodeRequired"}};
constexpr std::array newAccountFields{SignInFieldRow{name, "name", "nameRequired"}, newPasswordRow};
constexpr std::array existingAccountFields{passwordRow};
constexpr std::array newPasswordFields{newPasswordRow};

constexpr std::array pages{
    SignInPageRow{SignInPage::login, "signIn", "login", "signingIn", "", "", "", loginFields},
    SignInPageRow{SignInPage::registration, "register", "apply", "wait", "", "", "applyHint", registrationFields},
    SignInPageRow{SignInPage::invitation, "sendCode", "sendCode", "wait", "sendCodeHint", "", "", invitationFields},
    SignInPageRow{SignInPage::joining, "signInAndJoin", "signInAndJoin", "wait", "", "", "", joiningFields},
    SignInPageRow{SignInPage::forgotten, "sendCode", "sendCode", "wait", "sendCodeHint", "", "", forgottenFields},
    SignInPageRow{SignInPage::verification, "verifyCode", "verifyCode", "wait", "", "noCodeHint", "",
                  verificationFields},
    SignInPageRow{SignInPage::newAccount, "confirmAccess", "activate", "wait", "", "", "", newAccountFields},
    SignInPageRow{SignInPage::existingAccount, "confirmAccess", "joinCompany", "wait", "", "", "",
                  existingAccountFields},
    SignInPageRow{SignInPage::newPassword, "confirmAccess", "savePassword", "wait", "", "", "", newPasswordFields},
};

}

const SignInPageRow& signInPageRow(SignInPage page)
{
    return pages[static_cast<std::size_t>(page)];
}

SignInDraft cleaned(SignInDraft draft)
{
    draft.companyName = qString(draft.companyName).trimmed().toStdString();
    draft.name = qString(draft.name).trimmed().toStdString();
    draft.email = CopiedText::visible(qString(draft.email)).toStdString();
    draft.invitationCode = CopiedText::code(qString(draft.invitationCode)).toStdString();
    draft.verificationCode = CopiedText::code(qString(draft.verificationCode)).toStdString();
    return draft;
}
