#pragma once

#include <vector>

#include <QAbstractTableModel>

#include "LedgerUI/Presentation/Company/GrantMatrix.h"

/// The matrix of rights as a table: the accounts stand at the rows' heads, the actions at those of the columns.
class GrantMatrixModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void present(std::vector<QString> heads, std::vector<GrantRow> rows);
    [[nodiscard]] const std::vector<GrantRow>& rows() const { return m_rows; }
    [[nodiscard]] const GrantCell& cell(const QModelIndex& index) const;

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<QString> m_heads;
    std::vector<GrantRow> m_rows;
};
