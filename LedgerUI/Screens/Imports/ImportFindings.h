#pragma once

#include <QWidget>

#include "LedgerUI/Presentation/Imports/LedgerImport.h"

class PlainTable;
class TextLabel;

/// What was found in a file: its issues with the chosen one in full, or the entries that it would record with what they
/// do to the balances.
class ImportFindings final : public QWidget {
    Q_OBJECT
public:
    explicit ImportFindings(QWidget* parent);

    /// The rows of the next reading, or of the same one in another language; what is chosen stays.
    void take(LedgerImport::Table table);
    void chooseFirst();
    /// Nothing is shown while there is no reading.
    void present(ImportReadingPointer reading);

private:
    void presentIssue();
    void presentEffects();
    [[nodiscard]] bool hasIssues() const { return m_reading && m_reading->issueCount() > 0; }
    [[nodiscard]] bool isReady() const { return m_reading && m_reading->isReady(); }

    ImportReadingPointer m_reading;
    TextLabel* m_tableTitle = nullptr;
    PlainTable* m_table = nullptr; // issues or entries
    TextLabel* m_issue = nullptr;  // the chosen issue in full, with what to do about it
    TextLabel* m_effectsTitle = nullptr;
    PlainTable* m_effects = nullptr; // on balances
};
