#pragma once

#include <string>

namespace LedgerService {

/// A certificate for 127.0.0.1 that vouches for itself, made when it is needed, with its key in a file beside it.
class SelfMadeCertificate {
public:
    enum class Validity { today, past };

    /// Writes `<path>.pem` and `<path>.key`, over what stands there.
    explicit SelfMadeCertificate(const std::string& path, Validity validity = Validity::today);

    [[nodiscard]] const std::string& file() const { return m_file; }
    [[nodiscard]] const std::string& keyFile() const { return m_keyFile; }

private:
    std::string m_file;
    std::string m_keyFile;
};

}
