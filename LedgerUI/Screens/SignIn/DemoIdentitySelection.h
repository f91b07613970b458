#pragma once

#include <string>

#include <QPushButton>

class LedgerStore;
class QActionGroup;

/// Opens the demonstration as one of its people, chosen from a menu.
class DemoIdentitySelection final : public QPushButton {
    Q_OBJECT
public:
    explicit DemoIdentitySelection(LedgerStore& store, QWidget* parent = nullptr);

Q_SIGNALS:
    /// Emitted before the request, as by the forms.
    void submitting();
    void addressRefused(const QString& message);

protected:
    void changeEvent(QEvent* event) override;

private:
    void start(const std::string& profile);
    void retranslate();

    LedgerStore& m_store;
    QActionGroup* m_profiles = nullptr;
};
