#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include "LedgerService/Http/ContentCoding.h"

namespace LedgerService {

/// Packs a body piece by piece, quickly rather than tightly. Throws when the library fails, as without memory.
class BodyPacker {
public:
    /// One for the coding, which is not identity.
    static std::unique_ptr<BodyPacker> create(ContentCoding coding);

    BodyPacker() = default;
    virtual ~BodyPacker() = default;
    BodyPacker(const BodyPacker&) = delete;
    BodyPacker& operator=(const BodyPacker&) = delete;

    /// Packs the piece so that the client can unpack all of it before the next one comes; the result is not empty.
    [[nodiscard]] virtual std::string pack(std::string_view piece) = 0;

    /// What stands after the last piece and tells the client that this was all. Called once.
    [[nodiscard]] virtual std::string end() = 0;

    /// The memory that it takes from the first piece on.
    [[nodiscard]] virtual std::size_t heldBytes() const = 0;
};

}
