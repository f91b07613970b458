#pragma once

#include <optional>
#include <string>

#include "LedgerCore/Client/Snapshots/BooksReply.h"

/// A snapshot and the tag by which the service knows it; the tag is empty where the service gives none.
struct HeldBooks {
    SnapshotPointer snapshot;
    std::string tag = {};
};

/// A snapshot fresh from the service, and whether it equals the one that was held when it came.
struct LoadedSnapshot {
    SnapshotPointer fresh;
    SnapshotPointer held;
    bool isSame = false;
    std::string tag = {};
};

/// Loads the books: only what is new where the service knows those that are held, the whole otherwise and in any doubt.
namespace SnapshotLoading {

QCoro::Task<Result<LoadedSnapshot>> load(QPointer<ServiceConnection> connection, HeldBooks held, Errand errand);

/// Reads a reply that is the whole snapshot.
QCoro::Task<Result<LoadedSnapshot>> readWhole(BooksReply reply, SnapshotPointer held);

}
