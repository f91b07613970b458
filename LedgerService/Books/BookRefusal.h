#pragma once

#include <string>

#include "LedgerService/Refusal.h"

namespace LedgerService {

/// Every answer by which the books refuse a command, with its status and the code that clients know.
namespace BookRefusal {

Refusal invalid(std::string words);
Refusal notFound();
Refusal forbidden(std::string words);
Refusal inactiveMember();
Refusal exclusiveOperator();
Refusal accountArchived();
Refusal beforeStartDate();
Refusal openingDateMismatch();
Refusal openingExists();
Refusal categoryArchived();
Refusal invalidRefundOriginal();
Refusal refundOriginalUnavailable();
Refusal refundReferenceRequired();
Refusal refundLimit();
Refusal duplicateRefund();
Refusal refundsExist();
Refusal attachmentLinked();
Refusal insufficientFunds();
Refusal balanceLimit();
Refusal alreadyReversed();
Refusal capitalCorrectionRequired();
Refusal dividendCorrectionRequired();

}

}
