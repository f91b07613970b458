#include "LedgerUI/Components/Fields/LimitedEdit.h"

#include <QEvent>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Presentation/Forms/TextLimit.h"
#include "LedgerUI/Theme/StyleProperty.h"

LimitedEdit::LimitedEdit(std::size_t limit, QWidget* parent) : QLineEdit{parent}, m_limit{limit}
{
    setMaxLength(TextLimit::longestKept);
    m_counter = new TextLabel(TypeStep::small, Token::text2, this);
    m_counter->setWordWrap(true);
    m_counter->hide();
    connect(this, &QLineEdit::textChanged, this, &LimitedEdit::count);
}

QWidget* LimitedEdit::counter() const
{
    return m_counter;
}

bool LimitedEdit::isWithinLimit() const
{
    return TextLimit::over(text(), m_limit) == 0;
}

void LimitedEdit::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange)
        count();
    QLineEdit::changeEvent(event);
}

void LimitedEdit::count()
{
    const auto shown = TextLimit::message(text(), m_limit, InterfaceLanguage::tag());
    m_counter->setText(shown);
    m_counter->setTone(isWithinLimit() ? Token::text2 : Token::danger);
    m_counter->setVisible(!shown.isEmpty());
    setStyleProperty(this, "invalid", !isWithinLimit());
    setAccessibleDescription(shown);
}
