#include "LedgerUI/Presentation/Receipts/ReceiptUploads.h"

#include <algorithm>
#include <utility>

#include <QCoro/QCoroTask>
#include <QFutureWatcher>
#include <QtConcurrent/QtConcurrentRun>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Entries/EntryLimits.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Text/Values/ByteText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

using Stage = ReceiptUpload::Stage;

ReceiptUploads::ReceiptUploads(LedgerStore& store, std::size_t taken, QObject* parent)
    : QObject{parent}, m_store{store}, m_whose{store.signedIn()}, m_taken{taken}
{
    // Queued: the operation that has just ended is over by then.
    connect(&m_store, &LedgerStore::isBusyChanged, this, &ReceiptUploads::proceed, Qt::QueuedConnection);
}

void ReceiptUploads::add(std::vector<ReceiptSource> sources)
{
    const auto taken = std::min(room(), sources.size());
    m_leftOut = sources.size() - taken;
    for (auto& source : std::span{sources}.first(taken))
        m_uploads.push_back({.number = ++m_lastNumber, .source = std::move(source)});
    Q_EMIT changed();
    proceed();
}

void ReceiptUploads::adopt(const std::vector<std::string>& attachmentIDs)
{
    for (const auto& id : attachmentIDs) {
        const auto* known = m_store.attachment(id);
        ReceiptUpload upload{.number = ++m_lastNumber, .stage = Stage::uploaded};
        upload.attachment = known ? *known : Attachment{};
        upload.attachment.id = id;
        upload.source.name = qString(upload.attachment.name);
        m_uploads.push_back(std::move(upload));
    }
    Q_EMIT changed();
}

void ReceiptUploads::adopt(std::vector<ReceiptUpload> failed)
{
    for (auto& each : failed) {
        each.number = ++m_lastNumber;
        m_uploads.push_back(std::move(each));
    }
    Q_EMIT changed();
}

void ReceiptUploads::remove(int number)
{
    const bool wasBusy = isBusy();
    m_leftOut = 0;
    if (std::erase_if(m_uploads, [&](const ReceiptUpload& each) { return each.number == number; }) == 0)
        return;
    Q_EMIT changed();
    if (wasBusy && !isBusy())
        Q_EMIT rested();
}

void ReceiptUploads::retry(int number)
{
    auto* upload = find(number);
    if (!upload || upload->stage != Stage::failed)
        return;
    m_leftOut = 0;
    upload->reason = {};
    upload->stage = upload->ready ? Stage::ready : Stage::waiting;
    Q_EMIT changed();
    proceed();
}

void ReceiptUploads::proceed()
{
    prepareNext();
    uploadNext();
}

void ReceiptUploads::prepareNext()
{
    auto* upload = m_isPreparing ? nullptr : first(Stage::waiting);
    if (!upload)
        return;
    m_isPreparing = true;
    upload->stage = Stage::preparing;
    using Prepared = std::expected<std::shared_ptr<const ReadyReceipt>, ReceiptProblem>;
    auto* watcher = new QFutureWatcher<Prepared>(this);
    connect(watcher, &QFutureWatcherBase::finished, this, [this, watcher, number = upload->number] {
        auto prepared = watcher->result();
        watcher->deleteLater();
        m_isPreparing = false;
        if (auto* done = find(number); done && prepared)
            done->ready = *std::move(prepared);
        settle(number, prepared ? Stage::ready : Stage::failed,
               prepared ? ReceiptUpload::Reason{} : ReceiptUpload::Reason{prepared.error()});
    });
    watcher->setFuture(QtConcurrent::run([source = upload->source, locale = m_store.locale()]() -> Prepared {
        auto ready = ReceiptSources::prepared(source, locale);
        if (!ready)
            return std::unexpected(ready.error());
        return std::make_shared<const ReadyReceipt>(*std::move(ready));
    }));
    Q_EMIT changed();
}

void ReceiptUploads::uploadNext()
{
    auto* upload = m_isUploading || m_store.isBusy() || !isAtHome() ? nullptr : first(Stage::ready);
    if (!upload)
        return;
    m_isUploading = true;
    upload->stage = Stage::uploading;
    const auto& prepared = upload->ready->prepared;
    Q_EMIT changed();
    QCoro::connect(m_store.uploadAttachment(prepared.name, prepared.mime, prepared.data, false), this,
                   [this, number = upload->number](const Result<Attachment>& reply) {
                       m_isUploading = false;
                       if (auto* done = find(number); done && reply)
                           done->attachment = *reply;
                       settle(number, reply ? Stage::uploaded : Stage::failed,
                              reply ? ReceiptUpload::Reason{} : ReceiptUpload::Reason{reply.error()});
                   });
}

