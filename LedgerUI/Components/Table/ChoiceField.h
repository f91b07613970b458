#pragma once

#include <vector>

#include <QToolButton>

#include "LedgerUI/Components/Table/ChoiceList.h"

class Popover;

/// A field that says which of several things are chosen and opens the list of them. It stays open while they are
/// ticked.
class ChoiceField final : public QToolButton {
    Q_OBJECT
public:
    explicit ChoiceField(QWidget* parent = nullptr);

    /// `summary` is what the field says while it is closed.
    void present(const QString& summary, ChoiceList::Words words, std::vector<ChoiceList::Choice> choices,
                 ChoiceList::Chosen chosen);

Q_SIGNALS:
    void chosenChanged(const ChoiceList::Chosen& chosen);

private:
    void openList();

    ChoiceList::Words m_words;
    std::vector<ChoiceList::Choice> m_choices;
    ChoiceList::Chosen m_chosen;
    Popover* m_popover = nullptr;
    ChoiceList* m_list = nullptr;
};
