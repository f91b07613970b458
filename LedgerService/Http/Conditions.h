#pragma once

#include "LedgerService/Access/SnapshotReader.h"
#include "LedgerService/Http/Request.h"

namespace LedgerService {

/// What a request's headers say of the reply that they would rather have.
namespace Conditions {

/// What the client holds of the snapshot already (If-None-Match), and whether it takes a delta (A-IM: entries).
SnapshotAsked snapshotAsked(const Request& request);

/// Whether a command's reply need not carry the snapshot (Prefer: return=minimal).
bool prefersMinimal(const Request& request);

}

}
