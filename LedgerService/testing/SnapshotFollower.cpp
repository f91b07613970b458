#include "LedgerService/testing/SnapshotFollower.h"

#include <algorithm>
#include <utility>

#include <boost/describe.hpp>
#include <fmt/core.h>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerCore/Domain/Json/Json.h"

namespace LedgerService {

namespace {

constexpr auto path = "/v1/snapshot";

struct Totals {
    std::int64_t entryCount = 0;
    std::int64_t attachmentCount = 0;
};
BOOST_DESCRIBE_STRUCT(Totals, (), (entryCount, attachmentCount))

template <class Row>
void merge(SharedList<Row>& held, const SharedList<Row>& news)
{
    for (const auto& each : news) {
        const auto known = std::ranges::find(held, each.id, &Row::id);
        if (known == held.end())
            held.push_back(each);
        else
            held[static_cast<std::size_t>(known - held.begin())] = each;
    }
}

template <class Record>
Record decoded(const HttpAnswer& answer)
{
    auto record = Json::decode<Record>(answer.body);
    require(record.has_value(), "the service sends a snapshot");
    return *std::move(record);
}

}

std::string SnapshotFollower::conditions(const std::string& tag, std::string_view manipulations)
{
    return fmt::format("If-None-Match: {}\r\nA-IM: {}\r\n", tag, manipulations);
}

int SnapshotFollower::refresh()
{
    const auto answer = m_client.send("GET", path, m_token, "", m_tag.empty() ? "" : conditions(m_tag));
    if (answer.status == 226)
        take(answer);
    if (answer.status == 200)
        m_held = decoded<LedgerSnapshot>(answer);
    m_tag = answer.header("etag");
    return answer.status;
}

LedgerSnapshot SnapshotFollower::whole()
{
    return decoded<LedgerSnapshot>(m_client.send("GET", path, m_token));
}

void SnapshotFollower::take(const HttpAnswer& answer)
{
    require(answer.header("delta-base") == m_tag, "the news are of what is held");
    auto news = decoded<LedgerSnapshot>(answer);
    merge(m_held.transactions, news.transactions);
    merge(m_held.attachments, news.attachments);
    news.transactions = std::move(m_held.transactions);
    news.attachments = std::move(m_held.attachments);
    m_held = std::move(news);
    const auto totals = decoded<Totals>(answer);
    require(totals.entryCount == static_cast<std::int64_t>(m_held.transactions.size()) &&
                totals.attachmentCount == static_cast<std::int64_t>(m_held.attachments.size()),
            "the news lead to as many as there are");
}

}
