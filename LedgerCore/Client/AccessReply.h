#pragma once

#include <optional>
#include <string_view>

#include "LedgerCore/Client/AccessRecords.h"

/// Reads the replies to sign-in.
namespace AccessReply {

/// A pending application when the reply says so, and then with all its texts; otherwise a session with its snapshot.
std::optional<CompanyRegistrationResponse> decode(std::string_view text);

}
