#pragma once

#include <string>
#include <string_view>

/// The one failure record of the client: what the service answered, or why no answer came.
struct APIError {
    int status = 0;      // HTTP status; 0 when no reply came
    std::string code;    // the service's code, or one of `ClientCode`
    std::string message; // the service's free text; kept, never shown

    bool operator==(const APIError&) const = default;

    /// The key of the user's message: codes first, then statuses, then the client's own codes. Never empty.
    [[nodiscard]] std::string_view messageKey() const;

    /// What the user reads, in the interface language that `locale` resolves to.
    [[nodiscard]] std::string_view friendlyMessage(std::string_view locale) const;
};

/// Codes that the client makes itself.
namespace ClientCode {
inline constexpr std::string_view invalidServerURL = "INVALID_SERVER_URL";
inline constexpr std::string_view network = "NETWORK";
inline constexpr std::string_view invalidResponse = "INVALID_RESPONSE";
inline constexpr std::string_view httpError = "HTTP_ERROR";
inline constexpr std::string_view keychainUnavailable = "KEYCHAIN_UNAVAILABLE";
inline constexpr std::string_view keychainRestoreUnavailable = "KEYCHAIN_RESTORE_UNAVAILABLE";
inline constexpr std::string_view keychainLogoutUnavailable = "KEYCHAIN_LOGOUT_UNAVAILABLE";
inline constexpr std::string_view noSession = "NO_SESSION";
inline constexpr std::string_view alreadyAuthenticated = "ALREADY_AUTHENTICATED";
inline constexpr std::string_view unknown = "UNKNOWN";
inline constexpr std::string_view invalidInput = "INVALID_INPUT";
inline constexpr std::string_view busy = "BUSY";
}

/// A failure that the client makes itself, with one of `ClientCode` and no reply.
APIError clientError(std::string_view code);
