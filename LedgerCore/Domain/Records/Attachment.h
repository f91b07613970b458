#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <boost/describe.hpp>

/// A receipt file.
struct Attachment {
    std::string id;
    std::optional<std::string> transactionID; // unset while uploaded but not yet linked
    std::string name;
    std::string mime;
    std::int64_t byteCount = 0;
    std::string createdAt;

    bool operator==(const Attachment&) const = default;
};
BOOST_DESCRIBE_STRUCT(Attachment, (), (id, transactionID, name, mime, byteCount, createdAt))

/// Body of uploading a receipt.
struct Upload {
    std::string name;
    std::string mime;
    std::string dataBase64; // the file

    bool operator==(const Upload&) const = default;
};
BOOST_DESCRIBE_STRUCT(Upload, (), (name, mime, dataBase64))

/// Body that links uploaded files to an entry.
struct AttachmentLink {
    std::vector<std::string> attachmentIDs;

    bool operator==(const AttachmentLink&) const = default;
};
BOOST_DESCRIBE_STRUCT(AttachmentLink, (), (attachmentIDs))
