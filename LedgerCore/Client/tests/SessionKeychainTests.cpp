#include "LedgerCore/Client/Session/SessionKeychain.h"

#include <chrono>

#include <gtest/gtest.h>

#include "LedgerCore/Client/Session/KeychainLock.h"
#include "LedgerCore/Client/Session/KeychainThread.h"
#include "LedgerCore/Client/testing/PrivateKeyring.h"
#include "LedgerCore/Client/testing/StoreUnderTest.h"

namespace {

/// A keychain in front of a real Secret Service, open at first.
class SessionKeychainTests : public ::testing::Test {
protected:
    SessionKeychainTests() { keyring.unlock(); }

    std::optional<SavedSession> kept(const std::string& server)
    {
        auto read = resultOf(keychain.readSession(server));
        EXPECT_TRUE(read.has_value());
        return read.value_or(std::nullopt);
    }

    void expectUnavailable(SessionKeychain& refused)
    {
        const auto unavailable = std::unexpected<Failure>(clientError(ClientCode::keychainUnavailable));
        EXPECT_EQ(resultOf(refused.readSession("https://a.example")), unavailable);
        EXPECT_EQ(resultOf(refused.saveSession({"new", false}, "https://a.example")), unavailable);
        EXPECT_EQ(resultOf(refused.deleteSession("https://a.example")), unavailable);
    }

    PrivateKeyring& keyring = PrivateKeyring::shared();
    SessionKeychain keychain;
};

TEST_F(SessionKeychainTests, KeepsOneSessionForEachAddressAsItIsWritten)
{
    const SavedSession first{"first token", false};
    const SavedSession second{"zweites \"Token\" 令牌", true};
    EXPECT_EQ(kept("https://one.example"), std::nullopt);
    ASSERT_TRUE(resultOf(keychain.saveSession(first, "https://one.example")));
    EXPECT_EQ(kept("https://one.example"), first);
    EXPECT_EQ(kept("https://one.example/"), std::nullopt);
    EXPECT_EQ(kept("https://two.example"), std::nullopt);

    ASSERT_TRUE(resultOf(keychain.saveSession(second, "https://one.example")));
    EXPECT_EQ(kept("https://one.example"), second);
    EXPECT_EQ(keyring.itemCount(QStringLiteral("https://one.example")), 1);

    EXPECT_TRUE(resultOf(keychain.deleteSession("https://two.example")));
    EXPECT_TRUE(resultOf(keychain.deleteSession("https://one.example")));
    EXPECT_TRUE(resultOf(keychain.deleteSession("https://one.example")));
    EXPECT_EQ(kept("https://one.example"), std::nullopt);
    EXPECT_EQ(keyring.itemCount(QStringLiteral("https://one.example")), 0);
}

TEST_F(SessionKeychainTests, IsUnavailableWithoutAskingAnybodyWhereTheKeychainCannotBeUsed)
{
    const SavedSession session{"token", false};
    ASSERT_TRUE(resultOf(keychain.saveSession(session, "https://a.example")));
    keyring.lock();
    expectUnavailable(keychain);
    keyring.unlock();
    EXPECT_EQ(kept("https://a.example"), session);

    keyring.silence();
    SessionKeychain hasty{std::chrono::milliseconds{200}};
    expectUnavailable(hasty);
    keyring.unlock();
    EXPECT_EQ(kept("https://a.example"), session);
    EXPECT_TRUE(resultOf(keychain.deleteSession("https://a.example")));
    EXPECT_EQ(keyring.prompts(), 0);
}

TEST_F(SessionKeychainTests, LeavesAnItemThatItCannotReadWhereItIs)
{
    const auto account = QStringLiteral("https://broken.example");
    const auto spoil = [&] {
        auto* job = new QKeychain::WritePasswordJob(QString::fromLatin1(KeychainLock::service));
        job->setKey(account);
        job->setTextData(QStringLiteral("{\"token\":"));
        return job;
    };
    auto spoiling = KeychainThread::run(spoil, account, std::chrono::seconds{10});
    spoiling.waitForFinished(); // on its own thread
    ASSERT_EQ(spoiling.result().error, QKeychain::NoError);

    EXPECT_EQ(resultOf(keychain.readSession("https://broken.example")),
              std::unexpected<Failure>(clientError(ClientCode::keychainUnavailable)));
    EXPECT_EQ(keyring.itemCount(account), 1);
    EXPECT_TRUE(resultOf(keychain.deleteSession("https://broken.example")));
}

TEST_F(SessionKeychainTests, CarriesASessionFromOneStartToTheNext)
{
    StoreUnderTest client;
    const LedgerStore::Environment environment{.credentials = keychain,
                                               .languageDefaults = client.language,
                                               .clock = client.clock,
                                               .identifiers = client.identifiers};
    const auto books = SnapshotBuilder{};
    client.server.replace("POST v1/auth/login", ServerReply::json(books.signInJson()));
    client.server.replace("GET v1/snapshot", ServerReply::json(books.json()));
    client.server.replace("POST v1/auth/logout", ServerReply::json(R"({"ok":true})"));
    {
        LedgerStore store{client.server.url(), environment};
        ASSERT_TRUE(resultOf(store.login("m1@example.com", "secret")));
    }
    LedgerStore later{client.server.url(), environment};
    ASSERT_TRUE(resultOf(later.restoreSession()));
    ASSERT_NE(later.snapshot(), nullptr);
    ASSERT_TRUE(resultOf(later.logout()));

    LedgerStore last{client.server.url(), environment};
    ASSERT_TRUE(resultOf(last.restoreSession()));
    EXPECT_EQ(last.snapshot(), nullptr);
}

// Stands last: the library does not find its way back to a Secret Service that was started anew.
TEST_F(SessionKeychainTests, IsUnavailableWithoutASecretService)
{
    keyring.remove();
    expectUnavailable(keychain);
    EXPECT_EQ(keyring.prompts(), 0);
}

}
