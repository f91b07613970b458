#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <boost/asio/ip/tcp.hpp>

namespace LedgerService {

/// A small mail server on the loopback address that keeps what it is handed.
class MailServer {
public:
    struct Received {
        std::string sender;    // as it stands in MAIL FROM
        std::string recipient; // as it stands in RCPT TO
        std::string message;
        std::string login;     // what AUTH PLAIN carried, in Base64
        bool isSecure = false; // came over TLS
    };

    /// When the server begins to speak TLS.
    enum class Tls { fromTheFirstByte, whenAsked };
    enum class Protocol { version4, version6 };

    /// With a certificate and its key, in one PEM file, the server speaks TLS.
    explicit MailServer(const std::string& certificateFile = "", Tls tls = Tls::fromTheFirstByte,
                        Protocol protocol = Protocol::version4);
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
    void serveSecurely(boost::asio::ip::tcp::socket socket, Tls tls);
    template <class Stream>
    bool converse(Stream& stream, bool offersTls);

    Tls m_tls;

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
