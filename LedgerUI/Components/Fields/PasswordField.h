#pragma once

#include <QLineEdit>

class IconButton;

/// A password with an eye that shows it while it is pressed in.
class PasswordField final : public QLineEdit {
    Q_OBJECT
public:
    explicit PasswordField(QWidget* parent = nullptr);

    /// What readers and the tool tip call the eye in its two states.
    void setEyeNames(const QString& show, const QString& hide);
    [[nodiscard]] QWidget* eye() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void presentEye();

    IconButton* m_eye = nullptr;
    QString m_showName;
    QString m_hideName;
};
