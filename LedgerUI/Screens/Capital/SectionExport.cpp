#include "LedgerUI/Screens/Capital/SectionExport.h"

#include <utility>

#include <QCoro/QCoroTask>
#include <QPointer>
#include <QWidget>

#include "LedgerCore/Client/Store/LedgerStore.h"
#include "LedgerCore/Domain/Exports/CapitalCSV.h"
#include "LedgerCore/Domain/Exports/DividendCSV.h"
#include "LedgerUI/Components/Dialogs/FileChoice.h"
#include "LedgerUI/Components/Dialogs/MessageDialog.h"
#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Forms/SavedFile.h"
#include "LedgerUI/Presentation/Text/FailureText.h"
#include "LedgerUI/Presentation/Text/Words.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

SectionExport::SectionExport(LedgerStore& store, QWidget& page) : QObject{&page}, m_store{store}, m_page{page} {}

void SectionExport::saveCapital()
{
    ask(CapitalCSV::fileName(m_store.today()), [&store = m_store] { return store.exportCapitalCSVAsync(true); });
}

void SectionExport::saveDividends()
{
    ask(DividendCSV::fileName(m_store.today()), [&store = m_store] { return store.exportDividendsCSVAsync(true); });
}

/// A person may take their time over the place: the table is made once they have chosen it.
void SectionExport::ask(const std::string& name, Making make)
{
    const FileChoice::Question question{.name = QStringLiteral("exportFileDialog"),
                                        .title = word(exportWords(), "saveDialog"),
                                        .filter = FileChoice::csvFiles()};
    FileChoice::save(question, qString(name), m_page.window(),
                     [self = QPointer<SectionExport>{this}, make = std::move(make)](const std::filesystem::path& path) {
                         if (self)
                             self->save(path, make);
                     });
}

void SectionExport::save(const std::filesystem::path& path, const Making& make)
{
    QCoro::connect(make(), this, [this, path](const Result<ExportedFile>& file) {
        if (file) // else the store says why
            write(path, file->content);
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
    const auto text = FailureText::ofSaving(InterfaceLanguage::tag(), word(exportWords(), "failed"), problem);
    auto* alert = new MessageDialog(MessageDialog::Kind::error, text, m_page.window());
    alert->setAttribute(Qt::WA_DeleteOnClose);
    alert->open();
}
