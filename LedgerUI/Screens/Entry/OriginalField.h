#pragma once

#include <optional>
#include <string>
#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Entry/EntryRefundables.h"

class FieldError;
class FormField;
class LimitedEdit;
class QComboBox;
class TextLabel;

/// What a refund pays back: an income of the ledger, found by typing any part of it, or a reference from outside.
class OriginalField final : public QWidget {
    Q_OBJECT
public:
    explicit OriginalField(QWidget* parent = nullptr);

    void offer(std::vector<EntryRefundableRow> rows);
    void present(const std::optional<std::string>& chosen, const QString& reference);
    [[nodiscard]] QWidget* focusTarget() const;
    [[nodiscard]] FieldError& error() const { return *m_error; }
    [[nodiscard]] LimitedEdit& reference() const { return *m_reference; }

Q_SIGNALS:
    void originalChosen(const std::optional<std::string>& id);
    void referenceEdited(const QString& text);

private:
    void retranslate();

    std::vector<EntryRefundableRow> m_rows;
    TextLabel* m_label = nullptr;
    QComboBox* m_incomes = nullptr;
    TextLabel* m_remaining = nullptr;
    FieldError* m_error = nullptr;
    LimitedEdit* m_reference = nullptr;
    FormField* m_referenceField = nullptr;
};
