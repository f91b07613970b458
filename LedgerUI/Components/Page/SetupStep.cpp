#include "LedgerUI/Components/Page/SetupStep.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "LedgerUI/Components/Page/Line.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int numberExtent = 22;

}

SetupStep::SetupStep(int number, const QString& title, const QString& sentence, QPushButton* button, QWidget* parent)
    : QWidget{parent}
{
    auto* circle = new TextLabel(TypeStep::micro, Token::text2, this);
    circle->setProperty("chip", QStringLiteral("number"));
    circle->setText(QString::number(number));
    circle->setAlignment(Qt::AlignCenter);
    circle->setFixedSize(numberExtent, numberExtent);
    circle->setBold(true);
    auto* name = new TextLabel(TypeStep::body, Token::text, this);
    name->setText(title);
    name->setWordWrap(true);
    name->setBold(number == 1);
    auto* what = new TextLabel(TypeStep::small, Token::text2, this);
    what->setText(sentence);
    what->setWordWrap(true);
    button->setAccessibleDescription(title);

    auto* texts = new QVBoxLayout;
    texts->setSpacing(0);
    texts->addWidget(name);
    texts->addWidget(what);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(0, Space::step3, 0, Space::step3);
    row->setSpacing(Space::step3);
    row->addWidget(circle);
    row->addLayout(texts, 1);
    row->addWidget(button);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    if (number == 1)
        rows->addWidget(new Line(Qt::Horizontal, this));
    rows->addLayout(row);
    rows->addWidget(new Line(Qt::Horizontal, this));
}
