#pragma once

#include <chrono>
#include <cstdint>
#include <expected>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "LedgerService/Http/Connections/ServerLoad.h"
#include "LedgerService/Http/Connections/TlsFiles.h"
#include "LedgerService/Http/HttpLimits.h"
#include "LedgerService/Http/Route.h"
#include "LedgerService/Mail/MailTransport.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Service.h"
#include "LedgerService/Storage/Database.h"

namespace LedgerService {

struct ServerOptions {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;      // 0 picks a free one
    int listeningSocket = -1;    // one that listens already, of a loopback address, instead of address and port
    std::string databaseFile;    // or its address
    std::string files;           // what receipts are kept beside; empty: beside the database's file
    std::optional<TlsFiles> tls; // without it connections are plain
    bool behindProxy = false;    // X-Forwarded-For names the client
    bool thisUserOnly = false;   // serves only programs of the user that it runs as, on this computer
    std::vector<std::string> trustedProxies; // addresses and networks; empty: whoever connects is the proxy
    ServicePolicy policy;
    ReceiptRoom receiptRoom;
    MailSettings mail;
    HttpLimits limits;
    std::span<const Route> routes; // all that can be asked
    LogKeeping logKeeping = LogKeeping::aside;
    Clock clock = [] { return std::chrono::system_clock::now(); };
};

/// The running service: listens and answers on threads of its own until it is stopped or destroyed.
class Server {
public:
    /// Opens the database and listens, or says in words why not.
    static std::expected<std::unique_ptr<Server>, std::string> start(ServerOptions options);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    [[nodiscard]] std::uint16_t port() const;

    /// How much there is to do; nothing when the server is too busy to say so within a second, or has stopped.
    [[nodiscard]] std::optional<ServerLoad> load();

    /// Reads the certificate and its key anew; in words why the old ones stay.
    std::optional<std::string> reloadCertificate();

    /// Takes no new requests, finishes those under way and closes the database; returns when all is done.
    void stop();

private:
    struct State;
    explicit Server(std::unique_ptr<State> state);

    std::unique_ptr<State> m_state;
};

}
