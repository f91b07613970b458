#pragma once

#include <QDeadlineTimer>
#include <QString>

/// Whether the keychain is open.
namespace KeychainLock {

/// The name that all items of this program carry.
inline constexpr auto service = "Tallyfold.session.v1";

/// Whether the system would have the person unlock or set up a keychain before it gives or takes the account's item;
/// also true when that cannot be found out in time. Blocks until then at worst: not for the main thread.
bool wouldPrompt(const QString& account, const QDeadlineTimer& until);

}
