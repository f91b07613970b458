#include <vector>

#include <QAccessibleWidget>

#include "LedgerUI/Components/Period/PeriodGridView.h"

namespace {

/// One period of the grid.
class CellForReaders final : public QAccessibleInterface {
public:
    CellForReaders(PeriodGridView* grid, int at) : m_grid{grid}, m_at{at} {}

    [[nodiscard]] bool isValid() const override { return m_at < m_grid->cellCount(); }
    [[nodiscard]] QObject* object() const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* childAt(int /*x*/, int /*y*/) const override { return nullptr; }
    [[nodiscard]] QAccessibleInterface* parent() const override
    {
        return QAccessible::queryAccessibleInterface(m_grid);
    }
    [[nodiscard]] QAccessibleInterface* child(int /*index*/) const override { return nullptr; }
    [[nodiscard]] int childCount() const override { return 0; }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* /*child*/) const override { return -1; }
    [[nodiscard]] QString text(QAccessible::Text kind) const override
    {
        return kind == QAccessible::Name && isValid() ? m_grid->cell(m_at).spoken : QString{};
    }
    void setText(QAccessible::Text /*kind*/, const QString& /*text*/) override {}
    [[nodiscard]] QRect rect() const override
    {
        const auto cell = isValid() ? m_grid->cellRect(m_at) : QRect{};
        return {m_grid->mapToGlobal(cell.topLeft()), cell.size()};
    }
    [[nodiscard]] QAccessible::Role role() const override { return QAccessible::ListItem; }
    [[nodiscard]] QAccessible::State state() const override
    {
        QAccessible::State state;
        if (!isValid()) {
            state.invalid = true;
            return state;
        }
        state.focusable = state.selectable = true;
        state.focused = m_grid->hasFocus() && m_grid->currentCell() == m_at;
        state.selected = m_grid->isChosen(m_at);
        state.disabled = !m_grid->cell(m_at).isOffered;
        return state;
    }

private:
    PeriodGridView* m_grid;
    int m_at;
};

class GridForReaders final : public QAccessibleWidget {
public:
    explicit GridForReaders(PeriodGridView* grid) : QAccessibleWidget{grid, QAccessible::List}, m_grid{grid} {}
    ~GridForReaders() override
    {
        for (const auto id : m_cells)
            QAccessible::deleteAccessibleInterface(id);
    }

    [[nodiscard]] int childCount() const override { return m_grid->cellCount(); }
    [[nodiscard]] QAccessibleInterface* child(int index) const override
    {
        if (index < 0 || index >= childCount())
            return nullptr;
        while (static_cast<int>(m_cells.size()) <= index)
            m_cells.push_back(
                QAccessible::registerAccessibleInterface(new CellForReaders{m_grid, static_cast<int>(m_cells.size())}));
        return QAccessible::accessibleInterface(m_cells[static_cast<std::size_t>(index)]);
    }
    [[nodiscard]] int indexOfChild(const QAccessibleInterface* child) const override
    {
        for (int at = 0; at < static_cast<int>(m_cells.size()); ++at) {
            if (QAccessible::accessibleInterface(m_cells[static_cast<std::size_t>(at)]) == child)
                return at;
        }
        return -1;
    }
    [[nodiscard]] QAccessibleInterface* childAt(int x, int y) const override
    {
        return child(m_grid->cellAt(m_grid->mapFromGlobal(QPoint{x, y})));
    }
    [[nodiscard]] QAccessibleInterface* focusChild() const override
    {
        return m_grid->hasFocus() ? child(m_grid->currentCell()) : nullptr;
    }

private:
    PeriodGridView* m_grid;
    mutable std::vector<QAccessible::Id> m_cells; // made when they are asked for
};

QAccessibleInterface* forReaders(const QString& /*className*/, QObject* object)
{
    auto* grid = qobject_cast<PeriodGridView*>(object);
    return grid ? new GridForReaders{grid} : nullptr;
}

}

void offerPeriodGridToReaders()
{
    static const bool isOffered = [] {
        QAccessible::installFactory(forReaders);
        return true;
    }();
    static_cast<void>(isOffered);
}
