#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a person fills in on the way to being signed in.
enum class SignInField { companyName, countries, name, email, password, invitationCode, verificationCode };

/// A page of the sign-in screen: some fields and the one button that sends them.
enum class SignInPage {
    login,
    registration,
    invitation,      // the activation code, to be verified by mail
    joining,         // the activation code of somebody who has a password
    forgotten,       // whose password is to be set anew
    verification,    // the code from the mail
    newAccount,      // of somebody invited who is new
    existingAccount, // of somebody invited who has a password
    newPassword,
};

/// A field on a page; texts are keys of signInWords().
struct SignInFieldRow {
    SignInField field;
    std::string_view label;
    std::string_view missing; // said when it is empty; empty for a field that may be
    bool isBesideLast = false;
};

/// What a page says and asks for. `name` is that of its button; texts are keys of signInWords(), empty for none.
struct SignInPageRow {
    SignInPage page;
    std::string_view name;
    std::string_view submit;
    std::string_view busy;
    std::string_view note;   // above the button
    std::string_view hint;   // below it
    std::string_view beside; // it
    std::span<const SignInFieldRow> fields;
};

const SignInPageRow& signInPageRow(SignInPage page);

/// What a person has filled in.
struct SignInDraft {
    std::string companyName = {};
    std::vector<std::string> countries = {}; // codes
    std::string name = {};
    std::string email = {};
    std::string password = {};
    std::string invitationCode = {};
    std::string verificationCode = {};

    bool operator==(const SignInDraft&) const = default;
};

/// The draft as it is sent: without blanks around texts and without the characters that nobody sees and that copying
/// from a page or a mail brings along. A password stays as it was typed.
SignInDraft cleaned(SignInDraft draft);
