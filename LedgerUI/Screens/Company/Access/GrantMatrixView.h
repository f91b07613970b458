#pragma once

#include <QTableView>

#include "LedgerUI/Presentation/Company/GrantMatrixModel.h"

class TextLabel;

/// The matrix of rights. The column of accounts and the row of actions stay while the rest scrolls. A click or Space
/// gives or takes one right, Shift+Space those of the account, Ctrl+Space those of the action.
class GrantMatrixView final : public QTableView {
    Q_OBJECT
public:
    explicit GrantMatrixView(QWidget* parent = nullptr);

    /// `corner` says what the rows are.
    void present(const QString& corner, std::vector<QString> heads, std::vector<GrantRow> rows);
    [[nodiscard]] const std::vector<GrantRow>& rows() const { return m_model->rows(); }
    /// Why the current cell cannot be changed; empty when it can.
    [[nodiscard]] QString whyNot() const;
    [[nodiscard]] QSize sizeHint() const override;

Q_SIGNALS:
    void toggleWanted(std::size_t row, std::size_t column);
    void rowToggleWanted(std::size_t row);
    void columnToggleWanted(std::size_t column);
    /// Another cell is the current one, or what is said of it has changed.
    void currentMoved();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;

private:
    void layOut();

    GrantMatrixModel* m_model;
    TextLabel* m_corner;
    QPersistentModelIndex m_pressed;
};
