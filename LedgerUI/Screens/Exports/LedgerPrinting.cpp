#include "LedgerUI/Screens/Exports/LedgerPrinting.h"

#include <utility>

#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Exports/LedgerPrint.h"
#include "LedgerUI/Presentation/Ledger/LedgerBrowser.h"
#include "LedgerUI/Presentation/Print/PrintWords.h"
#include "LedgerUI/Presentation/Text/KeyBindings.h"

namespace {

void open(LedgerStore& store, PrintSource source, QWidget* over, const LedgerPrinting::Done& done)
{
    auto* dialog = new PrintDialog(store, std::move(source), over->window());
    QObject::connect(dialog, &PrintDialog::finished, over, [done](const QString& what) { done(what); });
    dialog->open();
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
        const LedgerPrint::Asked asked{store.snapshot(), listing, momentNow(store.today())};
        return PrintJob{.document = [asked](const std::string& locale) { return LedgerPrint::list(asked, locale); },
                        .permission = [store = &store, asked] { return LedgerPrint::permission(store, asked); }};
    };
    return {.id = QStringLiteral("printLedger"),
            .text = word(printWords(), "action"),
            .glyph = QStringLiteral("printer"),
            .keys = KeyBindings::keys(Command::print),
            .isOffered = store.canExport() && isReady,
            .run = [&store, source, over, done = std::move(done)] { open(store, source, over, done); }};
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
