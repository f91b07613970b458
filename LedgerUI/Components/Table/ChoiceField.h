#pragma once

#include <vector>

#include <QComboBox>

#include "LedgerUI/Components/Table/ChoiceList.h"

class Popover;

/// A box that shows what is ticked in a list, which drops down inside the window and stays there while it is ticked.
class ChoiceField final : public QComboBox {
    Q_OBJECT
public:
    explicit ChoiceField(QWidget* parent = nullptr);

    /// `summary` is what the closed box says; the names of what is ticked where it is empty.
    void present(const ChoiceList::Words& words, const std::vector<ChoiceList::Choice>& choices,
                 const ChoiceList::Chosen& chosen, const QString& summary = {});
    [[nodiscard]] const ChoiceList::Chosen& chosen() const { return m_chosen; }

    void showPopup() override;
    void hidePopup() override;

Q_SIGNALS:
    void chosenChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void presentText();

    ChoiceList::Words m_words;
    std::vector<ChoiceList::Choice> m_choices;
    ChoiceList::Chosen m_chosen;
    QString m_summary;
    Popover* m_popover = nullptr; // made when it first drops down
    ChoiceList* m_list = nullptr;
};
