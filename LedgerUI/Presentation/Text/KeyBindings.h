#pragma once

#include <span>
#include <string_view>

#include <QKeySequence>
#include <QList>

/// What a person can do from the keyboard anywhere in the workspace or a form.
enum class Command {
    page1,
    page2,
    page3,
    page4,
    page5,
    page6,
    refresh,
    nextPane,
    previousPane,
    newEntry,
    newIncome,
    newTransfer,
    newExchange,
    confirmForm,
    search,
    previousPeriod,
    nextPeriod,
    openPeriod,
    toggleDetail,
    exportData,
    importData,
    nextTab,
    companySwitcher,
    editRecord,
    settings,
};

namespace KeyBindings {

/// The keys of a command; the first one is shown in menus.
QList<QKeySequence> keys(Command command);

/// The keys of the n-th visible page, counted from 0; none past the sixth.
QList<QKeySequence> pageKeys(qsizetype index);

}
