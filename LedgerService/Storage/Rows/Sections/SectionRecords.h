#pragma once

#include <algorithm>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerService/Storage/Sql/Columns.h"

namespace LedgerService {

/// How the changes of a section, capital or dividends, are read and written: each has a row of its own, and what it
/// made stands in a table of the record's kind under the same revision.
namespace SectionRecords {

template <class Record>
struct Made {
    int revision = 0;
    Record record;
};

/// A column of a record that was made.
template <class Value, class Record>
constexpr auto of(std::string_view name, Value Record::* field)
{
    return column(name, [field](auto& row) -> auto& { return row.record.*field; });
}

template <class Record>
constexpr auto revisionOf()
{
    return column("revision", &Made<Record>::revision);
}

template <class Change>
inline constexpr Columns changeColumns{
    column("revision", &Change::revision),  column("action", &Change::action),
    column("date", &Change::date),          column("note", &Change::note),
    column("member_id", &Change::memberID), column("created_at", &Change::createdAt)};

/// A record bears the day and the stamp of the change that made it.
template <class Record, class Change>
void date(Record& record, const Change& change)
{
    if constexpr (requires { record.createdAt; }) {
        record.date = change.date;
        record.createdAt = change.createdAt;
    }
}

/// Has `take` put each record of a query to its change, which must be there.
template <class Record, class List, class Change, class Take>
void eachRecord(Query& query, const List& list, std::vector<Change>& changes, const Take& take)
{
    RowReader<Made<Record>, List> reader{query, list};
    while (query.next()) {
        auto& made = reader.record();
        const auto change = std::ranges::lower_bound(changes, made.revision, {}, &Change::revision);
        if (change == changes.end() || change->revision != made.revision)
            throw std::runtime_error("a record of a section belongs to no change");
        date(made.record, *change);
        take(*change, made.record);
    }
}

/// The changes of a company's section from a revision on.
struct Range {
    Connection& connection;
    std::string_view companyID;
    int revision;

    Query& bind(Query& query) const { return query.bind("company", companyID).bind("revision", revision); }
};

/// Puts each record that the range has by this statement to its change.
template <class Record, class List, class Change>
void read(const Range& range, const std::string& statement, const List& list, std::vector<Change>& changes)
{
    Query query{range.connection, statement};
    eachRecord<Record>(range.bind(query), list, changes,
                       [](Change& change, const Record& record) { change.made = record; });
}

/// Writes one record of a change. `query` knows the company already.
template <class Record, class List>
void write(Query& query, const List& list, int revision, const Record& record)
{
    list.bind(query, Made<Record>{revision, record});
    query.run();
}

/// The change whose records are being written.
struct Writer {
    Connection& connection;
    std::string_view companyID;
    int revision;

    template <class List, class Record>
    void write(const std::string& statement, const List& list, const Record& made) const
    {
        Query query{connection, statement};
        SectionRecords::write(query.bind("company", companyID), list, revision, made);
    }
};

}

}
