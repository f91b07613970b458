#pragma once

#include <QString>

class Colleague;
struct Stage;

/// A company whose owner keeps capital and dividends in it, with an account in IDR and USD and one in IDR.
struct CapitalCompany {
    const char* name;
    const char* owner;
    const char* password;

    /// Founds it, and begins its books with this year at the client of a colleague, who is its owner as well.
    void found(Stage& stage, Colleague& colleague) const;
    /// From the sign-in screen through this address to the page of capital and dividends.
    void enter(Stage& stage, const QString& address) const;
};
