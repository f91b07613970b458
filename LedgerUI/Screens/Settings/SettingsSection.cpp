#include "LedgerUI/Screens/Settings/SettingsSection.h"

#include <QEvent>

#include "LedgerCore/Client/Store/LedgerStore.h"

SettingsSection::SettingsSection(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store} {}

void SettingsSection::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::LanguageChange && m_store.snapshot())
        present();
    QWidget::changeEvent(event);
}

void SettingsSection::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (m_store.snapshot())
        present();
}
