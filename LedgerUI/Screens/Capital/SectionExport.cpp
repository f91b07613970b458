#include "LedgerUI/Screens/Capital/SectionExport.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QPointer>
#include <QWidget>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Exports/ExportWords.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
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
    FileChoice::save(
        question, qString(file->name), m_page.window(),
        [self = QPointer<SectionExport>{this}, content = file->content](const std::filesystem::path& path) {
            if (self)
                self->write(path, content);
        });
}

void SectionExport::write(const std::filesystem::path& path, std::string content)
{
    QCoro::connect(SavedFile::write(path, [content = std::move(content)] { return content; }), this,
                   [this, path](std::optional<SavingProblem> problem) {
                       if (problem)
                           sayWhyNot(*problem);
                       else
                           Q_EMIT done(word(exportWords(), "done", {path.filename().string()}));
                   });
}

void SectionExport::sayWhyNot(SavingProblem problem)
{
    const auto text = notSavedText(InterfaceLanguage::tag(), word(exportWords(), "failed"), problem);
    auto* alert = new MessageDialog(MessageDialog::Kind::error, text, m_page.window());
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
}
