#include "LedgerUI/Screens/Capital/CapitalPrinting.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QPointer>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Access/MemberRights.h"
#include "LedgerCore/Domain/Exports/ExportRefusal.h"
#include "LedgerUI/Components/Print/PrintDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Capital/CapitalPrint.h"
#include "LedgerUI/Presentation/Dividends/DividendPrint.h"
#include "LedgerUI/Presentation/Keys/KeyBindings.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

using CapitalPrinting::Shown;
using Make = std::function<std::optional<PrintedDocument>(const RecordPrint::Ground& ground)>;

Make documentOf(CapitalModuleTab tab)
{
    switch (tab) {
    case CapitalModuleTab::overview:
        return &CapitalPrint::overview;
    case CapitalModuleTab::contributions:
        return &CapitalPrint::contributions;
    case CapitalModuleTab::dividends:
        return &DividendPrint::section;
    }
    return {};
}

/// Whether the member may give out everything that the tab shows.
bool mayPrint(CapitalModuleTab tab, const Member& member)
{
    const bool hasCapital = MemberRights::canOpenContributions(member);
    const bool hasDividends = MemberRights::canOpenDividends(member);
    const bool showsCapital = tab != CapitalModuleTab::dividends && hasCapital;
    const bool showsDividends = tab != CapitalModuleTab::contributions && hasDividends;
    return (!showsCapital || MemberRights::canExportCapital(member)) &&
           (!showsDividends || MemberRights::canExportDividends(member)) && (showsCapital || showsDividends);
}

Failure refused(ExportRefusal refusal)
{
    return APIError{.status = status(refusal), .code = std::string{code(refusal)}, .message = {}};
}

/// Loads the newest books: what was looked at may be given out where both sections and the entries behind them are as
/// they were, and the member still may.
QCoro::Task<Result<void>> permission(QPointer<LedgerStore> store, SnapshotPointer looked, CapitalModuleTab tab)
{
    if (!store)
        co_return std::unexpected(Failure{Cancelled{}});
    auto loading = store->refresh(false);
    const auto loaded = co_await loading;
    if (!loaded)
        co_return loaded;
    const auto now = store ? store->snapshot() : nullptr;
    if (!now)
        co_return std::unexpected(Failure{Cancelled{}});
    if (!mayPrint(tab, now->currentMember))
        co_return std::unexpected(refused(ExportRefusal::forbidden));
    const bool isSame = now->capital == looked->capital && now->dividends == looked->dividends &&
                        now->transactions == looked->transactions && now->accounts == looked->accounts &&
                        now->company == looked->company;
    if (!isSame)
        co_return std::unexpected(refused(ExportRefusal::reportChanged));
    co_return Result<void>{};
}

PrintJob jobOf(LedgerStore& store, const Shown& shown, const Make& make)
{
    const auto snapshot = store.snapshot();
    return {
        .document =
            [snapshot, question = shown.question, make, moment = momentNow(store.today())](const std::string& locale) {
                auto document = make({.snapshot = *snapshot, .question = question, .locale = locale, .moment = moment});
                // The page offers no printing of records that break a rule; they may have come to since.
                return document ? *std::move(document)
                                : PrintedDocument{.locale = locale,
                                                  .company = qString(snapshot->company.name),
                                                  .title = wordIn(locale, capitalWords(), "unavailable"),
                                                  .fileName = QStringLiteral("tallyfold-capital")};
            },
        .permission = [store = QPointer{&store}, snapshot,
                       tab = shown.tab] { return permission(store, snapshot, tab); }};
}

std::function<void()> printing(LedgerStore& store, const Shown& shown, Make make, QWidget& over,
                               const std::function<void(const QString& what)>& done)
{
    return [&store, shown, make = std::move(make), over = &over, done] {
        if (!store.snapshot())
            return;
        auto* dialog =
            new PrintDialog(store, [&store, shown, make] { return jobOf(store, shown, make); }, over->window());
        QObject::connect(dialog, &PrintDialog::finished, over, done);
        dialog->open();
    };
}

}

std::vector<Action> CapitalPrinting::actions(LedgerStore& store, const Shown& shown, QWidget& over,
                                             const std::function<void(const QString& what)>& done)
{
    const auto snapshot = store.snapshot();
    const bool isOffered = snapshot && shown.isWhole && mayPrint(shown.tab, snapshot->currentMember);
    const bool hasStatement = shown.tab == CapitalModuleTab::dividends && !shown.participantID.empty();
    const auto whyNot = store.isBusy() ? word(capitalWords(), "busy") : QString{};
    const auto statement = [id = shown.participantID](const RecordPrint::Ground& ground) {
        return DividendPrint::statement(ground, id);
    };
    return {{.id = QStringLiteral("printCapital"),
             .text = word(printWords(), "action"),
             .glyph = QStringLiteral("printer"),
             .keys = KeyBindings::keys(Command::print),
             .whyNot = whyNot,
             .isOffered = isOffered,
             .run = printing(store, shown, documentOf(shown.tab), over, done)},
            {.id = QStringLiteral("printStatement"),
             .text = word(capitalWords(), "action.printStatement"),
             .glyph = QStringLiteral("printer"),
             .whyNot = whyNot,
             .isOffered = isOffered && hasStatement,
             .run = printing(store, shown, statement, over, done)}};
}
