#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace LedgerService {

/// A small mail server on 127.0.0.1 that keeps what it is handed.
class MailServer {
public:
    struct Received {
        std::string sender;    // as it stands in MAIL FROM
        std::string recipient; // as it stands in RCPT TO
        std::string message;
        std::string login; // what AUTH PLAIN carried, in Base64
    };

    /// With a certificate and its key, in one PEM file, the server speaks TLS from the first byte.
    explicit MailServer(const std::string& certificateFile = "");
    ~MailServer();
    MailServer(const MailServer&) = delete;
    MailServer& operator=(const MailServer&) = delete;

    [[nodiscard]] std::string url() const;

    /// From now on recipients are answered with this code, such as 550.
    void answerRecipients(int code) { m_recipientReply = code; }

    /// Waits for so many messages; fewer when they do not come within seconds.
    std::vector<Received> received(std::size_t count);

    /// How many clients have connected so far.
    [[nodiscard]] int connections() const { return m_connections; }

private:
    struct Network;
    void serve();
    template <class Stream>
    void converse(Stream& stream);

    std::unique_ptr<Network> m_network;
    std::atomic<int> m_recipientReply = 250;
    std::atomic<int> m_connections = 0;
    std::atomic<bool> m_ending = false;
    std::mutex m_guard;
    std::condition_variable m_arrived;
    std::vector<Received> m_received;
    std::thread m_thread;
};

}
