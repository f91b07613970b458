#pragma once

#include "LedgerCore/Client/Session/IdentifierSource.h"

/// Gives "id-1", "id-2", ...
class SequentialIdentifiers final : public IdentifierSource {
public:
    std::string next() override { return "id-" + std::to_string(++m_last); }

private:
    int m_last = 0;
};
