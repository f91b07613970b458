#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace LedgerService {

/// What the service answered.
struct HttpAnswer {
    int status = 0; // 0 when the connection ended without an answer
    std::string body;
    std::map<std::string, std::string> headers = {}; // by their names in lower case

    /// The code of an error body; empty for other bodies.
    [[nodiscard]] std::string code() const;

    /// The header's value; empty when it was not sent. Names are asked for in lower case.
    [[nodiscard]] std::string header(const std::string& name) const;
};

/// A client on one connection, which it opens anew when the service has closed it. Blocks.
class HttpClient {
public:
    enum class TlsVersion { v1_1, v1_2, v1_3 };
    /// How a client speaks TLS.
    struct Tls {
        std::string authorityFile; // whom it trusts alone
        TlsVersion newest = TlsVersion::v1_3;
    };

    /// A plain connection.
    explicit HttpClient(std::uint16_t port, std::string from = "127.0.0.1");
    /// A connection by TLS; when that comes to nothing, every answer has the status 0.
    HttpClient(std::uint16_t port, Tls tls);
    ~HttpClient();
    HttpClient(const HttpClient&) = delete;
    HttpClient& operator=(const HttpClient&) = delete;

    /// `headers` are further lines of the header, each with its line end.
    HttpAnswer send(std::string_view method, const std::string& path, const std::string& token = "",
                    const std::string& body = "", std::string_view headers = "");

    /// Sends bytes as they are and reads one answer.
    HttpAnswer sendRaw(std::string_view bytes);

    /// Sends bytes without waiting for anything.
    void write(std::string_view bytes);

    /// Tells the service that nothing more comes; answers may be read as before.
    void finishSending();

    /// Whether the service closes this connection before it answers anything; waits for it.
    bool isClosedByService();

    /// How much of an answer has arrived and was not read.
    [[nodiscard]] std::size_t unreadBytes() const;

private:
    struct Socket;
    void connect();
    HttpAnswer read();

    std::uint16_t m_port;
    std::string m_from;
    std::optional<Tls> m_tls;
    bool m_headAsked = false; // by what was written last
    std::unique_ptr<Socket> m_socket;
};

}
