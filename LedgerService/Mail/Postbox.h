#pragma once

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>

#include "LedgerService/Mail/MailTransport.h"
#include "LedgerService/Service.h"

namespace LedgerService {

class Database;
struct WaitingMail;

/// Sends what waits in the outbox, on a thread of its own: no request waits for a mail server to take a letter. Several
/// processes may empty one outbox together.
class Postbox {
public:
    /// Without a transport nothing is sent, and what waits is dropped at its end.
    Postbox(Database& database, Clock clock, MailSettings settings, std::unique_ptr<MailTransport> transport);
    ~Postbox();
    Postbox(const Postbox&) = delete;
    Postbox& operator=(const Postbox&) = delete;

    /// Whether mail leaves the service now, as far as anybody knew within the last seconds. Asks, which may take
    /// seconds too, when nobody has lately.
    bool isReady();

    /// Something was put into the outbox.
    void wake();

private:
    void run(const std::stop_token& stop);
    bool sendNext();
    bool send(const WaitingMail& mail);
    std::optional<bool> knownReady();
    bool probe();
    void note(bool ready);

    Database& m_database;
    Clock m_clock;
    MailSettings m_settings;
    std::unique_ptr<MailTransport> m_transport;
    std::mutex m_probing; // whoever asks the transport

    std::mutex m_guard;
    std::condition_variable_any m_woken;
    bool m_awake = false;
    std::optional<bool> m_ready;
    std::chrono::steady_clock::time_point m_knownAt;
    std::jthread m_thread; // ends before anything above is gone
};

}
