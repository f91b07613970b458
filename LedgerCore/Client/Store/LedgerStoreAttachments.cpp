#include <algorithm>
#include <limits>
#include <utility>

#include <QByteArray>
#include <QPointer>

#include "LedgerCore/Client/Files/FileSaving.h"
#include "LedgerCore/Client/Receipts/AttachmentCache.h"
#include "LedgerCore/Client/Receipts/AttachmentFilename.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Client/Store/StoreOperation.h"

namespace {

constexpr auto onWorker = std::numeric_limits<std::size_t>::max();

std::string uploadBody(std::string name, std::string mime, const std::string& data)
{
    const auto bytes = QByteArray::fromRawData(data.data(), static_cast<qsizetype>(data.size()));
    return Json::encode(
        Upload{.name = std::move(name), .mime = std::move(mime), .dataBase64 = bytes.toBase64().toStdString()});
}

}

QCoro::Task<Result<Attachment>> LedgerStore::uploadAttachment(std::string name, std::string mime, std::string data,
                                                              bool publishError)
{
    return operation<Attachment>(publishing(publishError),
                                 [this, name = std::move(name), mime = std::move(mime), data = std::move(data)] {
                                     return upload(name, mime, data);
                                 });
}

QCoro::Task<Result<Attachment>> LedgerStore::upload(std::string name, std::string mime, std::string data)
{
    auto request = m_connection.authorized({.method = "POST", .path = "v1/attachments"});
    if (!request)
        co_return std::unexpected(request.error());
    const QPointer<LedgerStore> self = this;
    const auto body = std::make_shared<std::string>();
    const auto size = data.size();
    auto encoding = runForSize(size, [body, name = std::move(name), mime = std::move(mime), data = std::move(data)] {
        *body = uploadBody(name, mime, data);
    });
    co_await encoding;
    if (!self)
        co_return std::unexpected(Cancelled{});
    request->body = std::move(*body);
    auto sending = m_connection.exchange(std::move(*request));
    const auto reply = co_await sending;
    if (!reply)
        co_return std::unexpected(reply.error());
    auto uploaded = Json::decode<Attachment>(reply->body);
    if (!uploaded)
        co_return std::unexpected(invalidResponse());
    m_uploadedAttachmentMetadata.insert_or_assign(uploaded->id, *uploaded);
    co_return std::move(*uploaded);
}

QCoro::Task<Result<void>> LedgerStore::attach(std::string entryID, std::vector<std::string> attachmentIDs,
                                              bool publishError)
{
    const AttachmentLink link{.attachmentIDs = std::move(attachmentIDs)};
    return change({.method = "POST", .path = "v1/transactions/" + entryID + "/attachments", .body = Json::encode(link)},
                  publishing(publishError));
}

const Attachment* LedgerStore::attachment(const std::string& id) const
{
    if (m_snapshot) {
        const auto& held = m_snapshot->attachments;
        const auto found = std::ranges::find(held, id, &Attachment::id);
        if (found != held.end())
            return &*found;
    }
    const auto uploaded = m_uploadedAttachmentMetadata.find(id);
    return uploaded == m_uploadedAttachmentMetadata.end() ? nullptr : &uploaded->second;
}

QCoro::Task<Result<std::filesystem::path>> LedgerStore::downloadAttachment(std::string id, bool publishError)
{
    return operation<std::filesystem::path>(publishing(publishError),
                                            [this, id = std::move(id)] { return download(id); });
}

QCoro::Task<Result<std::filesystem::path>> LedgerStore::download(std::string id)
{
    auto request = m_connection.authorized({.path = "v1/attachments/" + id});
    if (!request)
        co_return std::unexpected(request.error());
    const auto* known = attachment(id);
    const auto fileName = AttachmentFilename::safe(known ? known->name : "", known ? known->mime : "", locale());
    if (!m_attachmentCache)
        m_attachmentCache = std::make_unique<AttachmentCache>();
    if (auto cached = m_attachmentCache->find(id, fileName))
        co_return std::move(*cached);
    const QPointer<LedgerStore> self = this;
    auto sending = m_connection.exchange(std::move(*request));
    auto reply = co_await sending;
    if (!reply)
        co_return std::unexpected(reply.error());
    const auto place = m_attachmentCache ? m_attachmentCache->place(id, fileName) : std::nullopt;
    if (!place)
        co_return std::unexpected(clientError(ClientCode::unknown));
    const auto isWritten = std::make_shared<bool>(false);
    auto writing = runForSize(onWorker, [isWritten, path = *place, content = std::move(reply->body)] {
        *isWritten = !FileSaving::write(path, content, FileSaving::Readers::owner);
    });
    co_await writing;
    if (!self)
        co_return std::unexpected(Cancelled{});
    refreshAttachmentCacheSize();
    if (!*isWritten)
        co_return std::unexpected(clientError(ClientCode::unknown));
    co_return *place;
}

void LedgerStore::refreshAttachmentCacheSize()
{
    assign(m_attachmentCacheBytes, m_attachmentCache ? m_attachmentCache->byteCount() : 0,
           &LedgerStore::attachmentCacheBytesChanged);
}

void LedgerStore::clearAttachmentCache()
{
    if (m_attachmentCache)
        m_attachmentCache->clear();
    refreshAttachmentCacheSize();
}