void ReceiptUploads::settle(int number, Stage stage, ReceiptUpload::Reason reason)
{
    if (auto* upload = find(number)) {
        upload->stage = stage;
        upload->reason = std::move(reason);
        Q_EMIT changed();
        if (stage != Stage::ready && !isBusy())
            Q_EMIT rested();
    }
    proceed();
}

void ReceiptUploads::markLinked()
{
    m_taken += std::erase_if(m_uploads, [](const ReceiptUpload& each) { return each.stage == Stage::uploaded; });
    Q_EMIT changed();
}

void ReceiptUploads::startOver()
{
    m_uploads.clear();
    m_taken = 0;
    m_leftOut = 0;
    Q_EMIT changed();
}

std::size_t ReceiptUploads::room() const
{
    const auto taken = m_taken + m_uploads.size();
    return taken < EntryLimits::receipts ? EntryLimits::receipts - taken : 0;
}

/// A form may wait unseen for its member while others are signed in, or for its company while another one is open.
bool ReceiptUploads::isAtHome() const
{
    return m_whose && m_store.signedIn() == m_whose;
}

bool ReceiptUploads::isBusy() const
{
    return std::ranges::any_of(m_uploads, [](const ReceiptUpload& each) {
        return each.stage != Stage::uploaded && each.stage != Stage::failed;
    });
}

std::vector<std::string> ReceiptUploads::attachmentIDs() const
{
    std::vector<std::string> ids;
    for (const auto& each : m_uploads) {
        if (each.stage == Stage::uploaded)
            ids.push_back(each.attachment.id);
    }
    return ids;
}

std::vector<ReceiptUpload> ReceiptUploads::failed() const
{
    std::vector<ReceiptUpload> left;
    std::ranges::copy_if(m_uploads, std::back_inserter(left),
                         [](const ReceiptUpload& each) { return each.stage == Stage::failed; });
    return left;
}

std::vector<ReceiptRow> ReceiptUploads::rows(std::string_view locale) const
{
    const auto textOf = [&](const ReceiptUpload& upload) -> QString {
        switch (upload.stage) {
        case Stage::waiting:
            return wordIn(locale, receiptWords(), "row.waiting");
        case Stage::preparing:
            return wordIn(locale, receiptWords(), "row.preparing");
        case Stage::ready:
        case Stage::uploading:
            return wordIn(locale, receiptWords(), "row.uploading");
        case Stage::failed:
            return wordIn(locale, receiptWords(), "row.failed");
        case Stage::uploaded:
            break;
        }
        const auto size = byteText(upload.attachment.byteCount, locale);
        const bool isCompressed = upload.ready && upload.ready->isCompressed;
        return isCompressed ? wordIn(locale, receiptWords(), "row.compressed", {size.toStdString()}) : size;
    };
    std::vector<ReceiptRow> rows;
    for (const auto& each : m_uploads) {
        const auto* problem = std::get_if<ReceiptProblem>(&each.reason);
        const auto* failure = std::get_if<Failure>(&each.reason);
        const auto mime = each.ready ? each.ready->prepared.mime : each.attachment.mime;
        rows.push_back(
            {.number = each.number,
             .name = each.ready ? qString(each.ready->prepared.name) : each.source.name,
             .state = textOf(each),
             .message = problem   ? ReceiptSources::text(*problem, locale)
                        : failure ? FailureText::of(m_store, *failure, locale)
                                  : QString{},
             .isDocument = mime.empty() ? each.source.name.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive)
                                        : mime == "application/pdf",
             .isBusy = each.stage != Stage::uploaded && each.stage != Stage::failed,
             // A file that could not be read may be there the next time; one of a wrong kind stays wrong.
             .mayRetry = each.stage == Stage::failed && (!problem || *problem == ReceiptProblem::unreadable)});
    }
    return rows;
}

ReceiptUpload* ReceiptUploads::find(int number)
{
    const auto found = std::ranges::find(m_uploads, number, &ReceiptUpload::number);
    return found == m_uploads.end() ? nullptr : &*found;
}

ReceiptUpload* ReceiptUploads::first(Stage stage)
{
    const auto found = std::ranges::find(m_uploads, stage, &ReceiptUpload::stage);
    return found == m_uploads.end() ? nullptr : &*found;
}
