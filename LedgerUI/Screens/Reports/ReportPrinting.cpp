#include "LedgerUI/Screens/Reports/ReportPrinting.h"

#include <utility>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Reports/Output/ReportExport.h"
#include "LedgerUI/Presentation/Reports/Output/ReportPrint.h"
#include "LedgerUI/Presentation/Reports/Sheets/ReportBrowser.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

/// What is printed is what the page shows, of the books as they are now, whatever becomes of them while it is looked
/// at. The page itself may still be at work on them.
PrintJob jobOf(LedgerStore& store, const ReportBrowser& browser, ReportPart part)
{
    const auto sheet = browser.sheet();
    const auto books = store.snapshot();
    return {.document =
                [sheet, books, part, moment = momentNow(store.today())](const std::string& locale) {
                    return ReportPrint::document(ReportExport::ofBooks(*sheet, books, locale), part, moment);
                },
            .permission = [store = &store, sheet, books,
                           part] { return ReportExport::permissionNow(store, sheet, books, part); }};
}

}

Action ReportPrinting::action(const LedgerStore& store, bool isReady, std::function<void()> run)
{
    return {.id = QStringLiteral("printReport"),
            .text = word(printWords(), "action"),
            .glyph = QStringLiteral("printer"),
            .keys = KeyBindings::keys(Command::print),
            .whyNot = isReady ? QString{} : word(reportWords(), "preparing"),
            .isOffered = store.canExport(),
            .run = std::move(run)};
}

PrintDialog* ReportPrinting::open(LedgerStore& store, const ReportBrowser& browser, ReportPart part, QWidget* window)
{
    const auto sheet = browser.sheet();
    if (!sheet || sheet->failure)
        return nullptr;
    auto* dialog = new PrintDialog(store, [&store, &browser, part] { return jobOf(store, browser, part); }, window);
    dialog->open();
    return dialog;
}
