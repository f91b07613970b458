#pragma once

#include "LedgerCore/Domain/Records/Member.h"

/// What a member may do beyond single accounts. Window, companion and service ask these functions and no other; what
/// a member may do on one account is `Member::can`. A deactivated member may do nothing.
namespace MemberRights {

bool canViewCompany(const Member& member);
/// Changes members, accounts, categories and settings: by permission, and the owner always.
bool canManage(const Member& member);
bool canExport(const Member& member);
/// Whether the member is offered the page of accounts.
bool canOpenAccounts(const Member& member);

bool canViewCapital(const Member& member);
bool canPostCapital(const Member& member);
bool canCorrectCapital(const Member& member);
bool canExportCapital(const Member& member);
bool canManageCapital(const Member& member);
/// Whether the member gets to see the capital section: by the permission to, or to manage what stands in it.
bool canSeeCapital(const Member& member);

/// The right to see dividends comes with the management of the company; without a permission list only the owner has
/// it. The other rights on dividends need it too.
bool canSeeDividends(const Member& member);
bool canManageDividends(const Member& member); // participants, their ratios and the side bar's entry
bool canSettleDividends(const Member& member); // allocates, applies and cancels
bool canCorrectDividends(const Member& member);
/// Pays and receives dividend money: only by an explicit permission, whatever the role.
bool canMoveDividendMoney(const Member& member);
bool canExportDividends(const Member& member);
bool canCopyOwnershipToDividends(const Member& member);

/// Whether the tab of contributions, or of dividends, may be offered: by the permission to see it or to manage the
/// company; without a permission list to owners and administrators.
bool canOpenContributions(const Member& member);
bool canOpenDividends(const Member& member);

/// Whether the member may read who did what: the owner alone, whatever the permissions.
bool canReadAuditTrail(const Member& member);

/// Whether the names of receipts may stand in a file.
bool canListReceipts(const Member& member);

}
