#pragma once

#include <filesystem>
#include <string>

#include <QObject>

#include "LedgerCore/Client/Errors/Failure.h"

class LedgerStore;
class QWidget;
enum class SavingProblem;
struct ExportedFile;

/// Saves one section of the books as a table, where the person wants it: made from the newest books, as they may see
/// them.
class SectionExport final : public QObject {
    Q_OBJECT
public:
    SectionExport(LedgerStore& store, QWidget& page);

    void saveCapital();
    void saveDividends();

Q_SIGNALS:
    void done(const QString& sentence);

private:
    void ask(const Result<ExportedFile>& file);
    void write(const std::filesystem::path& path, std::string content);
    void sayWhyNot(SavingProblem problem);

    LedgerStore& m_store;
    QWidget& m_page;
};
