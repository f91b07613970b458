#pragma once

#include <string>

#include <QWidget>

class FormField;
class LedgerStore;
class QLineEdit;
class QPushButton;
class QToolButton;
class TextLabel;

/// Which service the program talks to: folded it shows the address, open it can be changed until the program ends.
class AddressFold final : public QWidget {
    Q_OBJECT
public:
    /// `defaultAddress` is the one that the program started with.
    AddressFold(LedgerStore& store, std::string defaultAddress, QWidget* parent = nullptr);

    /// Opens with a message under the field and puts the focus there.
    void complain(const QString& message);
    /// Hands what is typed to the store; an empty field means the default address.
    void commit();
    /// The controls from top to bottom.
    [[nodiscard]] QList<QWidget*> tabStops() const;

Q_SIGNALS:
    /// Return was pressed in the field.
    void submitted();

protected:
    void changeEvent(QEvent* event) override;

private:
    void buildLayout();
    void setOpen(bool isOpen);
    void retranslate();
    void present();

    LedgerStore& m_store;
    std::string m_defaultAddress;
    QToolButton* m_toggle = nullptr;
    TextLabel* m_current = nullptr;
    QWidget* m_details = nullptr;
    QLineEdit* m_address = nullptr;
    FormField* m_field = nullptr;
    QPushButton* m_restore = nullptr;
};
