#pragma once

#include <string>

#include <QString>

/// An account in a picker: its name, and what it holds in all its currencies.
struct AccountChoice {
    std::string id;
    QString name;
    QString balances; // empty where the member does not see them
    QString group;    // the head that it stands under where there is more than one; choices come group by group
    QString glyph;

    bool operator==(const AccountChoice&) const = default;
};

struct CurrencyChoice {
    std::string code;
    QString name;

    bool operator==(const CurrencyChoice&) const = default;
};
