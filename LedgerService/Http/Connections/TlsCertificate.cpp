#include "LedgerService/Http/Connections/TlsCertificate.h"

#include <boost/asio/ssl/error.hpp>
#include <fmt/core.h>
#include <openssl/ssl.h>
#include <openssl/x509.h>

namespace LedgerService {

namespace {

namespace ssl = boost::asio::ssl;

/// Whether the certificate's last day has passed.
bool isOver(SSL_CTX* context)
{
    const auto* const certificate = SSL_CTX_get0_certificate(context);
    return certificate != nullptr && X509_cmp_current_time(X509_get0_notAfter(certificate)) < 0;
}

/// A context with the rules of every connection, without a certificate yet.
TlsCertificate::Context newContext()
{
    auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
    auto* const native = context->native_handle();
    SSL_CTX_set_min_proto_version(native, TLS1_2_VERSION);
    // A client may not have keys agreed on again and again; it gets no say in which cipher is the weakest it can bear.
    SSL_CTX_set_options(native, SSL_OP_NO_RENEGOTIATION | SSL_OP_NO_COMPRESSION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    SSL_CTX_set_mode(native, SSL_MODE_RELEASE_BUFFERS); // hundreds of silent connections hold little memory
    // A key under a password is refused: nobody is there to be asked for it.
    boost::system::error_code ignored;
    context->set_password_callback([](std::size_t, ssl::context::password_purpose) { return std::string{}; }, ignored);
    return context;
}

std::expected<TlsCertificate::Context, std::string> read(const TlsFiles& files)
{
    auto context = newContext();
    boost::system::error_code failure;
    context->use_certificate_chain_file(files.certificate, failure);
    if (failure)
        return std::unexpected(
            fmt::format("cannot read a certificate from {}: {}", files.certificate, failure.message()));
    // The key is compared with the certificate as it is read.
    context->use_private_key_file(files.key, ssl::context::pem, failure);
    if (failure)
        return std::unexpected(fmt::format("cannot use the key in {} with the certificate in {}: {}", files.key,
                                           files.certificate, failure.message()));
    if (isOver(context->native_handle()))
        return std::unexpected(fmt::format("the certificate in {} is no longer valid", files.certificate));
    return context;
}

}

std::expected<std::unique_ptr<TlsCertificate>, std::string> TlsCertificate::create(TlsFiles files)
{
    auto context = read(files);
    if (!context)
        return std::unexpected(std::move(context.error()));
    return std::unique_ptr<TlsCertificate>{new TlsCertificate(std::move(files), *std::move(context))};
}

std::optional<std::string> TlsCertificate::reload()
{
    auto context = read(m_files);
    if (!context)
        return std::move(context.error());
    const std::scoped_lock lock{m_guard};
    m_current = *std::move(context);
    return std::nullopt;
}

std::chrono::system_clock::time_point TlsCertificate::end() const
{
    constexpr std::chrono::hours day{24};
    const auto context = current();
    const auto* const last = X509_get0_notAfter(SSL_CTX_get0_certificate(context->native_handle()));
    int days = 0;
    int seconds = 0;
    const auto now = std::chrono::system_clock::now();
    const bool known = ASN1_TIME_diff(&days, &seconds, nullptr, last) == 1; // from now on
    return known ? now + days * day + std::chrono::seconds{seconds} : now;
}

TlsCertificate::Context TlsCertificate::current() const
{
    const std::scoped_lock lock{m_guard};
    return m_current;
}

}
