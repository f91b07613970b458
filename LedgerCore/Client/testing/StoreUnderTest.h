#pragma once

#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/testing/FixedClock.h"
#include "LedgerCore/Client/testing/RecordingCredentialStore.h"
#include "LedgerCore/Client/testing/ScriptedServer.h"
#include "LedgerCore/Client/testing/SequentialIdentifiers.h"
#include "LedgerCore/Client/testing/WaitFor.h"
#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/testing/SnapshotBuilder.h"

/// A store with its scripted service and everything else that it reaches.
struct StoreUnderTest {
    explicit StoreUnderTest(TransferLimits limits = {})
        : store(server.url(), {.credentials = credentials,
                               .languageDefaults = language,
                               .clock = clock,
                               .identifiers = identifiers,
                               .limits = limits})
    {
    }

    /// Signs in as the snapshot's current member; "GET v1/snapshot" answers with the same from now on.
    void signIn(const SnapshotBuilder& books)
    {
        server.replace("POST v1/auth/login", ServerReply::json(books.signInJson()));
        server.replace("GET v1/snapshot", ServerReply::json(books.json()));
        const auto signedIn = resultOf(store.login("m1@example.com", "secret"));
        require(signedIn.has_value(), "the scripted sign-in succeeds");
    }

    ScriptedServer server;
    RecordingCredentialStore credentials;
    LanguageMemory language;
    FixedClock clock;
    SequentialIdentifiers identifiers;
    LedgerStore store;
};

/// The failure of an operation, or nothing.
template <class Value>
QCoro::Task<Result<void>> outcomeOf(QCoro::Task<Result<Value>> running)
{
    const auto outcome = co_await running;
    co_return outcome ? Result<void>{} : std::unexpected(outcome.error());
}
