#include "LedgerUI/Screens/Capital/SectionExport.h"

#include <QCoro/QCoroTask>
#include <QWidget>

#include "LedgerCore/Client/Files/FileSaving.h"
#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Text/SavingText.h"
#include "LedgerUI/Presentation/Text/Words.h"

SectionExport::SectionExport(LedgerStore& store, QWidget& page) : QObject{&page}, m_store{store}, m_page{page} {}

void SectionExport::saveCapital()
{
    QCoro::connect(m_store.exportCapitalCSVAsync(true), this, [this](const Result<ExportedFile>& file) { ask(file); });
}

void SectionExport::saveDividends()
{
    QCoro::connect(m_store.exportDividendsCSVAsync(true), this,
                   [this](const Result<ExportedFile>& file) { ask(file); });
}

void SectionExport::ask(const Result<ExportedFile>& file)
{
    if (!file)
        return; // the store says why
    const FileChoice::Question question{.name = QStringLiteral("exportFileDialog"),
                                        .title = word(exportWords(), "saveDialog"),
                                        .filter = FileChoice::csvFiles()};
    FileChoice::save(question, qString(file->name), m_page.window(),
                     [this, content = file->content](const std::filesystem::path& path) {
                         const auto problem = FileSaving::write(path, content); // some hundred kilobytes at most
                         if (!problem)
                             Q_EMIT done(word(exportWords(), "done", {path.filename().string()}));
                         else
                             sayWhyNot(*problem);
                     });
}

void SectionExport::sayWhyNot(SavingProblem problem)
{
    const auto text = notSavedText(InterfaceLanguage::tag(), word(exportWords(), "failed"), problem);
    auto* alert = new MessageDialog(MessageDialog::Kind::error, text, m_page.window());
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
}
