#pragma once

#include "LedgerUI/testing/ScreenDriver.h"

class LossyLine;
struct Stage;

/// Somebody who applies for a company at the sign-in screen.
struct Applicant {
    const char* company;
    const char* name;
    const char* email;
    const char* password;

    /// Fills in the form; it is not sent.
    void fillIn(ScreenDriver& screen) const;
    /// Sends it and loses the reply: nobody can know then that the application has arrived.
    void applyInVain(Stage& stage, LossyLine& line) const;
    /// Asks to be signed in, wherever the sign-in screen stands.
    void signIn(ScreenDriver& screen) const;
};
