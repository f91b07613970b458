#include "LedgerUI/Screens/Company/CompanyTab.h"

#include <QEvent>

#include "LedgerCore/Client/Store/LedgerStore.h"

CompanyTab::CompanyTab(LedgerStore& store, QWidget* parent) : QWidget{parent}, m_store{store}
{
    connect(&m_store, &LedgerStore::snapshotChanged, this, &CompanyTab::presentIfSignedIn);
    connect(&m_store, &LedgerStore::isBusyChanged, this, &CompanyTab::presentIfSignedIn);
}

void CompanyTab::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        presentIfSignedIn();
}

void CompanyTab::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    presentIfSignedIn();
}

void CompanyTab::presentIfSignedIn()
{
    if (!m_store.snapshot() || !isVisible())
        return; // it is presented when it is shown
    present();
    Q_EMIT standingChanged();
}
