#pragma once

#include <map>
#include <vector>

#include <QWidget>

#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Records/RecordForm.h"

class FormField;
class QGridLayout;
class QHBoxLayout;
class QPushButton;
class RecordEquation;
class RecordLinesTable;
class TextLabel;

/// The body of a form for capital or dividends: whatever fields, table and figures its content lists. Controls that
/// stay keep their focus, their caret and what is typed in them.
class RecordFormBody final : public QWidget {
    Q_OBJECT
public:
    explicit RecordFormBody(QWidget* parent = nullptr);

    void present(const RecordFormContent& content);
    /// A quiet action above the table.
    void addTableAction(QPushButton* button);
    /// Where a person begins.
    [[nodiscard]] QWidget* firstStop() const;
    /// Where the first message stands; null without one.
    [[nodiscard]] QWidget* firstWrong(const RecordFormContent& content) const;
    /// Whether every text is short enough for the service.
    [[nodiscard]] bool isWithinLimits() const;

Q_SIGNALS:
    void edited(const RecordEdit& edit);
    /// The keys left the amount, or what is typed for a person in the table.
    void amountLeft(const std::string& personID);
    /// What was to be pasted into the amount, or into that of a person in the table, is not one.
    void pasteRefused(PasteRefusal refusal, const std::string& personID);

private:
    struct Place {
        FormField* box = nullptr;
        QWidget* control = nullptr;
    };

    Place& place(const RecordField& field);
    Place make(const RecordField& field);
    void presentField(Place& place, const RecordField& field);
    void arrange(const RecordFormContent& content);

    std::map<RecordPart, Place> m_places;
    std::vector<RecordPart> m_order;
    TextLabel* m_explanation = nullptr;
    RecordEquation* m_equation = nullptr;
    QGridLayout* m_grid = nullptr;
    QWidget* m_tableHead = nullptr;
    QHBoxLayout* m_tableActions = nullptr;
    RecordLinesTable* m_lines = nullptr;
    QGridLayout* m_below = nullptr; // fields that follow the table
    TextLabel* m_preview = nullptr;
    TextLabel* m_hint = nullptr;
};
