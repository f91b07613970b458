#pragma once

#include <map>

#include <QWidget>

#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

class AccountPicker;
class AmountEdit;
class CategoryField;
class EntryAmountField;
class EntryEffectPane;
class FormField;
class OriginalField;
class QLineEdit;
class QVBoxLayout;
class SegmentedControl;
class TextLabel;

/// The fields of the entry form, top down. It shows a content and tells what a person chose; it decides nothing.
class EntryFormBody final : public QWidget {
    Q_OBJECT
public:
    explicit EntryFormBody(QWidget* parent = nullptr);

    /// What categories and refundable incomes there are to choose from.
    void offer(const SnapshotPointer& snapshot, const TransactionDraft& draft);
    void present(const EntryFormContent& content, const std::optional<std::string>& originalID);

    /// The control that a message stands under.
    [[nodiscard]] QWidget* control(EntryField field) const;
    /// The last of the fields in the order of the keyboard.
    [[nodiscard]] QWidget* lastControl() const;

Q_SIGNALS:
    void kindChosen(const std::string& kind);
    void accountChosen(const std::string& id);
    void destinationChosen(const std::string& id);
    void currencyChosen(const std::string& code);
    void targetCurrencyChosen(const std::string& code);
    void amountEdited(const QString& text);
    void targetAmountEdited(const QString& text);
    void categoryChosen(const std::string& id);
    void originalChosen(const std::optional<std::string>& id);
    void referenceEdited(const QString& text);
    void noteEdited(const QString& text);

private:
    void buildFields();
    void buildLayout();
    void bind();
    void presentKinds(const EntryFormContent& content);
    void orderAmount(bool isBelowDestination);

    std::vector<EntryKindRow> m_kindRows;
    SegmentedControl* m_kinds = nullptr;
    TextLabel* m_kindHint = nullptr;
    TextLabel* m_direction = nullptr;
    AccountPicker* m_account = nullptr;
    FormField* m_accountField = nullptr;
    EntryAmountField* m_sent = nullptr;
    AccountPicker* m_destination = nullptr;
    FormField* m_destinationField = nullptr;
    EntryAmountField* m_received = nullptr;
    EntryEffectPane* m_effects = nullptr;
    CategoryField* m_category = nullptr;
    OriginalField* m_original = nullptr;
    QLineEdit* m_note = nullptr;
    FormField* m_noteField = nullptr;
    QVBoxLayout* m_layout = nullptr;
    bool m_isAmountBelowDestination = false;
};
