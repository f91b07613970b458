#pragma once

#include <optional>

#include <QMenu>

#include "LedgerCore/Domain/Records/Requests/AccessRecords.h"

class LedgerStore;

/// The menu of the company button: the companies of the person, joining one by a code and applying for another. The
/// companies are asked for whenever it opens.
class EntryCompanyDirectoryView final : public QMenu {
    Q_OBJECT
public:
    explicit EntryCompanyDirectoryView(LedgerStore& store, QWidget* parent = nullptr);

Q_SIGNALS:
    void joinWanted();
    void applicationWanted();

protected:
    void changeEvent(QEvent* event) override;

private:
    void load();
    void present();
    void addCompanies();
    void addWays();

    LedgerStore& m_store;
    std::optional<CompanyChoices> m_choices;
    bool m_isLoading = false;
    bool m_isLoadWanted = false; // as soon as the store is free
};
