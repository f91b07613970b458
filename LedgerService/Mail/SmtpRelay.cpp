#include "LedgerService/Mail/SmtpRelay.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <string_view>

#include <curl/curl.h>
#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"

namespace LedgerService {

namespace {

constexpr long connectMilliseconds = 5'000;
constexpr long wholeMilliseconds = 20'000;
/// From here on a reply of the server means that another try would end the same way.
constexpr long firstRefusal = 500;

using Transfer = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using Recipients = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

template <class Value>
void set(const Transfer& transfer, CURLoption option, Value value)
{
    require(curl_easy_setopt(transfer.get(), option, value) == CURLE_OK, "the mail library knows the option");
}

/// The host of "smtp://host:587/"; empty when the text is no address of a mail server.
std::string hostOf(const std::string& url)
{
    const std::unique_ptr<CURLU, decltype(&curl_url_cleanup)> parts{curl_url(), &curl_url_cleanup};
    if (curl_url_set(parts.get(), CURLUPART_URL, url.c_str(), CURLU_NON_SUPPORT_SCHEME) != CURLUE_OK)
        return {};
    char* host = nullptr;
    if (curl_url_get(parts.get(), CURLUPART_HOST, &host, 0) != CURLUE_OK)
        return {};
    std::string copy{host};
    curl_free(host);
    return copy;
}

/// Only there does a connection stay on the machine.
bool isLoopback(const std::string& host)
{
    return host == "localhost" || host == "127.0.0.1" || host == "[::1]";
}

std::size_t dropped(char*, std::size_t size, std::size_t count, void*)
{
    return size * count;
}

/// What is left of a message to send.
std::size_t give(char* into, std::size_t size, std::size_t count, void* left)
{
    auto& rest = *static_cast<std::string_view*>(left);
    const auto taken = std::min(rest.size(), size * count);
    std::memcpy(into, rest.data(), taken);
    rest.remove_prefix(taken);
    return taken;
}

Transfer begin(const SmtpSettings& settings)
{
    static const bool started = curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    require(started, "the mail library starts");
    Transfer transfer{curl_easy_init(), &curl_easy_cleanup};
    require(transfer != nullptr, "the mail library has memory");
    set(transfer, CURLOPT_URL, settings.url.c_str());
    set(transfer, CURLOPT_PROTOCOLS_STR, "smtp,smtps");
    set(transfer, CURLOPT_NOSIGNAL, 1L);
    set(transfer, CURLOPT_CONNECTTIMEOUT_MS, connectMilliseconds);
    set(transfer, CURLOPT_TIMEOUT_MS, wholeMilliseconds);
    set(transfer, CURLOPT_PROXY, "");
    set(transfer, CURLOPT_USE_SSL, isLoopback(hostOf(settings.url)) ? long{CURLUSESSL_TRY} : long{CURLUSESSL_ALL});
    set(transfer, CURLOPT_WRITEFUNCTION, &dropped);
    if (!settings.user.empty()) {
        set(transfer, CURLOPT_USERNAME, settings.user.c_str());
        set(transfer, CURLOPT_PASSWORD, settings.password.c_str());
    }
    if (!settings.authorities.empty())
        set(transfer, CURLOPT_CAINFO, settings.authorities.c_str());
    return transfer;
}

}

std::optional<std::string> SmtpRelay::whyNot(const SmtpSettings& settings)
{
    const bool known = settings.url.starts_with("smtp://") || settings.url.starts_with("smtps://");
    if (!known || hostOf(settings.url).empty() || settings.url.contains('@'))
        return "the mail server has an address such as smtps://mail.example.com or smtp://mail.example.com:587; its "
               "user and password are given apart from it";
    return std::nullopt;
}

std::optional<std::string> SmtpRelay::whyNotReady()
{
    const auto transfer = begin(m_settings);
    set(transfer, CURLOPT_NOBODY, 1L);
    set(transfer, CURLOPT_CUSTOMREQUEST, "NOOP");
    const auto outcome = curl_easy_perform(transfer.get());
    if (outcome == CURLE_OK)
        return std::nullopt;
    return fmt::format("the mail server does not take mail: {}", curl_easy_strerror(outcome));
}

MailTransport::Delivery SmtpRelay::deliver(const std::string& recipient, const std::string& message, const std::string&)
{
    const auto transfer = begin(m_settings);
    const Recipients recipients{curl_slist_append(nullptr, fmt::format("<{}>", recipient).c_str()),
                                &curl_slist_free_all};
    std::string_view left = message;
    set(transfer, CURLOPT_MAIL_FROM, fmt::format("<{}>", m_sender).c_str());
    set(transfer, CURLOPT_MAIL_RCPT, recipients.get());
    set(transfer, CURLOPT_UPLOAD, 1L);
    set(transfer, CURLOPT_READFUNCTION, &give);
    set(transfer, CURLOPT_READDATA, static_cast<void*>(&left));
    if (curl_easy_perform(transfer.get()) == CURLE_OK)
        return Delivery::delivered;
    long reply = 0;
    curl_easy_getinfo(transfer.get(), CURLINFO_RESPONSE_CODE, &reply);
    return reply >= firstRefusal ? Delivery::refused : Delivery::failed;
}

}
