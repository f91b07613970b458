#include "LedgerUI/Components/Fields/FormField.h"

#include <QComboBox>
#include <QVBoxLayout>

#include "LedgerUI/Components/Buttons/ComboBoxLists.h"
#include "LedgerUI/Components/Fields/FieldError.h"
#include "LedgerUI/Components/Fields/LimitedEdit.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

FormField::FormField(QWidget* field, QWidget* parent) : QWidget{parent}, m_field{field}
{
    m_label = new TextLabel(TypeStep::small, Token::text2, this);
    m_label->setBuddy(field);
    m_error = new FieldError(field, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_label);
    layout->addSpacing(Space::labelToField);
    layout->addWidget(field);
    layout->addWidget(m_error);
    if (const auto* limited = qobject_cast<LimitedEdit*>(field))
        layout->addWidget(limited->counter());
}

void FormField::wrapLabel()
{
    m_label->setWordWrap(true);
}

void FormField::setLabel(const QString& label)
{
    m_label->setText(label);
    if (auto* box = qobject_cast<QComboBox*>(m_field))
        nameComboBox(*box, label);
    else
        m_field->setAccessibleName(label);
}
