#include "LedgerUI/Components/Fields/SearchField.h"

#include "LedgerUI/Theme/Icon.h"

namespace {

constexpr int glyphOverlap = -6; // the style leaves more room behind the glass than before it

}

SearchField::SearchField(QWidget* parent) : QLineEdit{parent}
{
    addAction(Icon::of(QStringLiteral("search"), Token::text2), QLineEdit::LeadingPosition);
    setClearButtonEnabled(true);
    setTextMargins(glyphOverlap, 0, 0, 0);
}

void SearchField::setPrompt(const QString& prompt)
{
    setPlaceholderText(prompt);
    setAccessibleName(prompt);
}
