#pragma once

#include <optional>
#include <string>

#include "LedgerCore/Client/Snapshots/EntryStream.h"
#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

/// Reads the replies to sign-in.
namespace AccessReply {

/// A pending application when the reply says so, and then with all its texts; otherwise a session with its snapshot.
std::optional<CompanyRegistrationResponse> decode(SplitReply reply);

/// The company that somebody who is signed in went over to: a session of its own, or the snapshot alone, which is then
/// opened by the session of `token`.
std::optional<AuthResponse> decodeOpened(SplitReply reply, std::string token);

}
