#include "LedgerUI/Screens/Exports/LedgerPrinting.h"

#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Exports/LedgerPrint.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Ledger/Listing/LedgerBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

void open(LedgerStore& store, PrintSource source, QWidget* over, const LedgerPrinting::Done& done)
{
    auto* dialog = new PrintDialog(store, std::move(source), over->window());
    QObject::connect(dialog, &PrintDialog::finished, over, [done](const QString& what) { done(what); });
    dialog->open();
}

PrintJob jobOf(LedgerStore& store, LedgerPrint::Asked asked)
{
    return {.document = [asked](const std::string& locale) { return LedgerPrint::list(asked, locale); },
            .permission = [store = &store, asked] { return LedgerPrint::permission(store, asked); }};
}

LedgerBookPointer inLanguage(const LedgerBookPointer& book, const std::string& locale)
{
    return book->locale() == locale ? book : std::make_shared<const LedgerBook>(book->snapshotPointer(), locale);
}

}

Action LedgerPrinting::list(LedgerStore& store, LedgerBrowser& browser, QWidget* over, Done done)
{
    const bool isReady = browser.listing() != nullptr;
    const auto source = [&store, listing = browser.listing()] {
        return jobOf(store, {store.snapshot(), listing, momentNow(store.today())});
    };
    return {.id = QStringLiteral("printLedger"),
            .text = word(printWords(), "action"),
            .glyph = QStringLiteral("printer"),
            .keys = KeyBindings::keys(Command::print),
            .isOffered = store.canExport() && isReady,
            .run = [&store, source, over, done = std::move(done)] { open(store, source, over, done); }};
}

Action LedgerPrinting::selection(LedgerStore& store, LedgerBrowser& browser, const Selected& selected, QWidget* over,
                                 Done done)
{
    const auto count = groupedNumber(selected.count, InterfaceLanguage::tag());
    return {.id = QStringLiteral("printSelected"),
            .text = word(exportWords(), "selected.print", {count}),
            .glyph = QStringLiteral("printer"),
            .isOffered = store.canExport() && selected.count > 1,
            .run = [&store, &browser, ids = selected.ids, over, done = std::move(done)] {
                const auto chosen = ids();
                if (chosen.empty()) // what was selected has gone meanwhile; nothing stands for the whole page
                    return;
                const auto source = [&store, listing = browser.listing(), chosen] {
                    return jobOf(store, {store.snapshot(), listing, momentNow(store.today()), chosen});
                };
                open(store, source, over, done);
            }};
}

void LedgerPrinting::statement(LedgerStore& store, const std::string& accountID, const Period& period, QWidget* over,
                               const Done& done)
{
    const auto source = [&store, accountID, period] {
        const LedgerPrint::AskedStatement asked{store.snapshot(), accountID, period, momentNow(store.today())};
        return PrintJob{
            .document = [asked](const std::string& locale) { return LedgerPrint::statement(asked, locale); },
            .permission = [store = &store,
                           asked] { return LedgerPrint::permission(store, asked, InterfaceLanguage::tag()); }};
    };
    open(store, source, over, done);
}

Action LedgerPrinting::entry(LedgerStore& store, LedgerBookPointer book, std::uint32_t at, QWidget* over, Done done)
{
    const bool isOne = book && at != LedgerBook::none;
    const auto source = [&store, book, at] {
        return PrintJob{.document = [book, at, moment = momentNow(store.today())](const std::string& locale) {
            return LedgerPrint::entry(*inLanguage(book, locale), at, moment);
        }};
    };
    return {.id = QStringLiteral("printEntry"),
            .text = word(exportWords(), "print.entry"),
            .glyph = QStringLiteral("printer"),
            .isOffered = isOne,
            .run = [&store, source, over, done = std::move(done)] { open(store, source, over, done); }};
}
