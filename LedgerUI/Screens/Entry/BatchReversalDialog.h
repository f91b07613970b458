#pragma once

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Entry/BatchReversal.h"

class FormField;
class LimitedEdit;
class PlainTable;
class TextLabel;

/// Undoes several entries for one reason, one request after the other, and says of each what became of it. It can be
/// stopped between two of them, and goes on where it stopped. Deletes itself when it closes; open it with `open()`.
class BatchReversalDialog final : public CommandForm {
    Q_OBJECT
public:
    BatchReversalDialog(LedgerStore& store, const std::vector<std::string>& ids, QWidget* parent);

    /// While reversals are being sent, leaving is stopping.
    void reject() override;

Q_SIGNALS:
    /// So many of them are reversed now. Told whenever it ends or stops.
    void reversed(std::size_t count);

private:
    enum class Stage { asking, running, stopping, stopped, done };

    void present() override;
    void adoptSnapshot() override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    /// All but the table, which may hold thousands of rows.
    void presentStage();
    void presentTable();
    /// Of an item, bringing its part into the table.
    void presentRow(std::size_t at);
    /// Which of the rows the table has, where these are not all.
    [[nodiscard]] QString listing() const;
    void proceed();
    void sendNext();
    void take(const Result<void>& reply);
    void rest();
    [[nodiscard]] bool isRunning() const { return m_stage == Stage::running || m_stage == Stage::stopping; }
    [[nodiscard]] Note note() const;

    BatchReversal m_batch;
    Stage m_stage = Stage::asking;
    std::optional<std::size_t> m_part = 0; // in the table; unset for those that are not reversed
    QString m_failure;                     // what stopped it, where it was not the person
    bool m_isReasonMissing = false;
    TextLabel* m_explanation = nullptr;
    PlainTable* m_table = nullptr;
    LimitedEdit* m_reason = nullptr;
    FormField* m_reasonField = nullptr;
};
