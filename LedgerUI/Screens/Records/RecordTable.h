#pragma once

#include <memory>

#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Records/RecordModel.h"

class RecordTotal;
struct RecordInks;

/// A table of records of one kind. Where its room is short it leaves columns out; its sums stand in a row of their own
/// that is always in sight.
class RecordTable final : public RowTable {
    Q_OBJECT
public:
    enum class Lines { one, two };
    explicit RecordTable(Lines lines, QWidget* parent = nullptr);
    ~RecordTable() override;

    void present(RecordRows rows, const RecordInks& inks);
    /// As high as its rows, up to so many of them.
    void fitRows(int most);
    /// The sums, to be placed under the table; hidden while there are none.
    [[nodiscard]] QWidget* total() const;
    [[nodiscard]] bool isEmpty() const;
    /// The only chosen row; empty for none.
    [[nodiscard]] std::string chosen() const;
    /// The entry that the chosen row leads to.
    [[nodiscard]] RecordEntry chosenEntry() const;
    /// Chooses the row as a page does that shows it: quietly where it is chosen already.
    void follow(std::string_view id);

protected:
    void layOut() override;

private:
    struct Parts;
    RecordTable(Lines lines, std::unique_ptr<Parts> parts, QWidget* parent);
    [[nodiscard]] int contentWidth(int column) const;
    void fitHeight();

    std::unique_ptr<Parts> m_parts;
    Lines m_lines;
    int m_mostRows = 0; // 0: as high as the page lets it be
};
