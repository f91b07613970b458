#pragma once

#include <functional>
#include <string_view>

#include "LedgerUI/Components/Chart/ChartPainter.h"
#include "LedgerUI/Components/Table/RowTable.h"
#include "LedgerUI/Presentation/Reports/Grids/ReportGrid.h"

class ReportGridModel;

/// A table of a report. Keys move from figure to figure; Return or two presses open the entries behind one. Its heads
/// and keys ask for another order.
class ReportTable final : public RowTable {
    Q_OBJECT
public:
    using Density = RowDelegate::Density;

    explicit ReportTable(const QString& name, Density density = Density::oneLine, QWidget* parent = nullptr);

    void present(ReportGrid grid, const ChartColors& colors);
    /// From now on it is as high as its rows, or the first `most` of them.
    void showWhole(int most);
    /// Its rows are entries, which the menu offers to show where no figure has several behind it; their glyphs have the
    /// colours of their kinds.
    void haveEntries(std::function<ThemeColor(std::string_view)> kindInk = {});
    /// Whether its menu offers to save it as a file.
    void offerSaving(bool isOffered) { m_offersSaving = isOffered; }
    /// For who sees the figures of a row elsewhere: a menu of what they are made of, and the row for a spreadsheet.
    void openRowMenu(std::string_view id, QPoint place);
    void copyRow(std::string_view id);
    [[nodiscard]] const ReportGridModel& grid() const { return *m_model; }

Q_SIGNALS:
    void backingWanted(const ReportBacking& backing);
    /// A row was opened where no figure stands.
    void rowOpened(const QString& id);
    /// Another row was chosen.
    void rowChosen(const QString& id);
    void copied();
    /// The table of this identity is to be copied, with rows that it does not show.
    void wholeCopyWanted(const QString& id);
    /// The table of this name is to be saved as a file.
    void saveWanted(const QString& name);
    /// It is to stand in this order; unset for that of the books.
    void sortWanted(const std::optional<ReportSort>& sort);

protected:
    void layOut() override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    struct Look;
    ReportTable(ReportGridModel* model, std::shared_ptr<Look> look, const QString& name, Density density,
                QWidget* parent);
    void openCurrent();
    void openMenu(QPoint place);
    void copyCurrent();
    void copyTable(const std::vector<int>& rows);
    void takeHeight();
    void presentSort();
    void forgetWidths();
    enum class Beside { counts, leftOut };
    [[nodiscard]] int widestText(std::size_t at, Beside beside) const;
    [[nodiscard]] int contentWidth(int column) const;
    [[nodiscard]] int contentWidth(int column, int widest) const;

    ReportGridModel* m_model;
    std::shared_ptr<Look> m_look;
    Density m_density;
    bool m_offersSaving = false;
    bool m_hasEntries = false;
    int m_rowsShown = 0;           // as high as these; 0 for as high as the place
    std::vector<int> m_textWidths; // of the columns; empty until they are measured
    std::vector<int> m_nameWidths; // of those with names, without what stands beside them
};
