#include "LedgerUI/Components/Fields/PasswordField.h"

#include "LedgerUI/Components/Buttons/IconButton.h"

namespace {

constexpr int eyeExtent = 24;
constexpr int eyeMargin = 4;

}

PasswordField::PasswordField(QWidget* parent) : QLineEdit{parent}
{
    setEchoMode(QLineEdit::Password);
    setTextMargins(0, 0, eyeExtent, 0);
    m_eye = new IconButton(QStringLiteral("eye"), IconButton::Frame::none, this);
    m_eye->setObjectName(QStringLiteral("passwordEye"));
    m_eye->setCheckable(true);
    m_eye->setFixedSize(eyeExtent, eyeExtent);
    m_eye->setCursor(Qt::ArrowCursor);
    connect(m_eye, &QToolButton::toggled, this, [this](bool isShown) {
        setEchoMode(isShown ? QLineEdit::Normal : QLineEdit::Password);
        presentEye();
    });
}

void PasswordField::setEyeNames(const QString& show, const QString& hide)
{
    m_showName = show;
    m_hideName = hide;
    presentEye();
}

QWidget* PasswordField::eye() const
{
    return m_eye;
}

void PasswordField::resizeEvent(QResizeEvent* event)
{
    QLineEdit::resizeEvent(event);
    m_eye->move(width() - eyeExtent - eyeMargin, (height() - eyeExtent) / 2);
}

void PasswordField::presentEye()
{
    m_eye->setGlyph(m_eye->isChecked() ? QStringLiteral("eye-slash") : QStringLiteral("eye"));
    m_eye->setName(m_eye->isChecked() ? m_hideName : m_showName);
}
