#pragma once

#include <chrono>
#include <expected>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <boost/asio/ssl/context.hpp>

#include "LedgerService/Http/Connections/TlsFiles.h"

namespace LedgerService {

/// What the service proves to its clients who it is with: a certificate with its key, in force until its files are read
/// again. Used by several threads.
class TlsCertificate {
public:
    using Context = std::shared_ptr<boost::asio::ssl::context>;

    /// Reads the files, or says in words what is wrong with them.
    static std::expected<std::unique_ptr<TlsCertificate>, std::string> create(TlsFiles files);

    /// Reads the files anew for the connections to come; those that are open keep what they have. When something is
    /// wrong with the files, everything stays as it was, and the words for it come back.
    std::optional<std::string> reload();

    /// What a new connection is to use. It lives as long as anyone holds it.
    [[nodiscard]] Context current() const;

    /// From then on clients take it no longer.
    [[nodiscard]] std::chrono::system_clock::time_point end() const;

private:
    TlsCertificate(TlsFiles files, Context context) : m_files(std::move(files)), m_current(std::move(context)) {}

    TlsFiles m_files;
    mutable std::mutex m_guard;
    Context m_current;
};

}
