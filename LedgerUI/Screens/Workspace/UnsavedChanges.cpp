#include "LedgerUI/Screens/Workspace/UnsavedChanges.h"

#include <utility>

#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Dialogs/WindowBehind.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"
#include "LedgerUI/Screens/Workspace/PageView.h"

namespace {

QList<PageView*> pagesAround(const QWidget& part)
{
    return windowBehind(&part)->findChildren<PageView*>();
}

/// The question over the window of `part`.
MessageDialog* askOver(QWidget& part, std::function<void()> proceed)
{
    return MessageDialog::ask({.title = word(dialogWords(), "discardTitle"),
                               .text = word(dialogWords(), "discardBody"),
                               .confirm = word(dialogWords(), "discard"),
                               .cancel = word(dialogWords(), "keepEditing")},
                              part.window(), std::move(proceed));
}

}

std::size_t UnsavedChanges::count(const QWidget& part)
{
    std::size_t all = 0;
    for (const auto* page : pagesAround(part))
        all += page->unsavedChanges();
    return all;
}

void UnsavedChanges::leave(QWidget& part, std::function<void()> proceed, const std::function<void()>& stayed)
{
    if (count(part) == 0)
        return proceed();
    auto* question = askOver(part, [&part, proceed = std::move(proceed)] {
        for (auto* page : pagesAround(part))
            page->discardChanges();
        proceed();
    });
    if (stayed)
        QObject::connect(question, &QDialog::rejected, &part, stayed);
}

void UnsavedChanges::ask(QWidget& part, std::function<void()> proceed)
{
    if (count(part) == 0)
        proceed();
    else
        askOver(part, std::move(proceed));
}
