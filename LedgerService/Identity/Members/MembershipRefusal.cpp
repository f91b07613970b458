#include "LedgerService/Identity/Members/MembershipRefusal.h"

#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"

namespace LedgerService {

Refusal MembershipRefusal::of(MembershipRules::Refusal refusal)
{
    using enum MembershipRules::Refusal;
    switch (refusal) {
    case notManager:
        return Refusal::of(ServiceCode::forbidden, "Members are managed by those who manage the company.");
    case unknownRole:
        return Refusal::of(ServiceCode::validationError, "There is no such role.");
    case unknownPermission:
        return Refusal::of(ServiceCode::validationError, "There is no such permission.");
    case unknownAction:
        return Refusal::of(ServiceCode::validationError, "There is no such action on accounts.");
    case unknownAccount:
        return Refusal::of(ServiceCode::notFound, "There is no such account.");
    case ownersOnly:
        return Refusal::of(ServiceCode::forbidden, "Only owners make and change owners.");
    case aboveOwnRole:
        return Refusal::of(ServiceCode::forbidden, "Only owners and administrators make administrators.");
    case ownRise:
        return Refusal::of(ServiceCode::forbidden, "Nobody gives themselves more rights.");
    case notHeld:
        return Refusal::of(ServiceCode::forbidden, "Nobody gives rights that they do not hold.");
    case lastOwner:
        return Refusal::of(ServiceCode::conflict, "No other owner holds what this owner would lose.");
    }
    return Refusal::of(ServiceCode::internalError, "The refusal has no words.");
}

}
