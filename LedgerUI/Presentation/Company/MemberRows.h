#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "LedgerCore/Domain/Records/LedgerSnapshot.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// The people of the company as tables show them: its members, those who are invited, and what one may do oneself.
namespace MemberRows {

std::vector<PlainColumn> memberColumns(std::string_view locale);
/// In the order of the snapshot.
std::vector<PlainRow> members(const LedgerSnapshot& snapshot, std::string_view locale);

std::vector<PlainColumn> invitationColumns(std::string_view locale);
/// `today` is a day such as "2026-11-20".
std::vector<PlainRow> invitations(const std::vector<PendingInvitation>& pending, std::string_view today,
                                  std::string_view locale);

/// The current member's rights in words: those in the whole company, then account by account.
struct OwnAccess {
    QString role;
    QString permissions;
    std::vector<PlainRow> accounts; // name and actions
    QString whomToAsk;              // empty where nobody is seen who manages the company
};
OwnAccess ownAccess(const LedgerSnapshot& snapshot, std::string_view locale);
std::vector<PlainColumn> ownAccessColumns(std::string_view locale);

}
