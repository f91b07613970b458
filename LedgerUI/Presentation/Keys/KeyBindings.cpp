#include "LedgerUI/Presentation/Keys/KeyBindings.h"

#include <algorithm>
#include <array>

#include "LedgerCore/Domain/Contract.h"
#include "LedgerUI/Presentation/Text/Words.h"

namespace {

// Ctrl is the command key on macOS.
constexpr std::array bindings{
    KeyBinding{Command::help, KeyScope::everywhere, "F1", "help"},
    KeyBinding{Command::pressFocused, KeyScope::everywhere, "Return", "pressFocused"},
    KeyBinding{Command::leave, KeyScope::everywhere, "Esc", "leave"},
    KeyBinding{Command::refresh, KeyScope::everywhere, "F5 Ctrl+R", "refresh"},
    KeyBinding{Command::companies, KeyScope::everywhere, "Ctrl+Shift+O", "companies"},
    KeyBinding{Command::settings, KeyScope::everywhere, "Ctrl+,", "settings"},
    KeyBinding{Command::print, KeyScope::everywhere, "Ctrl+P", "print"},
    KeyBinding{Command::nextPane, KeyScope::everywhere, "F6", "nextPane"},
    KeyBinding{Command::previousPane, KeyScope::everywhere, "Shift+F6", "previousPane"},
    KeyBinding{Command::nextTab, KeyScope::everywhere, "Ctrl+Tab", "nextTab"},
    KeyBinding{Command::previousTab, KeyScope::everywhere, "Ctrl+Shift+Tab", "previousTab"},
    KeyBinding{Command::contextMenu, KeyScope::everywhere, "Shift+F10", "contextMenu"},
    KeyBinding{Command::editRecord, KeyScope::everywhere, "F2", "editRecord"},
    KeyBinding{Command::newEntry, KeyScope::ledger, "Ctrl+N", "newEntry"},
    KeyBinding{Command::newIncome, KeyScope::ledger, "Ctrl+Shift+I", "newIncome"},
    KeyBinding{Command::newTransfer, KeyScope::ledger, "Ctrl+Shift+T", "newTransfer"},
    KeyBinding{Command::newExchange, KeyScope::ledger, "Ctrl+Shift+X", "newExchange"},
    KeyBinding{Command::search, KeyScope::ledger, "Ctrl+F", "search"},
    KeyBinding{Command::clearFilters, KeyScope::ledger, "Ctrl+Shift+F", "clearFilters"},
    KeyBinding{Command::previousPeriod, KeyScope::ledger, "Alt+Left", "previousPeriod"},
    KeyBinding{Command::nextPeriod, KeyScope::ledger, "Alt+Right", "nextPeriod"},
    KeyBinding{Command::openPeriod, KeyScope::ledger, "Alt+Down", "openPeriod"},
    KeyBinding{Command::jumpToDay, KeyScope::ledger, "Ctrl+G", "jumpToDay"},
    KeyBinding{Command::groupByDay, KeyScope::ledger, "Ctrl+Shift+G", "groupByDay"},
    KeyBinding{Command::toggleDetail, KeyScope::ledger, "Ctrl+D", "toggleDetail"},
    KeyBinding{Command::sortNext, KeyScope::ledger, "F8", "sortNext"},
    KeyBinding{Command::turnSort, KeyScope::ledger, "Shift+F8", "turnSort"},
    KeyBinding{Command::openRow, KeyScope::ledger, "Return", "openRow"},
    KeyBinding{Command::copyRows, KeyScope::ledger, "Ctrl+C", "copyRows"},
    KeyBinding{Command::exportRows, KeyScope::ledger, "Ctrl+E", "exportRows"},
    KeyBinding{Command::importRows, KeyScope::ledger, "Ctrl+I", "importRows"},
    KeyBinding{Command::confirmForm, KeyScope::form, "Ctrl+Return Ctrl+Enter", "confirmForm"},
    KeyBinding{Command::confirmAndNew, KeyScope::form, "Ctrl+Shift+Return Ctrl+Shift+Enter", "confirmAndNew"},
    KeyBinding{Command::calculate, KeyScope::form, "+ - * /", "calculate"},
    KeyBinding{Command::calculated, KeyScope::form, "=", "calculated"},
    KeyBinding{Command::pasteReceipts, KeyScope::form, "Ctrl+V", "pasteReceipts"},
    KeyBinding{Command::laterDay, KeyScope::day, "+ Up", "laterDay"},
    KeyBinding{Command::earlierDay, KeyScope::day, "- Down", "earlierDay"},
    KeyBinding{Command::openCalendar, KeyScope::day, "Alt+Down", "openCalendar"},
    KeyBinding{Command::turnMonth, KeyScope::day, "PgUp PgDown", "turnMonth"},
    KeyBinding{Command::listEnds, KeyScope::list, "Home End", "listEnds"},
    KeyBinding{Command::moveCategory, KeyScope::list, "Alt+Up Alt+Down", "moveCategory"},
    KeyBinding{Command::foldCategory, KeyScope::list, "Left Right", "foldCategory"},
    KeyBinding{Command::toggleRight, KeyScope::rights, "Space", "toggleRight"},
    KeyBinding{Command::toggleAccountRights, KeyScope::rights, "Shift+Space", "toggleAccountRights"},
    KeyBinding{Command::toggleRightEverywhere, KeyScope::rights, "Ctrl+Space", "toggleRightEverywhere"},
};

const KeyBinding& binding(Command command)
{
    const auto* const found = std::ranges::find(bindings, command, &KeyBinding::command);
    require(found != bindings.end(), "every command has its keys");
    return *found;
}

}

std::span<const KeyBinding> KeyBindings::all()
{
    return bindings;
}

QList<QKeySequence> KeyBindings::keys(Command command)
{
    QList<QKeySequence> sequences;
    for (const auto& text : qString(binding(command).keys).split(QLatin1Char(' ')))
        sequences.append(QKeySequence::fromString(text, QKeySequence::PortableText));
    return sequences;
}

QList<QKeySequence> KeyBindings::pageKeys(qsizetype index)
{
    if (index < 0 || index >= boundPages)
        return {};
    return {QKeySequence::fromString(QStringLiteral("Ctrl+%1").arg(index + 1), QKeySequence::PortableText)};
}

QString KeyBindings::shown(Command command)
{
    return keys(command).first().toString(QKeySequence::NativeText);
}
