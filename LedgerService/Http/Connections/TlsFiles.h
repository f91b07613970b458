#pragma once

#include <string>

namespace LedgerService {

/// A certificate and its key, both in PEM. The certificate comes first in its file, then those that lead to a known
/// authority.
struct TlsFiles {
    std::string certificate;
    std::string key;
};

}
