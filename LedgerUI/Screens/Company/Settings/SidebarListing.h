#pragma once

#include <QWidget>

#include "LedgerCore/Client/Errors/Failure.h"

class LedgerStore;
class SettingRow;
class ToggleSwitch;

/// Whether the side bar lists the screen of capital and dividends: a switch for each of its two sections, which takes
/// effect at once. What is not listed keeps its rights and records.
class SidebarListing final : public QWidget {
    Q_OBJECT
public:
    explicit SidebarListing(LedgerStore& store, QWidget* parent = nullptr);

    /// As the newest books say.
    void present();

Q_SIGNALS:
    void done(const QString& sentence);

private:
    struct Row {
        SettingRow* row = nullptr;
        ToggleSwitch* toggle = nullptr;
    };
    Row addRow(const char* name);
    void presentRow(const Row& row, const char* title, bool isOn, bool mayUse);
    void list(bool isContributions, bool isOn);
    void finish(const Result<void>& reply);

    LedgerStore& m_store;
    Row m_contributions;
    Row m_dividends;
};
