#include "LedgerUI/Components/Fields/SearchField.h"

#include <QToolButton>

#include "LedgerCore/Domain/Entries/EntryCopy.h"
#include "LedgerUI/Components/Buttons/SpokenRole.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr int glyphOverlap = -6; // the style leaves more room behind the glass than before it

}

SearchField::SearchField(QWidget* parent) : QLineEdit{parent}
{
    const auto* const glass = addAction(Icon::of(QStringLiteral("search"), Token::text2), QLineEdit::LeadingPosition);
    for (auto* button : findChildren<QToolButton*>()) {
        if (button->defaultAction() == glass)
            speakAsPicture(*button); // it looks like a button to readers, and does nothing
    }
    setClearButtonEnabled(true);
    setTextMargins(glyphOverlap, 0, 0, 0);
}

void SearchField::setPrompt(const QString& prompt)
{
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
    const auto clear = word(EntryCopy::words(), "clearSearch");
    for (auto* button : findChildren<QToolButton*>()) {
        // The one that clears has no action of ours behind it.
        if (!button->defaultAction() || !actions().contains(button->defaultAction())) {
            button->setAccessibleName(clear);
            button->setToolTip(clear);
        }
    }
}
