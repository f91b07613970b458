#include "LedgerUI/Components/Dialogs/FileChoice.h"

#include <QFileDialog>
#include <QFileInfo>

#include "LedgerUI/Components/Text/InterfaceLanguage.h"
#include "LedgerUI/Presentation/Words/ScreenWords.h"

namespace {

FileChoice::Path pathOf(const QString& file)
{
    return FileChoice::Path{file.toStdString()};
}

QFileDialog* dialogFor(const FileChoice::Question& question, QWidget* over)
{
    const auto folder = QStandardPaths::writableLocation(question.place);
    auto* dialog = new QFileDialog(over, question.title, folder, question.filter);
    dialog->setObjectName(question.name);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    return dialog;
}

}

QString FileChoice::csvFiles()
{
    return word(fileWords(), "csvFiles") + QStringLiteral(" (*.csv)");
}

void FileChoice::open(const Question& question, QWidget* over, std::function<void(const Path&)> chosen)
{
    auto* dialog = dialogFor(question, over);
    dialog->setFileMode(QFileDialog::ExistingFile);
    QObject::connect(dialog, &QFileDialog::fileSelected, over,
                     [chosen = std::move(chosen)](const QString& file) { chosen(pathOf(file)); });
    dialog->open();
}

void FileChoice::openSeveral(const Question& question, QWidget* over,
                             std::function<void(const std::vector<Path>&)> chosen)
{
    auto* dialog = dialogFor(question, over);
    dialog->setFileMode(QFileDialog::ExistingFiles);
    QObject::connect(dialog, &QFileDialog::filesSelected, over, [chosen = std::move(chosen)](const QStringList& files) {
        std::vector<Path> paths;
        for (const auto& file : files)
            paths.push_back(pathOf(file));
        chosen(paths);
    });
    dialog->open();
}

void FileChoice::save(const Question& question, const QString& suggestion, QWidget* over,
                      std::function<void(const Path&)> chosen)
{
    auto* dialog = dialogFor(question, over);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QFileInfo{suggestion}.suffix());
    dialog->selectFile(suggestion);
    QObject::connect(dialog, &QFileDialog::fileSelected, over,
                     [chosen = std::move(chosen)](const QString& file) { chosen(pathOf(file)); });
    dialog->open();
}
