#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include <QCoro/QCoroTask>
#include <QObject>

#include "LedgerCore/Client/Errors/Failure.h"

class LedgerStore;
class QWidget;
enum class SavingProblem;
struct ExportedFile;

/// Saves one section of the books as a table, where the person wants it: made from the newest books at the time it is
/// written, as they may see them then.
class SectionExport final : public QObject {
    Q_OBJECT
public:
    SectionExport(LedgerStore& store, QWidget& page);

    void saveCapital();
    void saveDividends();

Q_SIGNALS:
    void done(const QString& sentence);

private:
    using Making = std::function<QCoro::Task<Result<ExportedFile>>()>;
    void ask(const std::string& name, Making make);
    void save(const std::filesystem::path& path, const Making& make);
    void write(const std::filesystem::path& path, std::string content);
    void sayWhyNot(SavingProblem problem);

    LedgerStore& m_store;
    QWidget& m_page;
};
