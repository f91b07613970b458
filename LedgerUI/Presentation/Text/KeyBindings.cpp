#include "LedgerUI/Presentation/Text/KeyBindings.h"

#include <array>

namespace {

// In the order of Command. Ctrl is the command key on macOS.
constexpr std::array bindings = std::to_array<std::array<const char*, 2>>({
    {"Ctrl+1", nullptr},       {"Ctrl+2", nullptr},           {"Ctrl+3", nullptr},       {"Ctrl+4", nullptr},
    {"Ctrl+5", nullptr},       {"Ctrl+6", nullptr},           {"F5", "Ctrl+R"},          {"F6", nullptr},
    {"Shift+F6", nullptr},     {"Ctrl+N", nullptr},           {"Ctrl+Shift+I", nullptr}, {"Ctrl+Shift+T", nullptr},
    {"Ctrl+Shift+X", nullptr}, {"Ctrl+Return", "Ctrl+Enter"}, {"Ctrl+F", nullptr},       {"Alt+Left", nullptr},
    {"Alt+Right", nullptr},    {"Alt+Down", nullptr},         {"Ctrl+D", nullptr},       {"Ctrl+E", nullptr},
    {"Ctrl+I", nullptr},       {"Ctrl+Tab", nullptr},         {"Ctrl+Shift+O", nullptr}, {"F2", nullptr},
    {"Ctrl+,", nullptr},
});
static_assert(bindings.size() == static_cast<std::size_t>(Command::settings) + 1, "every command has its keys");

constexpr qsizetype boundPages = 6;

}

QList<QKeySequence> KeyBindings::keys(Command command)
{
    QList<QKeySequence> sequences;
    for (const char* text : bindings[static_cast<std::size_t>(command)]) {
        if (text)
            sequences.append(QKeySequence::fromString(QString::fromLatin1(text), QKeySequence::PortableText));
    }
    return sequences;
}

QList<QKeySequence> KeyBindings::pageKeys(qsizetype index)
{
    if (index >= boundPages)
        return {};
    return keys(static_cast<Command>(static_cast<qsizetype>(Command::page1) + index));
}
