#pragma once

#include <filesystem>
#include <functional>
#include <optional>

#include "LedgerUI/Components/Dialogs/CommandForm.h"
#include "LedgerUI/Presentation/Imports/LedgerImport.h"

class ImportFileCard;
class ImportFindings;
class ImportGuide;
class ImportProgress;
class TextLabel;

/// Brings older entries in from a file: choose it, see what it would record or what is wrong with it, confirm, and
/// follow the entries being recorded one by one. Deletes itself when it closes; open it with `open()`.
class ImportDialog final : public CommandForm {
    Q_OBJECT
public:
    ImportDialog(LedgerStore& store, QWidget* parent);

    /// Looks at a file as if the person had chosen it; not while entries are being recorded.
    void chooseFile(const std::filesystem::path& path);
    void reject() override;

Q_SIGNALS:
    /// These entries were recorded, all of the file or those before it stopped.
    void imported(const std::vector<std::string>& entryIDs);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    enum class Stage { choosing, reading, planned, importing, done, stopped };

    void present() override;
    void adoptSnapshot() override;
    void adoptLanguage(const std::string& before) override;
    [[nodiscard]] QWidget& firstField() const override;

    void buildBody();
    void presentFile();
    [[nodiscard]] Note note() const;
    [[nodiscard]] Note standing() const;
    /// What was taken out of the form is told below what is to be said of the file.
    void say(const QString& what);
    void askForFile();
    void read(const std::filesystem::path& path);
    void adopt(LedgerImport::Answer answer);
    /// `content` is asked for it on a worker.
    void saveFile(const QString& suggestion, std::function<std::string()> content);
    void confirm();
    void import();
    void finish(const Result<void>& outcome);
    [[nodiscard]] bool isPlanned() const { return m_stage == Stage::planned && m_reading; }

    Stage m_stage = Stage::choosing;
    ImportReadingPointer m_reading;
    int m_readings = 0; // the run whose answer counts
    std::size_t m_confirmed = 0;
    bool m_isStopping = false;
    bool m_waits = false; // it was to start while the store was busy, and still is
    std::optional<Failure> m_stoppedBy;
    QString m_failure; // why it did not start, or a file could not be saved
    QString m_said;    // of what was saved or copied last

    ImportFileCard* m_file = nullptr;
    ImportFindings* m_findings = nullptr;
    ImportProgress* m_progress = nullptr;
    ImportGuide* m_guide = nullptr;
    TextLabel* m_limits = nullptr;
};
