#pragma once

#include <QFrame>

class IconButton;
class LedgerStore;
class TextLabel;

/// Says that the open company is a sample, and with which e-mail and password a person can come back to it.
class DemonstrationNotice final : public QFrame {
    Q_OBJECT
public:
    explicit DemonstrationNotice(LedgerStore& store, QWidget* parent = nullptr);

    void setFolded(bool isFolded);

protected:
    void changeEvent(QEvent* event) override;

private:
    void build();
    void present();

    LedgerStore& m_store;
    bool m_isFolded = false;
    QWidget* m_texts = nullptr;
    TextLabel* m_title = nullptr;
    TextLabel* m_text = nullptr;
    TextLabel* m_again = nullptr;
    TextLabel* m_credentials = nullptr;
    IconButton* m_copy = nullptr;
};
