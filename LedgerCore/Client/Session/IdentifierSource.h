#pragma once

#include <string>

/// Where idempotency keys and request identifiers come from.
class IdentifierSource {
public:
    virtual ~IdentifierSource() = default;

    /// An identifier that was never given before.
    virtual std::string next() = 0;
};

/// Random UUIDs in lower case.
class RandomIdentifiers final : public IdentifierSource {
public:
    std::string next() override;
};
