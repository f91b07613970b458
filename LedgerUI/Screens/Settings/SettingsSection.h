#pragma once

#include <QWidget>

#include "LedgerUI/Components/Page/Banner.h"

class LedgerStore;

/// One section of the settings. It observes the store by itself and shows everything anew when the language changes.
class SettingsSection : public QWidget {
    Q_OBJECT
Q_SIGNALS:
    /// Something is done, or was refused: said in the banner of the settings; an empty text takes it back.
    void said(Banner::Kind kind, const QString& text);

protected:
    SettingsSection(LedgerStore& store, QWidget* parent);

    virtual void present() = 0;
    [[nodiscard]] LedgerStore& store() const { return m_store; }

    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    LedgerStore& m_store;
};
