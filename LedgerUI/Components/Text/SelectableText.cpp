#include "LedgerUI/Components/Text/SelectableText.h"

#include <cmath>

#include <QAbstractTextDocumentLayout>
#include <QTextDocument>
#include <QWheelEvent>

#include "LedgerUI/Theme/StyleProperty.h"

SelectableText::SelectableText(const QString& text, TypeStep step, Token tone, QWidget* parent) : QTextEdit{parent}
{
    setReadOnly(true);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::ClickFocus);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setFont(TypeScale::font(step));
    document()->setDocumentMargin(0);
    viewport()->setAutoFillBackground(false);
    setStyleProperty(this, "tone", tone == Token::text2 ? QStringLiteral("text2") : QStringLiteral("text"));
    setPlainText(text);
    setAccessibleName(text);
    auto policy = QSizePolicy{QSizePolicy::Preferred, QSizePolicy::Minimum};
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
}

QSize SelectableText::sizeHint() const
{
    return {static_cast<int>(std::ceil(document()->idealWidth())), heightForWidth(width())};
}

QSize SelectableText::minimumSizeHint() const
{
    return {fontMetrics().averageCharWidth(), heightForWidth(width())};
}

int SelectableText::heightForWidth(int width) const
{
    const auto shown = document()->textWidth();
    document()->setTextWidth(width);
    const auto height = document()->documentLayout()->documentSize().height();
    document()->setTextWidth(shown);
    return static_cast<int>(std::ceil(height));
}

void SelectableText::resizeEvent(QResizeEvent* event)
{
    QTextEdit::resizeEvent(event);
    if (event->oldSize().width() != width())
        updateGeometry();
}

/// The pane around it scrolls.
void SelectableText::wheelEvent(QWheelEvent* event)
{
    event->ignore();
}
