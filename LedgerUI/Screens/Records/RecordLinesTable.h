#pragma once

#include <vector>

#include <QFrame>

#include "LedgerUI/Presentation/Forms/AmountTyping.h"
#include "LedgerUI/Presentation/Records/RecordForm.h"

class QCheckBox;
class QGridLayout;
class QLineEdit;
class TextLabel;

/// A row per person with a percentage or an amount to type, and what follows from all of them. Return goes down the
/// column that is typed in.
class RecordLinesTable final : public QWidget {
    Q_OBJECT
public:
    explicit RecordLinesTable(QWidget* parent = nullptr);

    void present(const RecordLines& lines);
    /// Has Tab come here after `stop`.
    void comeAfter(QWidget* stop);
    [[nodiscard]] QWidget* firstStop() const;
    /// The first row with a message; null without one.
    [[nodiscard]] QWidget* firstWrong(const RecordLines& lines) const;

Q_SIGNALS:
    void edited(const RecordEdit& edit);
    /// The keys left what is typed for a person.
    void left(const std::string& personID);
    /// What was to be pasted as the amount of a person is not one.
    void pasteRefused(PasteRefusal refusal, const std::string& personID);

private:
    struct Row {
        std::string id;
        QCheckBox* tick = nullptr;
        TextLabel* name = nullptr;
        TextLabel* beside = nullptr;
        QLineEdit* typed = nullptr;
        TextLabel* mark = nullptr;
        TextLabel* amount = nullptr;
        TextLabel* message = nullptr;
    };

    void build(const RecordLines& lines);
    Row makeRow(const RecordLine& line, int at, bool takesAmounts);
    QLineEdit* makeEdit(const std::string& personID, bool takesAmounts);
    void goBelow(const QLineEdit* edit);
    void presentRow(const Row& row, const RecordLine& line, const RecordLines& lines);

    QFrame* m_frame = nullptr;
    QGridLayout* m_grid = nullptr;
    std::vector<TextLabel*> m_heads;
    std::vector<Row> m_rows;
    TextLabel* m_totalName = nullptr;
    TextLabel* m_total = nullptr;
    TextLabel* m_amountTotal = nullptr;
    TextLabel* m_message = nullptr;
};
