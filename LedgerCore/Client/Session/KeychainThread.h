#pragma once

#include <chrono>
#include <functional>

#include <QFuture>
#include <QString>
#include <qt6keychain/keychain.h>

/// What the keychain said to one call.
struct KeychainAnswer {
    QKeychain::Error error = QKeychain::NoError;
    QString text; // of the item that was read
};

/// The thread that calls the keychain. There is one as long as the process runs, for the library's jobs wait for each
/// other in a queue that belongs to the thread of the first.
namespace KeychainThread {

using MakeJob = std::function<QKeychain::Job*()>;

/// Runs the job that `make` gives. After `patience` its answer is no longer waited for; a keychain that would ask for a
/// password is not called at all. Both are answered as access denied.
QFuture<KeychainAnswer> run(MakeJob make, QString account, std::chrono::milliseconds patience);

}
