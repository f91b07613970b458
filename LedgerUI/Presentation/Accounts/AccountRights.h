#pragma once

#include <string_view>

#include <QString>

#include "LedgerCore/Domain/Records/Member.h"

/// What an action on an account is called: "Transfer in". `action` is one of `AccountGrant::knownActions`.
QString accountActionText(std::string_view action, std::string_view locale);

/// What the member may do on the account, in words: "View, Transfer in, Correct".
QString accountRightsText(const Member& member, std::string_view accountID, std::string_view locale);
