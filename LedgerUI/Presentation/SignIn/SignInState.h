#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <QString>

#include "LedgerCore/Client/Session/KeptCommands.h"

/// What the sign-in screen waits for.
enum class SignInWait { nothing, session, answer, signOut };

/// What the sign-in screen begins with. It lives as long as the program: nothing of it is kept on disk.
struct SignInStart {
    std::string defaultAddress = {};           // of the service that the program started with
    std::optional<MemberIdentity> member = {}; // who was signed in last
    std::string email = {};                    // theirs
    SignInWait wait = SignInWait::session;     // what an operation that already runs is about
};

/// What the sign-in screen shows while it waits.
struct SignInState {
    bool takesInput = true; // whether fields can be changed
    bool maySubmit = true;  // whether something can be sent
    bool isSending = false; // whether what was filled in is on its way
    QString progress = {};  // what is going on; empty when nothing is
};

SignInState signInState(SignInWait wait, std::string_view address, std::string_view locale);
