#pragma once

#include <span>
#include <string_view>

#include <QKeySequence>
#include <QList>
#include <QString>

/// What a person can do from the keyboard.
enum class Command {
    help,
    refresh,
    nextPane,
    previousPane,
    nextTab,
    previousTab,
    contextMenu,
    editRecord,
    pressFocused,
    leave,
    newEntry,
    newIncome,
    newTransfer,
    newExchange,
    search,
    clearFilters,
    previousPeriod,
    nextPeriod,
    openPeriod,
    jumpToDay,
    groupByDay,
    toggleDetail,
    sortNext,
    turnSort,
    openRow,
    copyRows,
    exportRows,
    importRows,
    print,
    confirmForm,
    confirmAndNew,
    calculate,
    calculated,
    pasteReceipts,
    laterDay,
    earlierDay,
    openCalendar,
    turnMonth,
    listEnds,
    moveCategory,
    foldCategory,
    toggleRight,
    toggleAccountRights,
    toggleRightEverywhere,
    companies,
    settings,
};

/// Where a key works; the parts of the list of all keys.
enum class KeyScope { everywhere, ledger, form, day, list, rights };

/// A command with its keys, and the row of keyWords() that says what it does.
struct KeyBinding {
    Command command;
    KeyScope scope;
    std::string_view keys; // as QKeySequence writes them, with a blank between two of them
    std::string_view words;
};

namespace KeyBindings {

/// Every binding there is; the list that F1 shows is made from it.
std::span<const KeyBinding> all();

/// The keys of a command; the first one is shown in menus.
QList<QKeySequence> keys(Command command);

/// The keys of the n-th visible page, counted from 0; none past the sixth.
QList<QKeySequence> pageKeys(qsizetype index);
inline constexpr qsizetype boundPages = 6;

/// The first key of a command as the platform writes it, for tool tips.
QString shown(Command command);

}
