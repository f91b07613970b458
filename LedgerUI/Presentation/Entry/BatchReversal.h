#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "LedgerCore/Client/Errors/Failure.h"
#include "LedgerCore/Domain/Entries/VisibleBooks.h"
#include "LedgerUI/Presentation/Table/PlainTableModel.h"

/// Several entries that are reversed one after the other, for one reason. Each is a request of its own; what became of
/// one changes nothing about the others.
class BatchReversal {
public:
    struct Item {
        enum class Stage {
            excluded, // cannot be reversed, and is not sent
            waiting,
            sending,
            done,
            refused, // by the service
            unknown  // sent, and nobody knows whether it was posted
        };
        static constexpr std::size_t stageCount = 6;

        std::string id;
        std::optional<LedgerTransaction> entry = {}; // as it stood; unset when it is not the member's to see
        Stage stage = Stage::waiting;
        QString note = {};        // why it is excluded or was refused
        bool mayBePosted = false; // by an earlier sending

        bool operator==(const Item&) const = default;
    };

    /// What the member can reverse of these entries, in their order. One whose earlier request is kept is left out: the
    /// store would send that one's reason and day.
    static BatchReversal of(const std::vector<std::string>& ids, const VisibleBooks& books,
                            const std::function<bool(const std::string& id)>& isKept, std::string_view locale);

    [[nodiscard]] const std::vector<Item>& items() const { return m_items; }
    /// The place of the item that is on its way.
    [[nodiscard]] std::optional<std::size_t> sendingAt() const { return m_sending; }
    /// How many the service has judged, of all that are sent.
    [[nodiscard]] std::size_t judged() const { return count(Item::Stage::done) + count(Item::Stage::refused); }
    [[nodiscard]] std::size_t count(Item::Stage stage) const { return m_counts[static_cast<std::size_t>(stage)]; }
    /// How many are still to be sent, those of unknown outcome among them.
    [[nodiscard]] std::size_t left() const;

    /// The entry to be sent next, which is on its way from here on: first one of unknown outcome, whose request the
    /// store sends again as it stood. Nothing while one is on its way, or once none is left.
    std::optional<std::string> begin();
    /// The service has posted the reversal that is on its way.
    void succeed();
    /// It has not, or nobody knows. Whether the next one can be sent all the same: only a refusal that judges this one
    /// entry says nothing about the others.
    [[nodiscard]] bool fail(const Failure& failure, QString message);

    /// The row of one item, for the change of a single one among thousands.
    [[nodiscard]] PlainRow row(std::size_t at, const LedgerSnapshot& snapshot, std::string_view locale) const;
    /// A table shows as many at once.
    static constexpr std::size_t partSize = 10'000;
    [[nodiscard]] std::vector<PlainRow> rows(std::size_t part, const LedgerSnapshot& snapshot,
                                             std::string_view locale) const;
    /// Those that are not reversed, as many as a table shows; what is not sent at all comes last.
    [[nodiscard]] std::vector<PlainRow> openRows(const LedgerSnapshot& snapshot, std::string_view locale) const;
    [[nodiscard]] std::size_t partCount() const { return (m_items.size() + partSize - 1) / partSize; }
    static std::vector<PlainColumn> columns(std::string_view locale);

private:
    /// The one on its way comes to this; returns it.
    Item& settle(Item::Stage stage);
    void move(std::size_t at, Item::Stage stage);

    // Kept with every step, as looking through tens of thousands of items at each takes their square.
    std::vector<Item> m_items;
    std::array<std::size_t, Item::stageCount> m_counts{};
    std::optional<std::size_t> m_sending;
    std::optional<std::size_t> m_unknown; // one at most: nothing else is sent before it
    std::size_t m_next = 0;               // none before it waits
};
