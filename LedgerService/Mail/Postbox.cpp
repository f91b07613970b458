#include "LedgerService/Mail/Postbox.h"

#include <algorithm>
#include <exception>

#include <fmt/core.h>

#include "LedgerCore/Domain/Calendar/LedgerDay.h"
#include "LedgerCore/Domain/Text/Naming.h"
#include "LedgerService/Log.h"
#include "LedgerService/Mail/MailMessage.h"
#include "LedgerService/Storage/Database.h"
#include "LedgerService/Storage/Rows/People/MailRepository.h"
#include "LedgerService/Storage/Sql/Anew.h"
#include "LedgerService/Storage/Sql/Connection.h"
#include "LedgerService/Storage/Sql/DatabaseFailure.h"
#include "LedgerService/Storage/Sql/Transaction.h"

namespace LedgerService {

namespace {

/// How often the outbox is looked into when nobody says that something was put there: other processes may have.
constexpr std::chrono::seconds round{5};
/// For how long one knows whether mail leaves the service.
constexpr std::chrono::seconds knowledge{15};
/// While a process sends a letter, others leave it alone; when it dies meanwhile, they send it after this.
constexpr std::chrono::seconds lease{60};
constexpr std::chrono::seconds longestPause{5 * 60};

std::chrono::seconds pauseAfter(int tries)
{
    constexpr std::chrono::seconds first{15};
    return std::min(first * (1 << std::clamp(tries, 0, 8)), longestPause);
}

}

Postbox::Postbox(Database& database, Clock clock, MailSettings settings, std::unique_ptr<MailTransport> transport)
    : m_database(database), m_clock(std::move(clock)), m_settings(std::move(settings)),
      m_transport(std::move(transport)), m_thread([this](const std::stop_token& stop) { run(stop); })
{
}

Postbox::~Postbox() = default;

bool Postbox::isReady()
{
    if (!m_transport)
        return false;
    if (const auto known = knownReady())
        return *known;
    const std::lock_guard probing{m_probing}; // others wait for the one who asks, and then know
    const auto known = knownReady();
    return known ? *known : probe();
}

std::optional<bool> Postbox::knownReady()
{
    const std::lock_guard guard{m_guard};
    return std::chrono::steady_clock::now() - m_knownAt < knowledge ? m_ready : std::nullopt;
}

bool Postbox::probe()
{
    const auto problem = m_transport->whyNotReady();
    if (problem)
        Log::warning(*problem);
    note(!problem);
    return !problem;
}

void Postbox::note(bool ready)
{
    const std::lock_guard guard{m_guard};
    m_ready = ready;
    m_knownAt = std::chrono::steady_clock::now();
}

void Postbox::wake()
{
    {
        const std::lock_guard guard{m_guard};
        m_awake = true;
    }
    m_woken.notify_one();
}

void Postbox::run(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        try {
            while (!stop.stop_requested() && sendNext()) {
            }
        } catch (const std::exception& failure) {
            Log::failure("(mail)", DatabaseFailure::words(failure));
        }
        std::unique_lock guard{m_guard};
        m_woken.wait_for(guard, stop, round, [this] { return m_awake; });
        m_awake = false;
    }
}

/// Sends one letter that is due, or drops what came to its end; false when nothing is due.
bool Postbox::sendNext()
{
    const auto instant = m_clock();
    const auto now = LedgerDay::stamp(instant);
    const auto loan = m_database.borrow();
    const auto due = Anew::onConflict([&] { return MailRepository::due(*loan, now); });
    if (!due)
        return false;
    {
        const auto turn = m_database.queueToWrite();
        const bool mine = Anew::onConflict([&] {
            Transaction transaction{*loan, turn.until()};
            MailRepository::removeExpired(*loan, now);
            const bool taken = MailRepository::take(*loan, *due, LedgerDay::stamp(instant + lease));
            transaction.commit();
            return taken;
        });
        if (!mine)
            return true; // another process sends it, or its time is over
    }
    const bool done = send(*due);
    const auto turn = m_database.queueToWrite();
    Anew::onConflict([&] {
        Transaction transaction{*loan, turn.until()};
        if (done)
            MailRepository::remove(*loan, due->id);
        else
            MailRepository::writeNextTry(*loan, due->id, LedgerDay::stamp(instant + pauseAfter(due->tries)));
        transaction.commit();
    });
    return true;
}

/// Whether nothing is left to be done with it.
bool Postbox::send(const WaitingMail& mail)
{
    if (mail.recipient.empty())
        return true;
    if (!Naming::isEmail(mail.recipient)) { // of a person of earlier days, or of a database that was moved here
        Log::warning("a letter was dropped: it goes to what is no e-mail address");
        return true;
    }
    if (!m_transport)
        return false;
    const auto message =
        MailMessage::of({.to = mail.recipient, .locale = mail.locale, .subject = mail.subject, .text = mail.body},
                        m_settings.sender, LedgerDay::parseStamp(mail.createdAt).value_or(m_clock()), mail.id);
    switch (m_transport->deliver(mail.recipient, message, mail.createdAt + "-" + mail.id)) {
    case MailTransport::Delivery::delivered:
        note(true);
        return true;
    case MailTransport::Delivery::refused:
        if (!probe()) // the server refuses the service as such
            return false;
        Log::warning("the mail server refused a letter for good");
        return true;
    case MailTransport::Delivery::failed:
        break;
    }
    probe();
    return false;
}

}
