#pragma once

#include <QDialog>

class PrimaryButton;
class QScrollArea;

/// All keys of the program, shown over the window in use until it is closed. The list has the focus and scrolls by
/// keys; Return closes it from there.
class KeysDialog final : public QDialog {
    Q_OBJECT
public:
    explicit KeysDialog(QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    QWidget* buildFoot();
    void present();
    [[nodiscard]] QSize room() const;

    QScrollArea* m_scroll = nullptr;
    PrimaryButton* m_close = nullptr;
};
