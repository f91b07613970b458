#pragma once

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/Mail/MailTransport.h"
#include "LedgerService/Receipts/ReceiptFolder.h"
#include "LedgerService/Service.h"

namespace LedgerService {

/// Running the service until it is told to end.
namespace Serve {

struct Options {
    std::string listen = "127.0.0.1:48731";
    std::string databaseFile; // or its address
    std::string files;        // what receipts and seals are kept beside; empty: beside the database's file
    bool create = false;      // begins new books where there are none
    bool behindTlsProxy = false;
    bool thisUserOnly = false;                      // serves only programs of the user that it runs as
    std::string tlsCertificate;                     // file; with it and the key the service speaks TLS itself
    std::string tlsKey;                             // file
    std::vector<std::string> trustedProxies;        // with behindTlsProxy; empty: whoever connects is the proxy
    std::optional<DemonstrationMode> demonstration; // unset: shared on a loopback address, else off
    std::string metrics;                            // address and port; empty: figures are not given
    RegistrationMode registration = RegistrationMode::review;
    std::int64_t receiptSpace = ReceiptRoom{}.company >> 20;           // MiB
    std::int64_t demoReceiptSpace = ReceiptRoom{}.demonstration >> 20; // MiB
    std::string mailFrom;                                              // address; needed with a mail server
    std::string mailSpool;  // folder; with none and no server, beside the database on loopback
    std::string smtpServer; // smtps://host or smtp://host:port
    std::string smtpUser;
    std::string smtpPasswordFile; // its first line
    std::string smtpAuthorities;  // file of certificates
    bool quiet = false;           // logs failures only

    [[nodiscard]] bool speaksTls() const { return !tlsCertificate.empty(); }
};

struct Endpoint {
    std::string address; // numeric, without brackets
    std::uint16_t port = 0;

    [[nodiscard]] bool isLoopback() const;
    /// The address with its port as a client writes it, after the scheme "http" or "https".
    [[nodiscard]] std::string url(std::string_view scheme = "http") const;
};

/// Reads "127.0.0.1:48731" or "[::1]:48731"; nothing for other texts.
std::optional<Endpoint> parseEndpoint(const std::string& text);

/// Where a socket listens; nothing when it is none that takes connections over TCP.
std::optional<Endpoint> endpointOf(int listeningSocket);

/// Where the service listens: on the socket that it was handed over, else as the options say; or what is wrong there.
std::expected<Endpoint, std::string> place(const Options& options, std::optional<int> handedOver);

/// How mail leaves the service with these options, or in words what is wrong with them. `local` tells that the service
/// is reached from this machine alone.
std::expected<MailSettings, std::string> mailSettings(const Options& options, bool local);

/// Serves until SIGTERM or SIGINT, then ends cleanly; the exit code. SIGHUP has a service that speaks TLS read its
/// certificate again. Any other it ends when it runs at a terminal; else there is nothing to read again.
int run(const Options& options);

}

}
