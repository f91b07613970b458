#pragma once

#include <QWidget>

#include "LedgerUI/Components/Fields/FieldMap.h"
#include "LedgerUI/Presentation/Entry/EntryFormContent.h"

class AccountPicker;
class AmountEdit;
class CategoryField;
class EntryAmountField;
class EntryEffectPane;
class FormField;
class LimitedEdit;
class OriginalField;
class QPushButton;
class QVBoxLayout;
class SegmentedControl;
class TextLabel;

/// The fields of the entry form, top down. It shows a content and tells what a person changes; it decides nothing.
class EntryFormBody final : public QWidget {
    Q_OBJECT
public:
    explicit EntryFormBody(QWidget* parent = nullptr);

    /// What categories and refundable incomes there are to choose from.
    void offer(const SnapshotPointer& snapshot, const TransactionDraft& draft);
    void present(const EntryFormContent& content, const std::optional<std::string>& originalID);

    /// Writes out what stands in the amounts, as leaving them does.
    void settleAmounts();
    /// The control that a message stands under.
    [[nodiscard]] QWidget* control(EntryField field) const { return m_fields.control(field); }
    /// Where the first message stands, or a text that is too long; null when nothing is wrong.
    [[nodiscard]] QWidget* firstWrong() const;

Q_SIGNALS:
    void edited(const EntryChange& change);
    void categoryPinWanted(const std::string& id, bool isPinned);
    void categoryEditWanted(const std::string& id);
    void categoryCreationWanted(const QString& name);

private:
    void buildFields();
    void buildLayout();
    void mapFields();
    void bind();
    void bindAmount(EntryAmountField& field, EntryField name);
    template <class Field, class... Values>
    void connectEdit(const Field& field, void (Field::*signal)(Values...), auto change);
    void presentKinds(const EntryFormContent& content);
    void presentHelp(const EntryFormContent& content);
    void orderAmount(bool isBelowDestination);

    FieldMap<EntryField> m_fields;
    std::vector<EntryKindRow> m_kindRows;
    SegmentedControl* m_kinds = nullptr;
    TextLabel* m_kindHint = nullptr;
    TextLabel* m_direction = nullptr;
    QPushButton* m_helpButton = nullptr;
    TextLabel* m_help = nullptr;
    AccountPicker* m_account = nullptr;
    FormField* m_accountField = nullptr;
    EntryAmountField* m_sent = nullptr;
    AccountPicker* m_destination = nullptr;
    FormField* m_destinationField = nullptr;
    EntryAmountField* m_received = nullptr;
    EntryEffectPane* m_effects = nullptr;
    CategoryField* m_category = nullptr;
    OriginalField* m_original = nullptr;
    LimitedEdit* m_note = nullptr;
    FormField* m_noteField = nullptr;
    QVBoxLayout* m_layout = nullptr;
    bool m_isAmountBelowDestination = false;
};
