#include "LedgerUI/Screens/Records/RecordEquation.h"

#include <QGridLayout>
#include <QStringList>

#include "LedgerUI/Components/Page/WrapLayout.h"
#include "LedgerUI/Components/Text/TextLabel.h"
#include "LedgerUI/Theme/Space.h"

namespace {

constexpr int figureMinimum = 88;

QWidget* block(const RecordFigure& figure, QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* grid = new QGridLayout(box);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(Space::step1);
    grid->setVerticalSpacing(2);
    auto* name = new TextLabel(TypeStep::small, Token::text2, box);
    name->setText(figure.label);
    auto* sign = new TextLabel(TypeStep::body, Token::text2, box);
    sign->setText(figure.sign);
    auto* amount = new TextLabel(TypeStep::section, Token::text, box);
    amount->setText(figure.amount);
    amount->setAccessibleName(figure.spoken);
    amount->setMinimumWidth(figureMinimum);
    grid->addWidget(name, 0, 1);
    grid->addWidget(sign, 1, 0);
    grid->addWidget(amount, 1, 1);
    return box;
}

}

RecordEquation::RecordEquation(QWidget* parent) : QFrame{parent}
{
    setProperty("card", QStringLiteral("true"));
}

void RecordEquation::present(const std::vector<RecordFigure>& figures)
{
    setVisible(!figures.empty());
    if (figures == m_figures)
        return;
    m_figures = figures;
    for (auto* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        delete child;
    delete layout();
    auto* row = new WrapLayout(this, Space::step3);
    row->setContentsMargins(Space::step3, Space::step2, Space::step3, Space::step2);
    QStringList said;
    for (const auto& figure : m_figures) {
        row->addWidget(block(figure, this));
        said << figure.label + QLatin1Char{' '} + figure.spoken;
    }
    setAccessibleName(said.join(QStringLiteral(", ")));
}
