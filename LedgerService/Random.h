#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace LedgerService {

/// Secrets, identifiers and digests, all from the cryptographic library.
namespace Random {

/// This many unguessable bytes as URL-safe Base64 without padding.
std::string text(std::size_t bytes);

/// A new identifier: short, opaque, never issued before.
std::string identifier();

/// This many unguessable decimal digits.
std::string digits(std::size_t count);

/// 256 bits of digest in lower-case hexadecimal.
std::string digest(std::string_view content);

/// The same as URL-safe Base64: shorter.
std::string shortDigest(std::string_view content);

/// Bytes in lower-case hexadecimal.
std::string hexadecimal(std::span<const unsigned char> bytes);

}

}
