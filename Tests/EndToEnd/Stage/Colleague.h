#pragma once

#include <optional>
#include <string>

#include <QCoro/QCoroTask>

#include "LedgerCore/Client/Session/Clock.h"
#include "LedgerCore/Client/Session/IdentifierSource.h"
#include "LedgerCore/Client/Session/LanguageDefaults.h"
#include "LedgerCore/Client/Session/SessionMemory.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/testing/ScreenDriver.h"
#include "Tests/EndToEnd/Stage/StoryTeller.h"

/// Somebody else at a second client, who does what the story needs while its person looks at the window.
class Colleague {
public:
    Colleague(std::string address, const ScreenDriver& screen)
        : m_screen{screen}, m_store{std::move(address),
                                    {.credentials = m_credentials,
                                     .languageDefaults = m_language,
                                     .clock = m_clock,
                                     .identifiers = m_identifiers}}
    {
    }

    [[nodiscard]] LedgerStore& store() { return m_store; }

    /// Waits for what must succeed.
    template <class Value>
    Value done(QCoro::Task<Result<Value>> task, const char* what)
    {
        std::optional<Result<Value>> answer;
        QCoro::connect(std::move(task), &m_store, [&answer](const Result<Value>& outcome) { answer = outcome; });
        m_screen.waitUntil(what, [&answer] { return answer.has_value(); });
        expect(answer->has_value(), QString::fromUtf8(what));
        if constexpr (!std::is_void_v<Value>)
            return **answer;
    }

    void signIn(const std::string& email, const std::string& password)
    {
        done(m_store.login(email, password), "the colleague signs in");
    }

    /// Invites somebody with no rights beyond their own role; answers the code to hand over.
    std::string invite(const std::string& name, const std::string& email, const std::string& role)
    {
        return invite(
            {.name = name, .email = email, .role = role, .accountIDs = {}, .permissions = {}, .accountGrants = {}});
    }
    std::string invite(const Invite& invitation)
    {
        return done(m_store.invite(invitation, false), "the colleague invites somebody").code;
    }

private:
    const ScreenDriver& m_screen;
    SessionMemory m_credentials;
    LanguageMemory m_language{"en-US"};
    SystemClock m_clock;
    RandomIdentifiers m_identifiers;
    LedgerStore m_store;
};
