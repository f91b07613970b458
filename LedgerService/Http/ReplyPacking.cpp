#include "LedgerService/Http/ReplyPacking.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "LedgerService/Http/BodyPacker.h"

namespace LedgerService {

namespace {

/// A shorter body fits in a packet or two anyway.
constexpr std::size_t leastBytes = 2048;
constexpr int notModified = 304;

/// Whether it depends on the client's wishes how this reply goes out.
bool dependsOnClient(const Reply& reply)
{
    const bool isLong = reply.more || reply.body.size() >= leastBytes;
    return reply.status == notModified || (isLong && reply.contentType == "application/json");
}

/// The same state in other bytes has a weak tag.
void weakenTag(Reply& reply)
{
    const auto tag = std::ranges::find(reply.headers, "ETag", &std::pair<std::string, std::string>::first);
    if (tag != reply.headers.end())
        tag->second.insert(0, "W/");
}

void packBody(Reply& reply, ContentCoding coding)
{
    const std::shared_ptr packer = BodyPacker::create(coding);
    reply.headers.emplace_back("Content-Encoding", ContentCodings::nameOf(coding));
    reply.body = packer->pack(reply.body);
    if (!reply.more) {
        reply.body += packer->end();
        return;
    }
    reply.heldBytes += packer->heldBytes();
    reply.more = [packer, blocks = std::move(reply.more), ended = false]() mutable -> std::string {
        const auto block = blocks();
        if (!block.empty())
            return packer->pack(block);
        return std::exchange(ended, true) ? std::string{} : packer->end();
    };
}

}

bool ReplyPacking::packs(const Reply& reply, ContentCoding coding)
{
    return coding != ContentCoding::identity && reply.status != notModified && dependsOnClient(reply);
}

Reply ReplyPacking::packed(Reply reply, ContentCoding coding)
{
    if (!dependsOnClient(reply))
        return reply;
    if (coding != ContentCoding::identity)
        weakenTag(reply);
    if (packs(reply, coding))
        packBody(reply, coding);
    reply.headers.emplace_back("Vary", "Accept-Encoding");
    return reply;
}

}
