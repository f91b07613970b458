#include "LedgerService/Receipts/ReceivedReceipt.h"

#include <algorithm>
#include <optional>

#include <boost/describe.hpp>
#include <sodium.h>

#include "LedgerCore/Domain/Entries/Posting/ReceiptRules.h"
#include "LedgerCore/Domain/Json/Json.h"
#include "LedgerCore/Domain/Records/Requests/ServiceCode.h"
#include "LedgerCore/Domain/Text/TextFold.h"
#include "LedgerService/Receipts/ReceiptContent.h"

namespace LedgerService {

namespace {

/// The fields of `Upload`, where they stand in the body.
struct UploadView {
    std::string_view name;
    std::string_view mime;
    std::string_view dataBase64;
};
BOOST_DESCRIBE_STRUCT(UploadView, (), (name, mime, dataBase64))

Refusal invalid(std::string words)
{
    return Refusal::of(ServiceCode::validationError, std::move(words));
}

/// Writes what the Base64 text means to the beginning of `room`, which may be where the text stands: no byte is written
/// before those that it is made of are read. How many bytes it is, or nothing when the text is no Base64.
std::optional<std::size_t> decode(std::string_view base64, std::string& room)
{
    std::size_t size = 0;
    const auto failed = sodium_base642bin(reinterpret_cast<unsigned char*>(room.data()), room.size(), base64.data(),
                                          base64.size(), nullptr, &size, nullptr, sodium_base64_VARIANT_ORIGINAL);
    return failed == 0 ? std::optional{size} : std::nullopt;
}

}

std::expected<ReceivedReceipt, Refusal> ReceivedReceipt::from(std::string body)
{
    ReceivedReceipt receipt;
    receipt.m_content = std::move(body);
    auto& text = receipt.m_content;
    const auto upload = Json::view<UploadView>(text);
    if (!upload)
        return std::unexpected(invalid("The body is not the record that is expected here."));
    if (!ReceiptRules::isName(upload->name))
        return std::unexpected(invalid("The receipt has no name that a file could have."));
    if (std::ranges::find(ReceiptRules::mediaTypes, upload->mime) == ReceiptRules::mediaTypes.end())
        return std::unexpected(Refusal::of(ServiceCode::unsupportedAttachment, "Receipts are JPEG, PNG, HEIC or PDF."));
    receipt.m_name = TextFold::trimmed(upload->name);
    receipt.m_mediaType = upload->mime;
    const auto size = decode(upload->dataBase64, text); // over the text: from here on the view shows nothing
    if (!size)
        return std::unexpected(invalid("The receipt's content is no Base64."));
    if (*size > ReceiptRules::maximumBytes)
        return std::unexpected(Refusal::of(ServiceCode::payloadTooLarge, "A receipt has 10 MB at most."));
    text.resize(*size);
    if (!ReceiptContent::isOf(receipt.m_mediaType, text))
        return std::unexpected(
            Refusal::of(ServiceCode::unsupportedAttachment, "The receipt is not what its type says."));
    return receipt;
}

}
